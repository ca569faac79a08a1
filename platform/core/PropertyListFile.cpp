#include "PropertyListFile.h"

#include "TemporaryFiles.h"

#include "PropertyListSafety.h"

#include <plist/plist.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct PlistNode {
    plist_t node = nullptr;
    ~PlistNode() { if (node) plist_free(node); }
};

PlistValue fromNode(plist_t node);

PlistValue fromDictNode(plist_t node)
{
    PlistDict dict;
    plist_dict_iter iter = nullptr;
    plist_dict_new_iter(node, &iter);
    for (;;) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iter, &key, &item);
        if (!item) {
            std::free(key);
            break;
        }
        PlistValue value = fromNode(item);
        if (key && !value.isNil())
            dict.set(key, std::move(value));
        std::free(key);
    }
    std::free(iter);
    return dict;
}

PlistValue fromNode(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT: {
        std::uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return static_cast<std::int64_t>(value);
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_STRING: {
        char* value = nullptr;
        plist_get_string_val(node, &value);
        PlistValue result(std::string(value ? value : ""));
        std::free(value);
        return result;
    }
    case PLIST_DATA: {
        char* value = nullptr;
        std::uint64_t length = 0;
        plist_get_data_val(node, &value, &length);
        PlistData data(value, value + length);
        std::free(value);
        return data;
    }
    case PLIST_DATE: {
        std::int32_t seconds = 0, microseconds = 0;
        plist_get_date_val(node, &seconds, &microseconds);
        return PlistDate{seconds + microseconds / 1e6};
    }
    case PLIST_ARRAY: {
        PlistArray array;
        std::uint32_t count = plist_array_get_size(node);
        array.reserve(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            PlistValue value = fromNode(plist_array_get_item(node, i));
            if (!value.isNil())
                array.push_back(std::move(value));
        }
        return array;
    }
    case PLIST_DICT:
        return fromDictNode(node);
    default:
        return {};
    }
}

// Null when the value holds something a property list cannot: nil or a colour.
plist_t toNode(const PlistValue& value)
{
    switch (value.type()) {
    case PlistValue::Type::String:
        return plist_new_string(value.asString()->c_str());
    case PlistValue::Type::Boolean:
        return plist_new_bool(value.boolValue() ? 1 : 0);
    case PlistValue::Type::Integer:
        return plist_new_uint(static_cast<std::uint64_t>(value.integerValue()));
    case PlistValue::Type::Real:
        return plist_new_real(value.doubleValue());
    case PlistValue::Type::Data: {
        const PlistData& data = *value.asData();
        return plist_new_data(reinterpret_cast<const char*>(data.data()), data.size());
    }
    case PlistValue::Type::Date: {
        // The library keeps dates as 32-bit seconds; later or earlier ones are pinned to its range.
        double seconds = value.asDate()->secondsSinceReferenceDate;
        seconds = std::isfinite(seconds) ? std::clamp(seconds, -2147483648.0, 2147483647.0) : 0.0;
        double whole = std::floor(seconds);
        return plist_new_date(static_cast<std::int32_t>(whole), static_cast<std::int32_t>((seconds - whole) * 1e6));
    }
    case PlistValue::Type::Array: {
        plist_t array = plist_new_array();
        for (const PlistValue& item : *value.asArray()) {
            plist_t child = toNode(item);
            if (!child) {
                plist_free(array);
                return nullptr;
            }
            plist_array_append_item(array, child);
        }
        return array;
    }
    case PlistValue::Type::Dictionary: {
        plist_t dict = plist_new_dict();
        for (const auto& entry : *value.asDict()) {
            plist_t child = toNode(entry.value);
            if (!child) {
                plist_free(dict);
                return nullptr;
            }
            plist_dict_set_item(dict, entry.key.c_str(), child);
        }
        return dict;
    }
    default:
        return nullptr;
    }
}

bool readWholeFile(const std::string& path, std::vector<std::uint8_t>* bytes, int* error)
{
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        *error = errno;
        return false;
    }
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode) ||
        static_cast<std::size_t>(info.st_size) > kMaxPropertyListFileSize) {
        ::close(fd);
        *error = EINVAL;
        return false;
    }
    bytes->resize(static_cast<std::size_t>(info.st_size));
    std::size_t done = 0;
    while (done < bytes->size()) {
        ssize_t n = ::read(fd, bytes->data() + done, bytes->size() - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        done += static_cast<std::size_t>(n);
    }
    ::close(fd);
    bytes->resize(done);
    return true;
}

