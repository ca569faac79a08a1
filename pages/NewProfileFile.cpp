#include "NewProfileFile.h"

#include "platform/core/PropertyListFile.h"
#include "platform/core/TemporaryFiles.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace {

mode_t usualFileMode()
{
    mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

// A rename that fails on a taken name; file systems without it get a hard link, which fails
// the same way.
NewProfileWrite moveWithoutReplacing(const std::string& from, const std::string& to)
{
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return NewProfileWrite::Written;
    if (errno == EEXIST)
        return NewProfileWrite::Taken;
    if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP)
        return NewProfileWrite::Failed;
    if (::link(from.c_str(), to.c_str()) == 0) {
        ::unlink(from.c_str());
        return NewProfileWrite::Written;
    }
    return errno == EEXIST ? NewProfileWrite::Taken : NewProfileWrite::Failed;
}

} // namespace

NewProfileWrite writeNewProfile(const std::string& path, const PlistDict& profile)
{
    std::error_code ignored;
    if (std::filesystem::exists(std::filesystem::symlink_status(path, ignored)))
        return NewProfileWrite::Taken;

    // The staging file is made exclusively, so it never follows a link out of the folder; the
    // atomic write then replaces it with the finished content.
    removeAbandonedTemporaries(path);
    std::string staging = temporaryFilePattern(path);
    int fd = ::mkstemp(staging.data());
    if (fd < 0)
        return NewProfileWrite::Failed;
    ::fchmod(fd, usualFileMode());
    ::close(fd);

    NewProfileWrite result = writePropertyListAtomically(staging, PlistValue(profile))
        ? moveWithoutReplacing(staging, path)
        : NewProfileWrite::Failed;
    if (result != NewProfileWrite::Written)
        ::unlink(staging.c_str());
    return result;
}
