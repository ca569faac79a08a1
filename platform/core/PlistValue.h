#pragma once

#include "UIColor.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>
#include <vector>

class PlistValue;
class PlistDict;
using PlistArray = std::vector<PlistValue>;
using PlistData = std::vector<std::uint8_t>;

// A property-list date: seconds since 2001-01-01 00:00:00 UTC, as the formats store it.
struct PlistDate {
    double secondsSinceReferenceDate = 0;
    bool operator==(const PlistDate&) const = default;
};

// Owns a T on the heap with value semantics, so that arrays and dictionaries can nest.
template <typename T>
class Boxed {
public:
    explicit Boxed(T value) : ptr_(std::make_unique<T>(std::move(value))) {}
    Boxed(const Boxed& other) : ptr_(std::make_unique<T>(*other.ptr_)) {}
    Boxed(Boxed&&) noexcept = default;
    Boxed& operator=(const Boxed& other) { ptr_ = std::make_unique<T>(*other.ptr_); return *this; }
    Boxed& operator=(Boxed&&) noexcept = default;
    ~Boxed() = default;
    T& operator*() { return *ptr_; }
    const T& operator*() const { return *ptr_; }
    T* operator->() { return ptr_.get(); }
    const T* operator->() const { return ptr_.get(); }
    bool operator==(const Boxed& other) const { return *ptr_ == *other.ptr_; }

private:
    std::unique_ptr<T> ptr_;
};

// One value of a settings dictionary. Besides the property-list types it can carry a
// colour, as render settings do; such a value cannot be written to a property-list file.
// A default-constructed value is "nil": the absence of a value.
class PlistValue {
public:
    enum class Type { Nil, String, Boolean, Integer, Real, Data, Date, Array, Dictionary, Color };

    PlistValue() = default;
    PlistValue(std::string value) : v_(std::move(value)) {}
    PlistValue(std::string_view value) : v_(std::string(value)) {}
    PlistValue(const char* value) : v_(std::string(value)) {}
    PlistValue(bool value) : v_(value) {}
    PlistValue(int value) : v_(std::int64_t{value}) {}
    PlistValue(std::int64_t value) : v_(value) {}
    PlistValue(double value) : v_(value) {}
    PlistValue(float value) : v_(double{value}) {}
    PlistValue(PlistData value) : v_(std::move(value)) {}
    PlistValue(PlistDate value) : v_(value) {}
    PlistValue(PlistArray value);
    PlistValue(PlistDict value);
    PlistValue(UIColor value) : v_(value) {}

    Type type() const { return static_cast<Type>(v_.index()); }
    bool isNil() const { return type() == Type::Nil; }
    explicit operator bool() const { return !isNil(); }
    // Integers, reals and booleans are all numbers, as the platform's number objects are.
    bool isNumber() const { return type() == Type::Integer || type() == Type::Real || type() == Type::Boolean; }

    const std::string* asString() const { return std::get_if<std::string>(&v_); }
    const PlistData* asData() const { return std::get_if<PlistData>(&v_); }
    const PlistDate* asDate() const { return std::get_if<PlistDate>(&v_); }
    const UIColor* asColor() const { return std::get_if<UIColor>(&v_); }
    const PlistArray* asArray() const;
    PlistArray* asArray();
    const PlistDict* asDict() const;
    PlistDict* asDict();

    // The platform's number and string conversions: a number converts as numbers do, a
    // string by reading its leading number, anything else gives 0 / false.
    bool boolValue() const;
    std::int64_t integerValue() const;
    int intValue() const;
    double doubleValue() const;
    float floatValue() const { return static_cast<float>(doubleValue()); }

    // True when the value and everything inside it can be written to a property-list file.
    bool isPropertyList() const;

    bool operator==(const PlistValue& other) const { return v_ == other.v_; }

private:
    std::variant<std::monostate, std::string, bool, std::int64_t, double, PlistData, PlistDate,
                 Boxed<PlistArray>, Boxed<PlistDict>, UIColor>
        v_;
};

// A dictionary with string keys that keeps its entries in insertion order.
class PlistDict {
public:
    struct Entry {
        std::string key;
        PlistValue value;
        bool operator==(const Entry&) const = default;
    };

    PlistDict() = default;
    PlistDict(std::initializer_list<Entry> entries);

    // The value for the key, or nullptr when the dictionary holds none.
    const PlistValue* find(std::string_view key) const;
    PlistValue* find(std::string_view key);
    // The value for the key, or nil.
    PlistValue value(std::string_view key) const;
    bool contains(std::string_view key) const { return find(key) != nullptr; }

    // Replaces the value in place when the key exists, else appends the entry.
    // Setting nil removes the key, as removing an object does.
    void set(std::string_view key, PlistValue value);
    bool remove(std::string_view key);
    // Adds every entry of the other dictionary, replacing values of keys present in both.
    void addEntriesFrom(const PlistDict& other);

    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    std::vector<std::string> keys() const;
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

    bool operator==(const PlistDict& other) const;

private:
    void reindex();

    std::vector<Entry> entries_;
    std::unordered_map<std::string, std::size_t> index_;
};

inline PlistValue::PlistValue(PlistArray value) : v_(Boxed<PlistArray>(std::move(value))) {}
inline PlistValue::PlistValue(PlistDict value) : v_(Boxed<PlistDict>(std::move(value))) {}