std::string folderOf(const std::string& path)
{
    std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

bool fail(std::string* error, const std::string& message)
{
    if (error)
        *error = message;
    return false;
}

} // namespace

PlistValue parsePropertyList(const std::uint8_t* data, std::size_t size)
{
    if (!data || size == 0 || size > kMaxPropertyListFileSize)
        return {};
    const char* text = reinterpret_cast<const char*>(data);
    bool binary = plist_is_binary(text, static_cast<std::uint32_t>(size));
    if (binary ? !PropertyListSafety::binaryStructureWithinLimits(data, size)
               : !PropertyListSafety::xmlWithinLimits(text, size))
        return {};
    PlistNode root;
    if (binary)
        plist_from_bin(text, static_cast<std::uint32_t>(size), &root.node);
    else
        plist_from_xml(text, static_cast<std::uint32_t>(size), &root.node);
    if (!root.node)
        return {};
    return fromNode(root.node);
}

PlistReadResult readPropertyListFile(const std::string& path)
{
    std::vector<std::uint8_t> bytes;
    int error = 0;
    if (!readWholeFile(path, &bytes, &error))
        return {error == ENOENT || error == ENOTDIR ? PlistReadStatus::Missing : PlistReadStatus::Unreadable, {}};
    PlistValue value = parsePropertyList(bytes.data(), bytes.size());
    if (value.isNil())
        return {PlistReadStatus::Unreadable, {}};
    return {PlistReadStatus::Ok, std::move(value)};
}

std::optional<PlistDict> readPropertyListDictionary(const std::string& path)
{
    PlistReadResult result = readPropertyListFile(path);
    if (result.status != PlistReadStatus::Ok || !result.value.asDict())
        return std::nullopt;
    return std::move(*result.value.asDict());
}

std::optional<std::string> propertyListXML(const PlistValue& value)
{
    PlistNode root;
    root.node = toNode(value);
    if (!root.node)
        return std::nullopt;
    char* xml = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(root.node, &xml, &length);
    if (!xml)
        return std::nullopt;
    std::string result(xml, length);
    plist_to_xml_free(xml);
    return result;
}

bool writePropertyListAtomically(const std::string& path, const PlistValue& value, std::string* error)
{
    std::optional<std::string> xml = propertyListXML(value);
    if (!xml)
        return fail(error, "the value holds something a property list cannot store");

    removeAbandonedTemporaries(path);
    std::string temporary = temporaryFilePattern(path);
    int fd = ::mkstemp(temporary.data());
    if (fd < 0)
        return fail(error, "cannot create a file in " + folderOf(path) + ": " + std::strerror(errno));

    // Keep the mode of the file being replaced; a new file gets the usual mode under the umask.
    struct stat old {};
    mode_t mode;
    if (::stat(path.c_str(), &old) == 0) {
        mode = old.st_mode & 07777;
    } else {
        mode_t mask = ::umask(0);
        ::umask(mask);
        mode = 0666 & ~mask;
    }
    ::fchmod(fd, mode);

    std::size_t done = 0;
    while (done < xml->size()) {
        ssize_t n = ::write(fd, xml->data() + done, xml->size() - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            std::string reason = std::strerror(errno);
            ::close(fd);
            ::unlink(temporary.c_str());
            return fail(error, "cannot write " + path + ": " + reason);
        }
        done += static_cast<std::size_t>(n);
    }
    bool flushed = ::fsync(fd) == 0;
    std::string reason = flushed ? "" : std::strerror(errno);
    if (::close(fd) != 0 && flushed) {
        flushed = false;
        reason = std::strerror(errno);
    }
    if (!flushed) {
        ::unlink(temporary.c_str());
        return fail(error, "cannot write " + path + ": " + reason);
    }
    if (::rename(temporary.c_str(), path.c_str()) != 0) {
        std::string reason = std::strerror(errno);
        ::unlink(temporary.c_str());
        return fail(error, "cannot replace " + path + ": " + reason);
    }
    int folder = ::open(folderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        ::fsync(folder);
        ::close(folder);
    }
    return true;
}
