#pragma once

#include "platform/web/UIWebView.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// How a theme script is called: its text follows the word "function" and the function literal
// is called at once, with five arguments (short form) or seven (long form).

// The script's parameter list: the first "(name, name, ...)" in its text, names being a letter
// (or one of [ \ ] ^ _ `) followed by letters and digits. Nothing for a script without one.
std::optional<std::string_view> themeScriptParameterList(std::string_view script);

// Six or more parameters (five or more commas) take the long form.
bool usesLongCallForm(std::string_view parameterList);

struct ThemeCallArguments {
    float pixelHeight = 0;
    int level = 0;
    bool charging = false;
    bool low = false;
    bool lowPowerMode = false;
    int color[3] = {0, 0, 0};     // red, green, blue, 0 to 255
    int baseColor[3] = {0, 0, 0};
    double baseAlpha = 0;         // 0 to 1
};

// "(function<script>)(<height>,<level>,!!<charging>,!!<low>,[r,g,b])", or the long form with
// the low-power flag and the base colour with its alpha.
std::string themeScriptCallText(std::string_view script, bool longForm, const ThemeCallArguments& arguments);

// A value of the call's argument list: a number, a boolean or an array of numbers.
using ThemeCallValue = UIWebView::Argument;

// The values the call text's argument list evaluates to, in order. Nothing when a number does
// not print as a plain decimal literal (an infinite or NaN height, a locale's decimal comma):
// only the call text says what those mean.
std::optional<std::vector<ThemeCallValue>> themeScriptCallValues(bool longForm, const ThemeCallArguments& arguments);
