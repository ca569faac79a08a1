#include "ValueText.h"

#include "platform/core/Base64.h"
#include "platform/core/ColorParsing.h"

#include <charconv>
#include <cmath>
#include <ctime>

namespace {

std::string shortestReal(double value)
{
    if (!std::isfinite(value))
        return std::isnan(value) ? "nan" : value > 0 ? "inf" : "-inf";
    char buffer[64];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

std::string isoDate(const PlistDate& date)
{
    // Reference date 2001-01-01T00:00:00Z is 978307200 in Unix time.
    std::time_t unixTime = static_cast<std::time_t>(std::floor(date.secondsSinceReferenceDate)) + 978307200;
    std::tm utc{};
    gmtime_r(&unixTime, &utc);
    char buffer[32];
    std::strftime(buffer, sizeof buffer, "%Y-%m-%dT%H:%M:%SZ", &utc);
    return buffer;
}

std::string colourText(const UIColor& color)
{
    return ColorParsing::hexStringFromColorAlphaHash(color, true, true).value_or("#");
}

} // namespace

std::string plainText(const PlistValue& value)
{
    switch (value.type()) {
    case PlistValue::Type::String: return *value.asString();
    case PlistValue::Type::Boolean: return value.boolValue() ? "true" : "false";
    case PlistValue::Type::Integer: return std::to_string(value.integerValue());
    case PlistValue::Type::Real: return shortestReal(value.doubleValue());
    case PlistValue::Type::Data: return Base64::encode(*value.asData());
    case PlistValue::Type::Date: return isoDate(*value.asDate());
    case PlistValue::Type::Color: return colourText(*value.asColor());
    case PlistValue::Type::Array:
    case PlistValue::Type::Dictionary: return jsonText(value);
    case PlistValue::Type::Nil: return "";
    }
    return "";
}

std::string jsonText(const PlistValue& value)
{
    switch (value.type()) {
    case PlistValue::Type::Boolean:
    case PlistValue::Type::Integer:
        return plainText(value);
    case PlistValue::Type::Real:
        return std::isfinite(value.doubleValue()) ? shortestReal(value.doubleValue()) : "null";
    case PlistValue::Type::Array: {
        std::string out = "[";
        for (const PlistValue& item : *value.asArray())
            out += (out.size() > 1 ? "," : "") + jsonText(item);
        return out + "]";
    }
    case PlistValue::Type::Dictionary: {
        std::string out = "{";
        for (const auto& entry : *value.asDict())
            out += (out.size() > 1 ? "," : "") + jsonString(entry.key) + ":" + jsonText(entry.value);
        return out + "}";
    }
    case PlistValue::Type::Nil:
        return "null";
    default:
        return jsonString(plainText(value));
    }
}
