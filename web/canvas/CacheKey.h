#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

// The key of one of the drawing caches: the bytes of every number its result is made from,
// written in place (appended to a string one by one, they took a fifth of a short text's
// drawing).
class CacheKey {
public:
    explicit CacheKey(std::size_t expectedSize) { bytes_.resize(expectedSize); }

    template <typename T>
    void add(const T& value)
    {
        addBytes(&value, sizeof value);
    }

    void addBytes(const void* data, std::size_t size)
    {
        if (used_ + size > bytes_.size())
            bytes_.resize(std::max(2 * bytes_.size(), used_ + size));
        std::memcpy(bytes_.data() + used_, data, size);
        used_ += size;
    }

    std::string take() &&
    {
        bytes_.resize(used_);
        return std::move(bytes_);
    }

private:
    std::string bytes_;
    std::size_t used_ = 0;
};
