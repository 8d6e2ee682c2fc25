#include "app/files/disk.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace orva {

namespace {

class SystemDisk : public Disk {
public:
    int open(const Path& file, int flags, mode_t mode) override
    {
        return ::open(file.c_str(), flags | O_CLOEXEC, mode);
    }
    ssize_t read(int descriptor, char* bytes, std::size_t most) override
    {
        return ::read(descriptor, bytes, most);
    }
    ssize_t write(int descriptor, const char* bytes, std::size_t size) override
    {
        return ::write(descriptor, bytes, size);
    }
    int fsync(int descriptor) override { return ::fsync(descriptor); }
    int close(int descriptor) override { return ::close(descriptor); }
    int lock(int descriptor) override { return ::flock(descriptor, LOCK_EX | LOCK_NB); }

    int fstat(int descriptor, struct stat& found) override { return ::fstat(descriptor, &found); }
    int lstat(const Path& file, struct stat& found) override
    {
        return ::lstat(file.c_str(), &found);
    }
    int fchown(int descriptor, uid_t owner, gid_t group) override
    {
        return ::fchown(descriptor, owner, group);
    }
    int fchmod(int descriptor, mode_t mode) override { return ::fchmod(descriptor, mode); }
    ssize_t listxattr(const Path& file, char* names, std::size_t most) override
    {
        return ::llistxattr(file.c_str(), names, most);
    }
    ssize_t getxattr(const Path& file, const char* name, char* value, std::size_t most) override
    {
        return ::lgetxattr(file.c_str(), name, value, most);
    }
    int fsetxattr(int descriptor, const char* name, std::string_view value) override
    {
        return ::fsetxattr(descriptor, name, value.data(), value.size(), 0);
    }

    int rename(const Path& from, const Path& to) override
    {
        return ::rename(from.c_str(), to.c_str());
    }
    int exchange(const Path& a, const Path& b) override
    {
        return ::renameat2(AT_FDCWD, a.c_str(), AT_FDCWD, b.c_str(), RENAME_EXCHANGE);
    }
    int renameNew(const Path& from, const Path& to) override
    {
        const int moved =
            ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
        if (moved == 0 || errno != EINVAL) // file systems that have no such call have links
            return moved;
        return ::link(from.c_str(), to.c_str()) == 0 ? ::unlink(from.c_str()) : -1;
    }
    int link(const Path& file, const Path& other) override
    {
        return ::link(file.c_str(), other.c_str());
    }
    int unlink(const Path& file) override { return ::unlink(file.c_str()); }
};

} // namespace

Disk& systemDisk()
{
    static SystemDisk disk;
    return disk;
}

Message reasonOf(int error)
{
    static constexpr std::pair<int, Text> kReasons[] = {
        {ENOENT, Text::ReasonNoSuchFile},     {EPERM, Text::ReasonNotPermitted},
        {EACCES, Text::ReasonDenied},         {ENOSPC, Text::ReasonNoSpace},
        {EDQUOT, Text::ReasonQuota},          {EIO, Text::ReasonIo},
        {EROFS, Text::ReasonReadOnly},        {ELOOP, Text::ReasonLinks},
        {EISDIR, Text::ReasonFolder},         {ENOTDIR, Text::ReasonNoFolder},
        {ENAMETOOLONG, Text::ReasonLongName}, {EFBIG, Text::ReasonLargeFile},
        {EMFILE, Text::ReasonOpenFiles},      {EBUSY, Text::ReasonBusy},
        {EEXIST, Text::ReasonExists},         {ENOTSUP, Text::ReasonNotSupported},
        {EINVAL, Text::ReasonInvalid},        {ENOMEM, Text::ReasonMemory},
        {EXDEV, Text::ReasonOtherDevice},     {ESTALE, Text::ReasonStale},
        {ETXTBSY, Text::ReasonRuns},          {ENXIO, Text::ReasonNoDevice}};
    for (const auto& [known, text] : kReasons)
        if (known == error)
            return Message(text);
    return Message(Text::SystemError, {number(error)});
}

Message failedCall(const std::string& call, int error)
{
    return Message(Text::CallFailed, {call, reasonOf(error)});
}

} // namespace orva
