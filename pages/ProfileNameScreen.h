#pragma once

#include <string>
#include <string_view>

// Why a name typed for a new profile cannot become its file name. The name is the file name
// as it stands, so anything that would change the folder it lands in, hide it, or make the
// file system refuse it is turned away before a file is touched.
enum class ProfileNameFault {
    None,
    Empty,
    Slash,
    LeadingDot,
    ControlCharacter,
    TooLong,
};

// Checks the name for a profile in the folder (with its trailing slash). Besides the command
// line's own limit, the name must leave room within the folder's longest file name for the
// extension and the suffixes of the temporary files a save goes through.
ProfileNameFault profileNameFault(std::string_view name, const std::string& folder);

// The localisation key of the message that tells the user what is wrong with the name.
const char* profileNameFaultMessageKey(ProfileNameFault fault);
