#include "Command.h"
#include "HexColourArgument.h"
#include "ValueText.h"

#include "store/PreferencesStore.h"
#include "store/SettingsCatalogue.h"
#include "store/ThemeScripts.h"

#include "platform/core/ColorParsing.h"
#include "platform/core/PropertyListUpdate.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace {

std::string lowercase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

struct Parsed {
    PlistValue value;
    std::string problem;
};

Parsed parseColour(const SettingDeclaration& setting, const std::string& text)
{
    bool hasAlpha = false;
    std::optional<UIColor> color = parseHexColourArgument(text, &hasAlpha);
    if (!color)
        return {{}, setting.key + " takes a colour of 6 or 8 hex digits (RRGGBB or RRGGBBAA), \"#\" optional"};
    if (hasAlpha && !setting.colourWithAlpha)
        return {{}, setting.key + " is an opaque colour: give 6 hex digits (RRGGBB)"};
    return {*ColorParsing::hexStringFromColorAlphaHash(*color, setting.colourWithAlpha, true), {}};
}

Parsed parseBool(const std::string& key, const std::string& text)
{
    std::string word = lowercase(text);
    if (word == "true" || word == "yes" || word == "1")
        return {true, {}};
    if (word == "false" || word == "no" || word == "0")
        return {false, {}};
    return {{}, key + " takes true/false, yes/no or 1/0, not \"" + text + "\""};
}

Parsed parseInteger(const std::string& key, const std::string& text)
{
    std::int64_t value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || text.empty())
        return {{}, key + " takes a whole number, not \"" + text + "\""};
    return {value, {}};
}

Parsed parseReal(const std::string& key, const std::string& text)
{
    double value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || text.empty() || !std::isfinite(value))
        return {{}, key + " takes a number, not \"" + text + "\""};
    return {value, {}};
}

Parsed parseTheme(const std::string& key, const std::string& text)
{
    if (!getThemeScriptWithName(text))
        return {{}, "no theme named \"" + text + "\" is installed for " + key + " (see 'ampwell themes')"};
    return {text, {}};
}

Parsed parseSettingValue(const SettingDeclaration& setting, const std::string& text)
{
    switch (setting.type) {
    case SettingType::Colour: return parseColour(setting, text);
    case SettingType::Boolean: return parseBool(setting.key, text);
    case SettingType::Integer: return parseInteger(setting.key, text);
    case SettingType::Real: return parseReal(setting.key, text);
    case SettingType::ThemeName: return parseTheme(setting.key, text);
    }
    return {};
}

Parsed parseTypedValue(const std::string& key, const std::string& type, const std::string& text)
{
    if (type == "string")
        return {text, {}};
    if (type == "bool")
        return parseBool(key, text);
    if (type == "int")
        return parseInteger(key, text);
    if (type == "real")
        return parseReal(key, text);
    return {{}, "--type must be string, bool, int or real, not \"" + type + "\""};
}

std::string_view cliTypeName(SettingType type)
{
    return type == SettingType::Colour || type == SettingType::ThemeName ? "string" : settingTypeName(type);
}

// Colours count as equal when they are the same colour, whatever the letter case.
bool isDefaultValue(const SettingDeclaration& setting, const PlistValue& value)
{
    if (setting.type == SettingType::Colour && value.asString() && setting.defaultValue.asString())
        return ColorParsing::colorFromHexStringTD(*value.asString()) ==
               ColorParsing::colorFromHexStringTD(*setting.defaultValue.asString());
    if (setting.type == SettingType::Real && value.isNumber())
        return static_cast<float>(value.doubleValue()) == setting.defaultValue.floatValue();
    return value == setting.defaultValue;
}

int runGet(const CommandLine& line)
{
    if (line.positional.size() != 1)
        return usageError("get", "give exactly one KEY");
    const std::string& key = line.positional[0];
    std::optional<PlistDict> file = loadPreferences();
    PlistValue value = file ? file->value(key) : PlistValue();
    if (value.isNil())
        if (const SettingDeclaration* setting = findSetting(key))
            value = setting->defaultValue;
    if (value.isNil())
        return failure("get", "\"" + key + "\" has no stored value and no default");
    std::cout << (line.has("--json") ? jsonText(value) : plainText(value)) << "\n";
    return 0;
}

