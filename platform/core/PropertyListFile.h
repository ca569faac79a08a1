#pragma once

#include "PlistValue.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

enum class PlistReadStatus {
    Ok,
    Missing,    // no file at the path
    Unreadable, // a file that cannot be read or parsed as a property list
};

struct PlistReadResult {
    PlistReadStatus status = PlistReadStatus::Missing;
    PlistValue value; // nil unless Ok
};

// Parses XML or binary property-list data; nil for anything else. Input that would make the
// parser recurse or expand without bound (deep nesting, reference cycles, shared subtrees)
// is refused before parsing.
PlistValue parsePropertyList(const std::uint8_t* data, std::size_t size);

// Largest property-list file read; a settings file is a few kilobytes.
constexpr std::size_t kMaxPropertyListFileSize = 16 * 1024 * 1024;

PlistReadResult readPropertyListFile(const std::string& path);
// The file's top-level dictionary, or nothing for a missing, unreadable or non-dictionary file.
std::optional<PlistDict> readPropertyListDictionary(const std::string& path);

// The XML form of the value, or nothing when it holds a value that is not a property list.
std::optional<std::string> propertyListXML(const PlistValue& value);

// Writes the XML form atomically: a temporary file in the same folder, flushed to disk, then
// renamed over the old file, whose permissions it keeps. On failure the old file is untouched
// and the reason is put into *error.
bool writePropertyListAtomically(const std::string& path, const PlistValue& value, std::string* error = nullptr);
