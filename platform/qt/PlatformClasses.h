#pragma once

// Registers the platform classes by name (pages, cells), so that entries can name them, and
// lets assistive technology read the rows.
void registerPlatformClasses();
