#pragma once

// Registers every page and cell class of the settings by name (the framework's and the
// platform's included), so that link rows and "cellClass" entries find them.
void registerAmpwellPages();
