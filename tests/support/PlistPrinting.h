#pragma once

#include "platform/core/PlistValue.h"

#include <ostream>

// Readable failure messages for settings values in tests.
inline void PrintTo(const PlistValue& value, std::ostream* out);

inline void PrintTo(const PlistDict& dict, std::ostream* out)
{
    *out << "{";
    bool first = true;
    for (const auto& entry : dict) {
        *out << (first ? "" : ", ") << entry.key << ": ";
        PrintTo(entry.value, out);
        first = false;
    }
    *out << "}";
}

inline void PrintTo(const PlistValue& value, std::ostream* out)
{
    switch (value.type()) {
    case PlistValue::Type::Nil: *out << "nil"; break;
    case PlistValue::Type::String: *out << '"' << *value.asString() << '"'; break;
    case PlistValue::Type::Boolean: *out << (value.boolValue() ? "true" : "false"); break;
    case PlistValue::Type::Integer: *out << value.integerValue(); break;
    case PlistValue::Type::Real: *out << value.doubleValue() << "r"; break;
    case PlistValue::Type::Data: *out << "<" << value.asData()->size() << " bytes>"; break;
    case PlistValue::Type::Date: *out << "date " << value.asDate()->secondsSinceReferenceDate; break;
    case PlistValue::Type::Color: *out << "colour(" << value.asColor()->red() << ", " << value.asColor()->green()
                                       << ", " << value.asColor()->blue() << ", " << value.asColor()->alpha() << ")";
        break;
    case PlistValue::Type::Array: {
        *out << "[";
        bool first = true;
        for (const PlistValue& item : *value.asArray()) {
            *out << (first ? "" : ", ");
            PrintTo(item, out);
            first = false;
        }
        *out << "]";
        break;
    }
    case PlistValue::Type::Dictionary: PrintTo(*value.asDict(), out); break;
    }
}
