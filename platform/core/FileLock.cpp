#include "FileLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

FileLock::FileLock(const std::string& lockPath)
{
    fd_ = ::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd_ < 0)
        return;
    while (::flock(fd_, LOCK_EX) != 0) {
        if (errno != EINTR) {
            ::close(fd_);
            fd_ = -1;
            return;
        }
    }
}

FileLock::~FileLock()
{
    if (fd_ >= 0)
        ::close(fd_); // closing releases the lock
}
