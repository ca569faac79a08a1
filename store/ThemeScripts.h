#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

// Theme folders, searched in this order: the product's own themes, the user's installed
// themes, the user's own creations.
inline constexpr std::string_view kThemesFolder = "/Library/Application Support/Ampwell/Themes";
inline constexpr std::string_view kInstalledThemesFolder = "/var/mobile/Library/Preferences/Ampwell/Installed";
inline constexpr std::string_view kCreatorThemesFolder = "/var/mobile/Library/Preferences/Ampwell/Creator";
inline constexpr std::array<std::string_view, 3> kThemeFolders = {kThemesFolder, kInstalledThemesFolder,
                                                                  kCreatorThemesFolder};

// The preview script kept inside the settings themselves: a ring with the level in it.
extern const std::string_view kBuiltInPreviewScript;

// The text of the first "<folder>/<name>.js" that exists, read as UTF-8; nothing when no
// folder holds it or the first one found cannot be read. The name is joined as it stands.
std::optional<std::string> getThemeScriptWithName(std::string_view name);
