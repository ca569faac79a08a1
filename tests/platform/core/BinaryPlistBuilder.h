#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Builds binary property lists by hand, including shapes no well-behaved writer makes
// (cycles, shared subtrees, absurd nesting), to test how readers cope with them.
class BinaryPlistBuilder {
public:
    // Each returns the new object's index.
    std::uint32_t string(const std::string& text)
    {
        std::vector<std::uint8_t> object = marker(0x50, text.size());
        object.insert(object.end(), text.begin(), text.end());
        return add(object);
    }
    std::uint32_t array(const std::vector<std::uint32_t>& items)
    {
        std::vector<std::uint8_t> object = marker(0xA0, items.size());
        for (std::uint32_t item : items)
            appendRef(object, item);
        return add(object);
    }
    // An array whose references are filled in later, for cycles and forward references.
    std::uint32_t reserveArray(std::size_t count) { return array(std::vector<std::uint32_t>(count, 0)); }
    void setArrayItem(std::uint32_t array, std::size_t index, std::uint32_t item)
    {
        std::vector<std::uint8_t>& object = objects_[array];
        std::size_t at = object.size() - (countOf(object) - index) * 4;
        for (int i = 0; i < 4; ++i)
            object[at + i] = static_cast<std::uint8_t>(item >> (24 - 8 * i));
    }

    std::vector<std::uint8_t> build(std::uint32_t top) const
    {
        std::vector<std::uint8_t> out = {'b', 'p', 'l', 'i', 's', 't', '0', '0'};
        std::vector<std::uint32_t> offsets;
        for (const auto& object : objects_) {
            offsets.push_back(static_cast<std::uint32_t>(out.size()));
            out.insert(out.end(), object.begin(), object.end());
        }
        std::uint64_t tableOffset = out.size();
        for (std::uint32_t offset : offsets)
            appendBigEndian(out, offset, 4);
        std::vector<std::uint8_t> trailer(6, 0);
        trailer.push_back(4); // offset size
        trailer.push_back(4); // reference size
        out.insert(out.end(), trailer.begin(), trailer.end());
        appendBigEndian(out, objects_.size(), 8);
        appendBigEndian(out, top, 8);
        appendBigEndian(out, tableOffset, 8);
        return out;
    }

private:
    static void appendBigEndian(std::vector<std::uint8_t>& out, std::uint64_t value, int bytes)
    {
        for (int i = bytes - 1; i >= 0; --i)
            out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
    static void appendRef(std::vector<std::uint8_t>& out, std::uint32_t ref) { appendBigEndian(out, ref, 4); }
    static std::vector<std::uint8_t> marker(std::uint8_t type, std::size_t count)
    {
        if (count < 15)
            return {static_cast<std::uint8_t>(type | count)};
        std::vector<std::uint8_t> out = {static_cast<std::uint8_t>(type | 0x0F), 0x12};
        appendBigEndian(out, count, 4);
        return out;
    }
    static std::size_t countOf(const std::vector<std::uint8_t>& object)
    {
        if ((object[0] & 0x0F) != 0x0F)
            return object[0] & 0x0F;
        return (std::size_t{object[2]} << 24) | (std::size_t{object[3]} << 16) | (std::size_t{object[4]} << 8) | object[5];
    }
    std::uint32_t add(std::vector<std::uint8_t> object)
    {
        objects_.push_back(std::move(object));
        return static_cast<std::uint32_t>(objects_.size() - 1);
    }

    std::vector<std::vector<std::uint8_t>> objects_;
};
