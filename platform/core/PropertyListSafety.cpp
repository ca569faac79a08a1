#include "PropertyListSafety.h"

#include <cstring>
#include <string_view>
#include <vector>

namespace PropertyListSafety {

bool xmlNestingWithinLimit(const char* data, std::size_t size)
{
    std::string_view text(data, size);
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

    // For an array, set or dictionary object: where its references start and how many there
    // are (a dictionary has twice its count). Other objects have none.
    bool references(std::uint64_t object, std::uint64_t* first, std::uint64_t* count) const
    {
        std::uint64_t offset;
        if (!objectOffset(object, &offset))
            return false;
        std::uint8_t marker = data[offset];
        unsigned type = marker >> 4;
        *count = 0;
        *first = 0;
        if (type != 0xA && type != 0xC && type != 0xD)
            return true;
        std::uint64_t n = marker & 0x0F;
        std::uint64_t at = offset + 1;
        if (n == 0x0F) {
            if (at >= size || (data[at] >> 4) != 0x1)
                return false;
            unsigned bytes = 1u << (data[at] & 0x0F);
            if (bytes > 8 || at + 1 + bytes > size)
                return false;
            n = readBigEndian(data + at + 1, bytes);
            at += 1 + bytes;
        }
        std::uint64_t refs = type == 0xD ? n * 2 : n;
        if (n > size || refs * refSize > size || at + refs * refSize > size)
            return false;
        *first = at;
        *count = refs;
        return true;
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
        if (!plist.references(object, &frame.first, &frame.count))
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
