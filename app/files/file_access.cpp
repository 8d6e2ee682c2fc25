#include "app/files/file_access.h"

#include "app/files/file_attributes.h"
#include "app/files/temporary_file.h"

#include <cerrno>

#include <fcntl.h>

namespace orva {

namespace fs = std::filesystem;

namespace {

Error noRegularFile(Text consequence, const fs::path& path)
{
    return {Message(consequence, {Message(Text::NoRegularFile)}), path};
}

/// The call that failed and why, from `errno`.
Error failed(Text consequence, const char* call, const fs::path& path)
{
    return {Message(consequence, {failedCall(call, errno)}), path};
}

Error oldNotKept(const char* call, const fs::path& path)
{
    const Message why(Text::OldNotKept, {failedCall(call, errno)});
    return {Message(Text::NotWrittenBecause, {why}), path};
}

/// Repeats a call that a signal interrupted.
template<typename Call>
auto uninterrupted(Call call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// The file that a name means, links followed, in a folder that is there.
Result<fs::path> targetOf(fs::path name)
{
    constexpr int kMostLinks = 40;
    const fs::path given = name;
    const auto error = [&](int number) {
        return Error{Message(Text::NotWrittenBecause, {reasonOf(number)}), given};
    };
    if (name.empty())
        return Error{Message(Text::EmptyFileName), {}};
    std::error_code code;
    for (int links = 0; fs::is_symlink(fs::symlink_status(name, code)); ++links) {
        if (links == kMostLinks)
            return error(ELOOP);
        name = name.parent_path() / fs::read_symlink(name, code);
        if (code)
            return error(code.value());
    }
    const fs::path folder = name.parent_path();
    const fs::path real = fs::canonical(folder.empty() ? "." : folder, code);
    if (code)
        return error(code.value());
    if (!name.has_filename())
        return error(EISDIR);
    return real / name.filename();
}

Result<std::string> readOpen(Disk& disk, int descriptor, const fs::path& path, std::size_t limit)
{
    struct stat found = {};
    if (disk.fstat(descriptor, found) != 0)
        return failed(Text::NotReadBecause, "fstat", path);
    if (!S_ISREG(found.st_mode))
        return noRegularFile(Text::NotReadBecause, path);
    constexpr std::size_t kPiece = 1 << 20;
    std::string bytes;
    for (ssize_t taken = 1; taken > 0 && bytes.size() < limit;) {
        const std::size_t before = bytes.size();
        const std::size_t most = std::min(kPiece, limit - before);
        bytes.resize(before + most);
        taken = uninterrupted([&] { return disk.read(descriptor, bytes.data() + before, most); });
        if (taken < 0)
            return failed(Text::NotReadBecause, "read", path);
        bytes.resize(before + static_cast<std::size_t>(taken));
    }
    return bytes;
}

} // namespace

Result<std::string> readFile(const fs::path& path, std::size_t limit, Disk& disk)
{
    if (path.empty())
        return Error{Message(Text::EmptyFileName), {}};
    const int descriptor =
        uninterrupted([&] { return disk.open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY, 0); });
    if (descriptor < 0 && errno == ENXIO) // a socket, or a device without its driver
        return noRegularFile(Text::NotReadBecause, path);
    if (descriptor < 0)
        return Error{Message(Text::NotOpenedBecause, {reasonOf(errno)}), path};
    Result<std::string> bytes = readOpen(disk, descriptor, path, limit);
    disk.close(descriptor);
    return bytes;
}

Result<std::optional<std::string>> contentOf(const fs::path& path, std::size_t limit, Disk& disk)
{
    std::error_code error;
    if (!fs::exists(path, error) && !error)
        return std::optional<std::string>();
    Result<std::string> bytes = readFile(path, limit, disk);
    return bytes ? Result<std::optional<std::string>>(std::move(*bytes)) : bytes.error();
}

bool isSameFile(const fs::path& a, const fs::path& b)
{
    std::error_code error;
    if (fs::equivalent(a, b, error))
        return true;
    const Result<fs::path> targetA = targetOf(a);
    const Result<fs::path> targetB = targetOf(b);
    return targetA && targetB && *targetA == *targetB;
}

bool isStillNamed(int descriptor, const fs::path& path)
{
    struct stat held = {};
    struct stat named = {};
    return ::fstat(descriptor, &held) == 0 && ::stat(path.c_str(), &named) == 0 &&
           held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

PendingFiles::~PendingFiles()
{
    for (File& file : m_files)
        discard(file);
}

Result<Done> PendingFiles::add(const fs::path& path, std::string_view bytes)
{
    const Result<fs::path> target = targetOf(path);
    if (!target)
        return target.error();
    for (const File& other : m_files)
        if (isSameFile(other.target, *target))
            return Error{Message(Text::SameOutput), path};
    File file;
    file.path = path;
    file.target = *target;
    struct stat found = {};
    if (m_disk.lstat(*target, found) == 0)
        file.replaced = found;
    else if (errno != ENOENT)
        return failed(Text::NotWrittenBecause, "lstat", path);
    if (file.replaced && !S_ISREG(found.st_mode))
        return noRegularFile(Text::NotWrittenBecause, path);

    removeRests(m_disk, *target);
    Result<Done> written = write(file, bytes);
    if (written)
        m_files.push_back(std::move(file));
    else
        discard(file);
    return written;
}

Result<Done> PendingFiles::write(File& file, std::string_view bytes)
{
    // What replaces a file is nobody else's to read before it has its rights.
    const mode_t mode = file.replaced ? 0600 : 0666;
    fs::path temporary;
    file.descriptor = makeTemporary(m_disk, file.target, mode, temporary);
    if (file.descriptor < 0)
        return failed(Text::NotWrittenBecause, "open", file.path);
    file.temporary = temporary;
    while (!bytes.empty()) {
        const ssize_t written = uninterrupted(
            [&] { return m_disk.write(file.descriptor, bytes.data(), bytes.size()); });
        if (written < 0)
            return failed(Text::NotWrittenBecause, "write", file.path);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    if (file.replaced)
        file.losses = keepAttributes(m_disk, file.target, *file.replaced, file.descriptor);
    if (uninterrupted([&] { return m_disk.fsync(file.descriptor); }) != 0)
        return failed(Text::NotWrittenBecause, "fsync", file.path);
    return Done{};
}

namespace {

/// One after the other, parted by commas.
Message joined(const std::vector<Message>& parts)
{
    Message all = parts.front();
    for (std::size_t i = 1; i < parts.size(); ++i)
        all = Message(Text::List, {all, parts[i]});
    return all;
}

} // namespace

Result<Saved> PendingFiles::commit()
{
    if (auto placed = placeAll(); !placed) {
        while (!m_files.empty()) {
            undo(m_files.back());
            discard(m_files.back());
            m_files.pop_back();
        }
        return placed.error();
    }
    Saved saved;
    for (const File& file : m_files) {
        if (!file.losses.empty())
            saved.notes.emplace_back(
                Text::AttributesNotKept,
                std::vector<Message>{file.path.string(), joined(file.losses), file.old.string()});
        else if (!file.old.empty() && m_disk.unlink(file.old) != 0)
            saved.notes.emplace_back(Text::OldFileLeft,
                                     std::vector<Message>{file.path.string(), file.old.string(),
                                                          failedCall("unlink", errno)});
    }
    m_files.clear();
    return saved;
}

/// Nothing is certain before the last step went well.
Result<Done> PendingFiles::placeAll()
{
    for (auto step : {&PendingFiles::close, &PendingFiles::place, &PendingFiles::setAside})
        for (File& file : m_files)
            if (auto done = (this->*step)(file); !done)
                return done;
    for (const File& file : m_files)
        if (auto synced = syncFolder(file); !synced)
            return synced;
    return Done{};
}

Result<Done> PendingFiles::close(File& file)
{
    const int descriptor = std::exchange(file.descriptor, -1);
    if (m_disk.close(descriptor) != 0)
        return failed(Text::NotWrittenBecause, "close", file.path);
    return Done{};
}

namespace {

bool sameContent(const struct stat& a, const struct stat& b)
{
    return a.st_ino == b.st_ino && a.st_size == b.st_size && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
           a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

} // namespace

Result<Done> PendingFiles::place(File& file)
{
    if (!file.replaced)
        return placeNew(file);
    if (m_disk.exchange(file.temporary, file.target) != 0) {
        // Not on every file system, and not when somebody removed the old file.
        if (errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP || errno == ENOENT)
            return placeByLink(file);
        return failed(Text::NotWrittenBecause, "rename", file.path);
    }
    // Whoever wrote it since it was looked at does not lose that.
    struct stat old = {};
    if (m_disk.lstat(file.temporary, old) == 0 && !sameContent(old, *file.replaced)) {
        m_disk.exchange(file.temporary, file.target);
        return Error{Message(Text::WrittenMeanwhile), file.path};
    }
    file.old = std::exchange(file.temporary, {});
    file.placed = true;
    return Done{};
}

/// Nobody loses a file that has appeared meanwhile.
Result<Done> PendingFiles::placeNew(File& file)
{
    if (m_disk.renameNew(file.temporary, file.target) != 0) {
        if (errno == EEXIST)
            return Error{Message(Text::WrittenMeanwhile), file.path};
        if (m_disk.rename(file.temporary, file.target) != 0)
            return failed(Text::NotWrittenBecause, "rename", file.path);
    }
    file.temporary.clear();
    file.placed = true;
    return Done{};
}

Result<Done> PendingFiles::placeByLink(File& file)
{
    fs::path old;
    if (file.replaced) {
        old = freeTemporary(m_disk, file.target).value_or(fs::path());
        if (m_disk.link(file.target, old) != 0) {
            if (!file.losses.empty())
                return oldNotKept("link", file.path);
            old.clear();
        }
    }
    if (m_disk.rename(file.temporary, file.target) != 0) {
        const Error error = failed(Text::NotWrittenBecause, "rename", file.path);
        if (!old.empty())
            m_disk.unlink(old);
        return error;
    }
    file.temporary.clear();
    file.old = old;
    file.placed = true;
    return Done{};
}

/// Where something was lost, the old file gets a name of its own.
Result<Done> PendingFiles::setAside(File& file)
{
    if (file.losses.empty() || file.old.empty())
        return Done{};
    constexpr int kMost = 1000;
    for (int number = 1; number <= kMost; ++number) {
        fs::path name = file.target;
        name += number == 1 ? ".old" : ".old" + std::to_string(number);
        if (m_disk.renameNew(file.old, name) == 0) {
            file.old = name;
            return Done{};
        }
        if (errno != EEXIST)
            break;
    }
    return oldNotKept("rename", file.path);
}

Result<Done> PendingFiles::syncFolder(const File& file)
{
    const int folder = m_disk.open(file.target.parent_path(), O_RDONLY | O_DIRECTORY, 0);
    if (folder < 0 && errno == EACCES) // it may be written to, not read
        return Done{};
    if (folder < 0)
        return failed(Text::NotWrittenBecause, "open", file.path);
    Result<Done> done = Done{};
    // Some network file systems keep folders by themselves and say that this is no file to flush.
    if (uninterrupted([&] { return m_disk.fsync(folder); }) != 0 && errno != EINVAL)
        done = failed(Text::NotWrittenBecause, "fsync", file.path);
    m_disk.close(folder);
    return done;
}

void PendingFiles::undo(File& file)
{
    if (!file.placed)
        return;
    if (!file.old.empty())
        m_disk.rename(file.old, file.target);
    else if (!file.replaced)
        m_disk.unlink(file.target);
}

void PendingFiles::discard(File& file)
{
    if (file.descriptor >= 0)
        m_disk.close(file.descriptor);
    if (!file.temporary.empty())
        m_disk.unlink(file.temporary);
}

Result<Saved> writeFile(const fs::path& path, std::string_view bytes, Disk& disk)
{
    PendingFiles files(disk);
    if (auto added = files.add(path, bytes); !added)
        return added.error();
    return files.commit();
}

} // namespace orva
