#pragma once

#include "platform/core/PlistValue.h"
#include "platform/core/TemporaryFiles.h"

#include <cstddef>
#include <string>

enum class NewProfileWrite {
    Written,
    Taken,  // a file (or a link, even a dangling one) already has the name
    Failed, // nothing was written
};

// How much longer than the profile's file name the names of its temporary files get: the
// staging file's, and the one it is written through.
inline constexpr std::size_t kNewProfileStagingSuffixLength = 2 * kTemporarySuffixLength;

// Writes a profile that must not replace anything: the file appears whole under the path or
// not at all, and a file that holds the name already, or takes it while this one is being
// written (another save, the command line), is left as it is.
NewProfileWrite writeNewProfile(const std::string& path, const PlistDict& profile);
