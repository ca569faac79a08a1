#pragma once

// Registers the framework's pages and cells by name, with the platform's.
void registerPageKitClasses();
