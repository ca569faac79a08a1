#pragma once

#include <string>

// An exclusive advisory lock on a lock file, held for the object's lifetime. Writers that
// read, change and write back a shared file hold it so that none loses another's changes;
// readers never take it.
class FileLock {
public:
    explicit FileLock(const std::string& lockPath);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // False when the lock file could not be opened (its folder is missing, say); the caller
    // then goes on unlocked, as there is nothing to write into either.
    bool isLocked() const { return fd_ >= 0; }

private:
    int fd_ = -1;
};
