#pragma once

#include "PlistValue.h"

#include <functional>
#include <string>

// What a read-modify-write does when the file is missing or cannot be parsed.
enum class MissingFilePolicy {
    WriteNothing, // leave the file system as it is
    StartEmpty,   // start from an empty dictionary and create (or replace) the file
};

// Reads the dictionary at the path, lets `change` modify it and writes it back atomically,
// all under the lock file beside it (path + ".lock"), so that concurrent writers never lose
// each other's keys. Before a file that exists but cannot be parsed is replaced, it is
// copied aside as path + ".corrupt." + a time stamp. Returns false with a reason when
// nothing was written; WriteNothing on a missing file is not a failure.
bool updatePropertyListFile(const std::string& path, MissingFilePolicy policy,
                            const std::function<void(PlistDict&)>& change, std::string* error = nullptr);
