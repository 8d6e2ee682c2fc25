#pragma once

#include "lang/message.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <sys/stat.h>
#include <sys/types.h>

namespace orva {

/// The calls of the system by which files are read and written. Each as in POSIX, and on Linux: -1
/// and `errno` when it fails. Tests stand in for it with a disk that fails.
class Disk {
public:
    using Path = std::filesystem::path;

    virtual ~Disk() = default;

    virtual int open(const Path& file, int flags, mode_t mode) = 0; ///< never inherited
    virtual ssize_t read(int descriptor, char* bytes, std::size_t most) = 0;
    virtual ssize_t write(int descriptor, const char* bytes, std::size_t size) = 0;
    virtual int fsync(int descriptor) = 0;
    virtual int close(int descriptor) = 0;
    /// The whole file for this descriptor alone, without waiting for it; until it is closed.
    virtual int lock(int descriptor) = 0;

    virtual int fstat(int descriptor, struct stat& found) = 0;
    virtual int lstat(const Path& file, struct stat& found) = 0;
    virtual int fchown(int descriptor, uid_t owner, gid_t group) = 0;
    virtual int fchmod(int descriptor, mode_t mode) = 0;
    virtual ssize_t listxattr(const Path& file, char* names, std::size_t most) = 0;
    virtual ssize_t getxattr(const Path& file, const char* name, char* value, std::size_t most) = 0;
    virtual int fsetxattr(int descriptor, const char* name, std::string_view value) = 0;

    virtual int rename(const Path& from, const Path& to) = 0;
    /// The two change places at once; both are there.
    virtual int exchange(const Path& a, const Path& b) = 0;
    virtual int renameNew(const Path& from, const Path& to) = 0; ///< never over another file
    virtual int link(const Path& file, const Path& other) = 0;   ///< never over another file
    virtual int unlink(const Path& file) = 0;
};

/// The real one.
Disk& systemDisk();

/// What an `errno` means.
Message reasonOf(int error);
/// The same after the name of the call that failed: "fsync: Input/output error".
Message failedCall(const std::string& call, int error);

} // namespace orva
