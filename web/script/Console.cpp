#include "platform/core/SystemLog.h"
#include "web/script/Bindings.h"
#include "web/script/Realm.h"

#include <cmath>
#include <cstdio>

namespace script {

namespace {

// A script that logs in a loop must not flood the system log.
constexpr int kLinesPerEvaluation = 200;
constexpr std::size_t kMaxLineLength = 2000;

int linesLeft = kLinesPerEvaluation;

// How a value reads in the log; never throws.
std::string describe(JSContextRef ctx, JSValueRef value)
{
    if (JSValueIsSymbol(ctx, value))
        return "Symbol()";
    try {
        return toUTF8(ctx, value);
    } catch (const ScriptThrow&) {
        return "[object]";
    }
}

std::string numberText(JSContextRef ctx, JSValueRef value, bool integer)
{
    JSValueRef exception = nullptr;
    double number = JSValueIsSymbol(ctx, value) ? NAN : JSValueToNumber(ctx, value, &exception);
    if (exception || std::isnan(number))
        return "NaN";
    if (integer)
        number = std::trunc(number);
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", number);
    return text;
}

// The console's formatting: substitutions in a first string argument, the rest joined by spaces.
std::string format(JSContextRef ctx, std::size_t argc, const JSValueRef argv[])
{
    std::string line;
    std::size_t next = 0;
    if (argc > 0 && JSValueIsString(ctx, argv[0])) {
        std::string pattern = describe(ctx, argv[0]);
        next = 1;
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            char directive = i + 1 < pattern.size() && pattern[i] == '%' ? pattern[i + 1] : '\0';
            if (directive == '%') {
                line += '%';
                ++i;
            } else if (std::string_view("sdifoOc").find(directive) != std::string_view::npos && directive && next < argc) {
                JSValueRef value = argv[next++];
                if (directive == 'd' || directive == 'i')
                    line += numberText(ctx, value, true);
                else if (directive == 'f')
                    line += numberText(ctx, value, false);
                else if (directive != 'c')
                    line += describe(ctx, value);
                ++i;
            } else {
                line += pattern[i];
            }
        }
    }
    for (; next < argc; ++next) {
        if (!line.empty())
            line += ' ';
        line += describe(ctx, argv[next]);
    }
    return line;
}

void write(const std::string& text)
{
    if (linesLeft <= 0)
        return;
    if (--linesLeft == 0) {
        systemLog("AMPW: console: (more messages from this script were dropped)");
        return;
    }
    std::string line = "AMPW: console: " + text.substr(0, kMaxLineLength);
    for (char& ch : line)
        if (ch == '\n' || ch == '\r')
            ch = ' ';
    systemLog(line);
}

JSValueRef log(JSContextRef ctx, JSObjectRef, JSObjectRef, std::size_t argc, const JSValueRef argv[], JSValueRef*)
{
    write(format(ctx, argc, argv));
    return JSValueMakeUndefined(ctx);
}

JSValueRef assertion(JSContextRef ctx, JSObjectRef, JSObjectRef, std::size_t argc, const JSValueRef argv[], JSValueRef*)
{
    if (argc == 0 || !JSValueToBoolean(ctx, argv[0])) {
        std::string rest = argc > 1 ? format(ctx, argc - 1, argv + 1) : std::string();
        write("Assertion failed" + (rest.empty() ? std::string() : ": " + rest));
    }
    return JSValueMakeUndefined(ctx);
}

} // namespace

void resetConsoleAllowance()
{
    linesLeft = kLinesPerEvaluation;
}

JSObjectRef makeConsole(Realm& realm)
{
    JSContextRef ctx = realm.context();
    JSObjectRef console = JSObjectMake(ctx, nullptr, nullptr);
    for (const char* name : {"log", "info", "warn", "error", "debug", "trace", "dir", "dirxml"}) {
        JSString string(name);
        realm.defineValue(console, makeString(ctx, name), JSObjectMakeFunctionWithCallback(ctx, string.get(), log),
                          true, true, true);
    }
    JSString assertName("assert");
    realm.defineValue(console, makeString(ctx, "assert"),
                      JSObjectMakeFunctionWithCallback(ctx, assertName.get(), assertion), true, true, true);
    return console;
}

} // namespace script