int runSet(const CommandLine& line)
{
    if (line.positional.size() != 2)
        return usageError("set", "give a KEY and a VALUE");
    const std::string& key = line.positional[0];
    const std::string& text = line.positional[1];
    std::optional<std::string> type = line.value("--type");
    if (key.empty())
        return usageError("set", "the KEY cannot be empty");

    Parsed parsed;
    if (const SettingDeclaration* setting = findSetting(key)) {
        if (type && *type != cliTypeName(setting->type))
            return usageError("set", key + " is a " + std::string(cliTypeName(setting->type)) + " setting, not " + *type);
        parsed = parseSettingValue(*setting, text);
    } else if (type) {
        parsed = parseTypedValue(key, *type, text);
    } else {
        return usageError("set", "\"" + key + "\" is not a known setting; give its --type (string, bool, int or real)");
    }
    if (parsed.value.isNil())
        return usageError("set", parsed.problem);

    std::string error;
    if (!updatePropertyListFile(preferencesPath(), MissingFilePolicy::StartEmpty,
                                [&](PlistDict& file) { file.set(key, parsed.value); }, &error))
        return failure("set", error);
    postSettingsChangedNotification();
    return 0;
}

int runSettings(const CommandLine& line)
{
    if (!line.positional.empty())
        return usageError("settings", "takes no arguments");
    PlistDict file = loadPreferences().value_or(PlistDict());
    bool json = line.has("--json");
    std::string out = json ? "[" : "";
    auto addRow = [&](const std::string& key, const PlistValue& value, bool isDefault, bool known) {
        if (json) {
            out += (out.size() > 1 ? ",\n " : "\n ") + std::string("{\"key\":") + jsonString(key) +
                   ",\"value\":" + jsonText(value) + ",\"default\":" + (isDefault ? "true" : "false") +
                   ",\"catalogue\":" + (known ? "true" : "false") + "}";
            return;
        }
        std::ostringstream row;
        row << std::left << std::setw(24) << key << std::setw(22) << plainText(value)
            << (known ? (isDefault ? "default" : "changed") : "(not a catalogue key)");
        out += row.str() + "\n";
    };
    for (const SettingDeclaration& setting : settingsCatalogue()) {
        const PlistValue* stored = file.find(setting.key);
        PlistValue value = stored ? *stored : setting.defaultValue;
        addRow(setting.key, value, isDefaultValue(setting, value), true);
    }
    for (const auto& entry : file)
        if (!findSetting(entry.key))
            addRow(entry.key, entry.value, false, false);
    std::cout << out << (json ? "\n]\n" : "");
    return 0;
}

} // namespace

std::vector<Command> settingsCommands()
{
    return {
        {"get", "print a setting's value",
         "Usage: ampwell get KEY [--json]\n\n"
         "Prints the value stored for KEY, or its default when none is stored.\n"
         "Exits with 1 when KEY has neither.\n",
         {{"--json"}},
         runGet},
        {"set", "store a setting and tell the battery to redraw",
         "Usage: ampwell set KEY VALUE [--type string|bool|int|real]\n\n"
         "Stores VALUE under KEY in the preferences file (creating the file when missing),\n"
         "then posts the change notification.\n"
         "Known settings are typed by the catalogue: colours take 6 or 8 hex digits with an\n"
         "optional \"#\" (8 only where the colour has an alpha), switches take true/false,\n"
         "yes/no or 1/0, themes must be installed. Other keys need --type.\n",
         {{"--type", true}},
         runSet},
        {"settings", "list every setting with its value",
         "Usage: ampwell settings [--json]\n\n"
         "Lists every catalogue setting with its effective value and whether that is its\n"
         "default, then the preferences file's other keys.\n",
         {{"--json"}},
         runSettings},
    };
}
