#pragma once

#include <QByteArray>

#include <map>
#include <optional>
#include <string>

// Reads a string table in Apple's .strings format: `"key" = "value";` pairs (keys and values
// may also be bare words), /* */ and // comments, backslash escapes (\n, \t, \", \\, \UXXXX),
// in UTF-8 or UTF-16 with a byte-order mark. Nothing for text that does not follow the
// format, so that a damaged table is ignored as a whole rather than half read.
std::optional<std::map<std::string, std::string>> parseStringsFile(const QByteArray& data);
