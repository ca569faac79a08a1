#include "PlistValue.h"

#include <cctype>
#include <climits>
#include <cmath>
#include <cstdlib>

namespace {

std::string_view skipLeadingSpace(std::string_view text)
{
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())))
        text.remove_prefix(1);
    return text;
}

// Reads a leading decimal integer the way the platform's strings do: optional sign,
// digits, the rest ignored; saturates instead of overflowing.
std::int64_t leadingInteger(std::string_view text)
{
    text = skipLeadingSpace(text);
    bool negative = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    std::int64_t value = 0;
    for (char c : text) {
        if (c < '0' || c > '9')
            break;
        int digit = c - '0';
        if (value > (INT64_MAX - digit) / 10)
            return negative ? INT64_MIN : INT64_MAX;
        value = value * 10 + digit;
    }
    return negative ? -value : value;
}

double leadingReal(std::string_view text)
{
    std::string copy(skipLeadingSpace(text));
    char* end = nullptr;
    double value = std::strtod(copy.c_str(), &end);
    return end == copy.c_str() ? 0.0 : value;
}

// "Y", "y", "T", "t" or a digit 1-9 after optional space, sign and zeros means true.
bool leadingBool(std::string_view text)
{
    text = skipLeadingSpace(text);
    if (!text.empty() && (text.front() == '-' || text.front() == '+'))
        text.remove_prefix(1);
    while (!text.empty() && text.front() == '0')
        text.remove_prefix(1);
    if (text.empty())
        return false;
    char c = text.front();
    return c == 'Y' || c == 'y' || c == 'T' || c == 't' || (c >= '1' && c <= '9');
}

std::int64_t saturatingInteger(double value)
{
    if (std::isnan(value))
        return 0;
    if (value >= 9.2233720368547758e18)
        return INT64_MAX;
    if (value <= -9.2233720368547758e18)
        return INT64_MIN;
    return static_cast<std::int64_t>(value);
}

} // namespace

const PlistArray* PlistValue::asArray() const
{
    auto* boxed = std::get_if<Boxed<PlistArray>>(&v_);
    return boxed ? &**boxed : nullptr;
}

PlistArray* PlistValue::asArray()
{
    auto* boxed = std::get_if<Boxed<PlistArray>>(&v_);
    return boxed ? &**boxed : nullptr;
}

const PlistDict* PlistValue::asDict() const
{
    auto* boxed = std::get_if<Boxed<PlistDict>>(&v_);
    return boxed ? &**boxed : nullptr;
}

PlistDict* PlistValue::asDict()
{
    auto* boxed = std::get_if<Boxed<PlistDict>>(&v_);
    return boxed ? &**boxed : nullptr;
}

bool PlistValue::boolValue() const
{
    switch (type()) {
    case Type::Boolean: return std::get<bool>(v_);
    case Type::Integer: return std::get<std::int64_t>(v_) != 0;
    case Type::Real: return std::get<double>(v_) != 0.0;
    case Type::String: return leadingBool(std::get<std::string>(v_));
    default: return false;
    }
}

std::int64_t PlistValue::integerValue() const
{
    switch (type()) {
    case Type::Boolean: return std::get<bool>(v_) ? 1 : 0;
    case Type::Integer: return std::get<std::int64_t>(v_);
    case Type::Real: return saturatingInteger(std::get<double>(v_));
    case Type::String: return leadingInteger(std::get<std::string>(v_));
    default: return 0;
    }
}

int PlistValue::intValue() const
{
    if (type() == Type::String) {
        std::int64_t value = leadingInteger(std::get<std::string>(v_));
        return value > INT_MAX ? INT_MAX : value < INT_MIN ? INT_MIN : static_cast<int>(value);
    }
    // Numbers narrow the way a C cast does on the phone's processor: saturating.
    std::int64_t value = integerValue();
    return value > INT_MAX ? INT_MAX : value < INT_MIN ? INT_MIN : static_cast<int>(value);
}

double PlistValue::doubleValue() const
{
    switch (type()) {
    case Type::Boolean: return std::get<bool>(v_) ? 1.0 : 0.0;
    case Type::Integer: return static_cast<double>(std::get<std::int64_t>(v_));
    case Type::Real: return std::get<double>(v_);
    case Type::String: return leadingReal(std::get<std::string>(v_));
    default: return 0.0;
    }
}

bool PlistValue::isPropertyList() const
{
    switch (type()) {
    case Type::Nil:
    case Type::Color:
        return false;
    case Type::Array:
        for (const PlistValue& item : *asArray())
            if (!item.isPropertyList())
                return false;
        return true;
    case Type::Dictionary:
        for (const auto& entry : *asDict())
            if (!entry.value.isPropertyList())
                return false;
        return true;
    default:
        return true;
    }
}

PlistDict::PlistDict(std::initializer_list<Entry> entries)
{
    for (const Entry& entry : entries)
        set(entry.key, entry.value);
}

const PlistValue* PlistDict::find(std::string_view key) const
{
    auto it = index_.find(std::string(key));
    return it == index_.end() ? nullptr : &entries_[it->second].value;
}

PlistValue* PlistDict::find(std::string_view key)
{
    auto it = index_.find(std::string(key));
    return it == index_.end() ? nullptr : &entries_[it->second].value;
}

PlistValue PlistDict::value(std::string_view key) const
{
    const PlistValue* found = find(key);
    return found ? *found : PlistValue();
}

void PlistDict::set(std::string_view key, PlistValue value)
{
    if (value.isNil()) {
        remove(key);
        return;
    }
    if (PlistValue* existing = find(key)) {
        *existing = std::move(value);
        return;
    }
    index_.emplace(std::string(key), entries_.size());
    entries_.push_back(Entry{std::string(key), std::move(value)});
}

bool PlistDict::remove(std::string_view key)
{
    auto it = index_.find(std::string(key));
    if (it == index_.end())
        return false;
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(it->second));
    reindex();
    return true;
}

void PlistDict::addEntriesFrom(const PlistDict& other)
{
    for (const Entry& entry : other.entries_)
        set(entry.key, entry.value);
}

std::vector<std::string> PlistDict::keys() const
{
    std::vector<std::string> result;
    result.reserve(entries_.size());
    for (const Entry& entry : entries_)
        result.push_back(entry.key);
    return result;
}

bool PlistDict::operator==(const PlistDict& other) const
{
    if (size() != other.size())
        return false;
    for (const Entry& entry : entries_) {
        const PlistValue* theirs = other.find(entry.key);
        if (!theirs || !(*theirs == entry.value))
            return false;
    }
    return true;
}

void PlistDict::reindex()
{
    index_.clear();
    for (std::size_t i = 0; i < entries_.size(); ++i)
        index_.emplace(entries_[i].key, i);
}
