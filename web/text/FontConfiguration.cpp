#include "web/text/FontConfiguration.h"

#include <fontconfig/fontconfig.h>

#include <cstdio>
#include <string>

// The configuration file is linked in as it stands, so the file in the source tree (which
// other programs load with FONTCONFIG_FILE) and the one the canvas uses cannot drift apart.
asm(".section .rodata\n"
    ".global ampwell_fonts_conf_begin\n"
    ".global ampwell_fonts_conf_end\n"
    ".balign 16\n"
    "ampwell_fonts_conf_begin:\n"
    ".incbin \"" AMPWELL_FONTS_CONF_PATH "\"\n"
    "ampwell_fonts_conf_end:\n"
    ".byte 0\n"
    ".previous\n");
extern "C" const char ampwell_fonts_conf_begin[];
extern "C" const char ampwell_fonts_conf_end[];

std::string_view canvasFontConfigurationText()
{
    return {ampwell_fonts_conf_begin, static_cast<std::size_t>(ampwell_fonts_conf_end - ampwell_fonts_conf_begin)};
}

static FcConfig* makeConfiguration()
{
    FcInit();
    FcConfig* config = FcConfigCreate();
    const std::string text(canvasFontConfigurationText());
    if (!FcConfigParseAndLoadFromMemory(config, reinterpret_cast<const FcChar8*>(text.c_str()), FcTrue)
        || !FcConfigBuildFonts(config)) {
        // Without our configuration the machine's still finds fonts, only by its own rules.
        std::fprintf(stderr, "AMPW: canvas font configuration failed to load; using the system's\n");
        FcConfigDestroy(config);
        config = FcInitLoadConfigAndFonts();
    }
    return config;
}

FcConfig* canvasFontConfiguration()
{
    static FcConfig* config = makeConfiguration();
    return config;
}
