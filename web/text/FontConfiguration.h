#pragma once

#include <string_view>

typedef struct _FcConfig FcConfig;

// The fontconfig configuration canvas text resolves fonts with: the project's fonts.conf,
// built into the program, over the system's font folders. The machine's own configuration
// (its aliases and rendering settings) plays no part. Made on first use, kept for the
// process's life.
FcConfig* canvasFontConfiguration();

// The text of the built-in fonts.conf.
std::string_view canvasFontConfigurationText();
