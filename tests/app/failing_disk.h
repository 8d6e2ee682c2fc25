#pragma once

#include "app/files/disk.h"

#include <cerrno>
#include <map>

namespace orva {

/// The real disk, of which certain calls fail: by their name, the n-th or all.
class FailingDisk : public Disk {
public:
    struct Failure {
        const char* call;
        int nth; ///< from 1; 0: every one
        int error;
    };
    explicit FailingDisk(std::vector<Failure> failures) : m_failures(std::move(failures)) {}

    int open(const Path& file, int flags, mode_t mode) override
    {
        return fails("open") ? -1 : m_real.open(file, flags, mode);
    }
    ssize_t read(int descriptor, char* bytes, std::size_t most) override
    {
        return fails("read") ? -1 : m_real.read(descriptor, bytes, most);
    }
    ssize_t write(int descriptor, const char* bytes, std::size_t size) override
    {
        constexpr std::size_t kPiece = 3; // the system may take less than it is given
        return fails("write") ? -1 : m_real.write(descriptor, bytes, std::min(size, kPiece));
    }
    int fsync(int descriptor) override { return fails("fsync") ? -1 : m_real.fsync(descriptor); }
    int close(int descriptor) override
    {
        const int closed = m_real.close(descriptor);
        return fails("close") ? -1 : closed;
    }
    int lock(int descriptor) override { return m_real.lock(descriptor); }
    int fstat(int descriptor, struct stat& found) override
    {
        return fails("fstat") ? -1 : m_real.fstat(descriptor, found);
    }
    int lstat(const Path& file, struct stat& found) override
    {
        return fails("lstat") ? -1 : m_real.lstat(file, found);
    }
    int fchown(int descriptor, uid_t owner, gid_t group) override
    {
        return fails("fchown") ? -1 : m_real.fchown(descriptor, owner, group);
    }
    int fchmod(int descriptor, mode_t mode) override
    {
        return fails("fchmod") ? -1 : m_real.fchmod(descriptor, mode);
    }
    ssize_t listxattr(const Path& file, char* names, std::size_t most) override
    {
        return fails("listxattr") ? -1 : m_real.listxattr(file, names, most);
    }
    ssize_t getxattr(const Path& file, const char* name, char* value, std::size_t most) override
    {
        return fails("getxattr") ? -1 : m_real.getxattr(file, name, value, most);
    }
    int fsetxattr(int descriptor, const char* name, std::string_view value) override
    {
        return fails("fsetxattr") ? -1 : m_real.fsetxattr(descriptor, name, value);
    }
    int rename(const Path& from, const Path& to) override
    {
        return fails("rename") ? -1 : m_real.rename(from, to);
    }
    int exchange(const Path& a, const Path& b) override
    {
        return fails("exchange") ? -1 : m_real.exchange(a, b);
    }
    int renameNew(const Path& from, const Path& to) override
    {
        return fails("renameNew") ? -1 : m_real.renameNew(from, to);
    }
    int link(const Path& file, const Path& other) override
    {
        return fails("link") ? -1 : m_real.link(file, other);
    }
    int unlink(const Path& file) override { return fails("unlink") ? -1 : m_real.unlink(file); }

private:
    bool fails(const std::string& call)
    {
        const int count = ++m_calls[call];
        for (const Failure& failure : m_failures)
            if (call == failure.call && (failure.nth == 0 || failure.nth == count)) {
                errno = failure.error;
                return true;
            }
        return false;
    }

    Disk& m_real = systemDisk();
    std::vector<Failure> m_failures;
    std::map<std::string, int> m_calls;
};

} // namespace orva
