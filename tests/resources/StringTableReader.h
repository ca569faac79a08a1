#pragma once

#include <QByteArray>
#include <QString>

#include <ostream>
#include <utility>
#include <vector>

// A strict reader of the bundle's string tables, so that a missing semicolon or quote fails a
// test with its line number instead of silently swallowing the entries after it.
struct StringTable {
    std::vector<std::pair<QString, QString>> entries; // in file order
    QString error;                                    // empty when the whole file was read
};

StringTable readStringTable(const QByteArray& utf8);

// Lets test failures print texts readably.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}
