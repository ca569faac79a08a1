#pragma once

#include <optional>
#include <string>
#include <utility>

// An exception of the DOM as a value. `name` is the standard's error name: "IndexSizeError",
// "InvalidStateError", "SyntaxError", "NotSupportedError", "SecurityError", ...; the name
// "TypeError" or "RangeError" stands for the ECMAScript error of that name instead of a
// DOMException. The script binding turns it into the thrown object.
struct DOMException {
    std::string name;
    std::string message;
};

// Either a value or the exception the operation raised.
template <typename T>
class [[nodiscard]] ExceptionOr {
public:
    ExceptionOr(T value) : value_(std::move(value)) {}
    ExceptionOr(DOMException exception) : exception_(std::move(exception)) {}

    bool isException() const { return exception_.has_value(); }
    const DOMException& exception() const { return *exception_; }
    T& value() { return *value_; }
    const T& value() const { return *value_; }
    T releaseValue() { return std::move(*value_); }

private:
    std::optional<T> value_;
    std::optional<DOMException> exception_;
};

template <>
class [[nodiscard]] ExceptionOr<void> {
public:
    ExceptionOr() = default;
    ExceptionOr(DOMException exception) : exception_(std::move(exception)) {}

    bool isException() const { return exception_.has_value(); }
    const DOMException& exception() const { return *exception_; }

private:
    std::optional<DOMException> exception_;
};
