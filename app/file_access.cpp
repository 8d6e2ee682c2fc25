#include "app/file_access.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orva {

namespace fs = std::filesystem;

namespace {

Error systemError(std::string_view what, int code, const fs::path& path)
{
    return {std::string(what) + ": " + std::generic_category().message(code), path.string()};
}

/// The file that a chain of symbolic links leads to, there or not.
fs::path linkTarget(fs::path path)
{
    std::error_code error;
    for (int links = 0; links < 40 && fs::is_symlink(path, error); ++links)
        path = path.parent_path() / fs::read_symlink(path, error);
    return path;
}

/// A file beside `target`, open for writing; removed again unless it took the target's place.
class TemporaryFile {
public:
    explicit TemporaryFile(const fs::path& target)
        : m_path(target.string() + ".XXXXXX"), m_file(mkostemp(m_path.data(), O_CLOEXEC))
    {
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile()
    {
        if (m_file < 0)
            return;
        close(m_file);
        if (!m_moved)
            unlink(m_path.c_str());
    }

    bool isOpen() const { return m_file >= 0; }

    bool write(std::string_view bytes) const
    {
        while (!bytes.empty()) {
            const ssize_t written = ::write(m_file, bytes.data(), bytes.size());
            if (written < 0 && errno != EINTR)
                return false;
            bytes.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
        }
        return true;
    }

    bool flushWithMode(mode_t mode) const
    {
        return fchmod(m_file, mode) == 0 && fsync(m_file) == 0;
    }

    bool moveTo(const fs::path& target)
    {
        m_moved = std::rename(m_path.c_str(), target.c_str()) == 0;
        return m_moved;
    }

private:
    std::string m_path;
    int m_file;
    bool m_moved = false;
};

/// The permissions of the file that is replaced, or those that a new file gets here.
mode_t modeFor(const struct stat* old)
{
    if (old)
        return old->st_mode & 07777;
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

} // namespace

Result<std::string> readFile(const fs::path& path, std::size_t limit)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                               std::fclose);
    if (!file)
        return systemError("cannot be opened", errno, path);
    std::string bytes;
    std::string chunk(std::min<std::size_t>(limit, 1U << 16), '\0');
    while (bytes.size() < limit) {
        const std::size_t wanted = std::min(chunk.size(), limit - bytes.size());
        const std::size_t got = std::fread(chunk.data(), 1, wanted, file.get());
        bytes.append(chunk, 0, got);
        if (std::ferror(file.get()))
            return systemError("cannot be read", errno, path);
        if (got < wanted)
            break;
    }
    return bytes;
}

Result<Done> writeFile(const fs::path& path, std::string_view bytes)
{
    const fs::path target = linkTarget(path);
    struct stat old = {};
    const bool replaces = stat(target.c_str(), &old) == 0;
    if (replaces && !S_ISREG(old.st_mode))
        return Error{"cannot be written: it is no regular file", path.string()};

    TemporaryFile file(target);
    if (!file.isOpen() || !file.write(bytes) ||
        !file.flushWithMode(modeFor(replaces ? &old : nullptr)) || !file.moveTo(target))
        return systemError("cannot be written", errno, path);
    return Done{};
}

} // namespace orva
