#include "PropertyListSafety.h"

#include <cstring>
#include <string_view>
#include <vector>

namespace PropertyListSafety {

bool xmlWithinLimits(const char* data, std::size_t size)
{
    std::string_view text(data, size);
    // XML has no NUL character; the parser would keep it inside a string and then assert.
    if (text.find('\0') != std::string_view::npos)
        return false;
    int depth = 0;
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        std::string_view tag = text.substr(at + 1);
        bool closing = tag.starts_with('/');
        if (closing)
            tag.remove_prefix(1);
        if (!tag.starts_with("array") && !tag.starts_with("dict"))
            continue;
        std::size_t end = tag.find('>');
        bool selfClosing = end != std::string_view::npos && end > 0 && tag[end - 1] == '/';
        if (closing)
            depth = depth > 0 ? depth - 1 : 0;
        else if (!selfClosing && ++depth > kMaxNesting)
            return false;
    }
    return true;
}

namespace {

struct BinaryPlist {
    const std::uint8_t* data;
    std::size_t size;
    unsigned offsetSize;
    unsigned refSize;
    std::uint64_t objectCount;
    std::uint64_t topObject;
    std::uint64_t offsetTable;

    static std::uint64_t readBigEndian(const std::uint8_t* p, unsigned bytes)
    {
        std::uint64_t value = 0;
        for (unsigned i = 0; i < bytes; ++i)
            value = (value << 8) | p[i];
        return value;
    }

    bool objectOffset(std::uint64_t object, std::uint64_t* offset) const
    {
        std::uint64_t entry = offsetTable + object * offsetSize;
        if (object >= objectCount || entry + offsetSize > size)
            return false;
        *offset = readBigEndian(data + entry, offsetSize);
        return *offset >= 8 && *offset < offsetTable;
    }

    // The object's count (low nibble of the marker, or an integer object after it) and where
    // its contents start.
    bool count(std::uint64_t offset, std::uint64_t* n, std::uint64_t* contents) const
    {
        *n = data[offset] & 0x0F;
        *contents = offset + 1;
        if (*n != 0x0F)
            return true;
        std::uint64_t at = offset + 1;
        if (at >= size || (data[at] >> 4) != 0x1)
            return false;
        unsigned bytes = 1u << (data[at] & 0x0F);
        if (bytes > 8 || at + 1 + bytes > size)
            return false;
        *n = readBigEndian(data + at + 1, bytes);
        *contents = at + 1 + bytes;
        return *n <= size;
    }

    // The parser asserts that a string has no NUL inside; such files are refused instead.
    bool stringWithoutNul(std::uint64_t contents, std::uint64_t units, unsigned unitSize) const
    {
        if (contents + units * unitSize > size)
            return false;
        for (std::uint64_t i = 0; i < units; ++i) {
            const std::uint8_t* unit = data + contents + i * unitSize;
            if (unit[0] == 0 && (unitSize == 1 || unit[1] == 0))
                return false;
        }
        return true;
    }

    // Checks the object and, for an array, set or dictionary, tells where its references start
    // and how many there are (a dictionary has twice its count). Other objects have none.
    bool inspect(std::uint64_t object, std::uint64_t* first, std::uint64_t* refs) const
    {
        std::uint64_t offset;
        if (!objectOffset(object, &offset))
            return false;
        unsigned type = data[offset] >> 4;
        *first = 0;
        *refs = 0;
        std::uint64_t n, contents;
        switch (type) {
        case 0x5:
            return count(offset, &n, &contents) && stringWithoutNul(contents, n, 1);
        case 0x6:
            return count(offset, &n, &contents) && stringWithoutNul(contents, n, 2);
        case 0xA:
        case 0xC:
        case 0xD:
            if (!count(offset, &n, &contents))
                return false;
            *refs = type == 0xD ? n * 2 : n;
            *first = contents;
            return *refs * refSize <= size && contents + *refs * refSize <= size;
        default:
            return true;
        }
    }

    std::uint64_t reference(std::uint64_t first, std::uint64_t index) const
    {
        return readBigEndian(data + first + index * refSize, refSize);
    }
};

} // namespace

bool binaryStructureWithinLimits(const std::uint8_t* data, std::size_t size)
{
    if (size < 8 + 32 || std::memcmp(data, "bplist", 6) != 0)
        return false;
    const std::uint8_t* trailer = data + size - 32;
    BinaryPlist plist{data, size, trailer[6], trailer[7], BinaryPlist::readBigEndian(trailer + 8, 8),
                      BinaryPlist::readBigEndian(trailer + 16, 8), BinaryPlist::readBigEndian(trailer + 24, 8)};
    if (plist.offsetSize < 1 || plist.offsetSize > 8 || plist.refSize < 1 || plist.refSize > 8)
        return false;
    if (plist.objectCount == 0 || plist.objectCount > size || plist.topObject >= plist.objectCount)
        return false;
    if (plist.offsetTable >= size - 32 || plist.objectCount * plist.offsetSize > size - 32 - plist.offsetTable)
        return false;

    // Depth-first walk that counts how many nodes the parser would build, visiting each
    // object once: a cycle, too deep a nesting or too large an expansion is refused.
    enum : std::uint8_t { Unvisited, InProgress, Done };
    std::vector<std::uint8_t> state(plist.objectCount, Unvisited);
    std::vector<std::uint64_t> expanded(plist.objectCount, 0);
    struct Frame {
        std::uint64_t object, first, count, next, total;
    };
    std::vector<Frame> stack;

    auto enter = [&](std::uint64_t object) {
        Frame frame{object, 0, 0, 0, 1};
        if (!plist.inspect(object, &frame.first, &frame.count))
            return false;
        state[object] = InProgress;
        stack.push_back(frame);
        return stack.size() <= static_cast<std::size_t>(kMaxNesting);
    };
    if (!enter(plist.topObject))
        return false;
    while (!stack.empty()) {
        Frame& frame = stack.back();
        if (frame.next == frame.count) {
            expanded[frame.object] = frame.total;
            state[frame.object] = Done;
            std::uint64_t total = frame.total;
            stack.pop_back();
            if (!stack.empty()) {
                stack.back().total += total;
                if (stack.back().total > kMaxBinaryNodes)
                    return false;
            }
            continue;
        }
        std::uint64_t child = plist.reference(frame.first, frame.next++);
        if (child >= plist.objectCount || state[child] == InProgress)
            return false;
        if (state[child] == Done) {
            frame.total += expanded[child];
            if (frame.total > kMaxBinaryNodes)
                return false;
            continue;
        }
        if (!enter(child))
            return false;
    }
    return true;
}

} // namespace PropertyListSafety
