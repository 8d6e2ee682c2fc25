#include "app/files/temporary_file.h"

#include <cerrno>
#include <csignal>
#include <cstdint>

#include <fcntl.h>
#include <unistd.h>

namespace orva {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kDigits =
    "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::size_t kProcessDigits = 4; // 14 million; Linux counts to 4
constexpr std::size_t kSuffix = kProcessDigits + 2;

char checkOf(std::string_view text)
{
    std::uint32_t sum = 0;
    for (const char c : text)
        sum = sum * 31 + static_cast<unsigned char>(c);
    return static_cast<char>('A' + sum % 26);
}

/// Whether the process that wrote a rest may still do so. One of our own number may be another's
/// that had it before; the lock tells.
bool mayRun(pid_t process)
{
    return process != getpid() && (kill(process, 0) == 0 || errno != ESRCH);
}

void removeRest(Disk& disk, const fs::path& file)
{
    struct stat found = {};
    if (disk.lstat(file, found) != 0 || !S_ISREG(found.st_mode))
        return;
    const int descriptor = disk.open(file, O_RDONLY | O_NONBLOCK | O_NOFOLLOW, 0);
    if (descriptor < 0)
        return;
    if (disk.lock(descriptor) == 0) // a writer in another container has it
        disk.unlink(file);
    disk.close(descriptor);
}

} // namespace

std::string temporaryName(const std::string& name, pid_t process, int attempt)
{
    std::string made = name + '.' + std::to_string(attempt % kTemporaryAttempts);
    auto left = static_cast<std::size_t>(process);
    for (std::size_t i = 0; i < kProcessDigits; ++i, left /= kDigits.size())
        made += kDigits[left % kDigits.size()];
    return made + checkOf(made);
}

std::optional<pid_t> temporaryWriter(std::string_view file, const std::string& name)
{
    if (file.size() != name.size() + 1 + kSuffix || file.substr(0, name.size()) != name ||
        file[name.size()] != '.')
        return std::nullopt;
    const std::string_view suffix = file.substr(name.size() + 1);
    std::size_t process = 0;
    for (std::size_t i = kProcessDigits; i > 0; --i) {
        const std::size_t digit = kDigits.find(suffix[i]);
        if (digit == std::string_view::npos)
            return std::nullopt;
        process = process * kDigits.size() + digit;
    }
    const auto writer = static_cast<pid_t>(process);
    const int attempt = suffix.front() - '0';
    if (writer == 0 || attempt < 0 || attempt >= kTemporaryAttempts ||
        temporaryName(name, writer, attempt) != file)
        return std::nullopt;
    return writer;
}

int makeTemporary(Disk& disk, const fs::path& target, mode_t mode, fs::path& made)
{
    for (int attempt = 0; attempt < kTemporaryAttempts; ++attempt) {
        made = target.parent_path() / temporaryName(target.filename(), getpid(), attempt);
        const int descriptor = disk.open(made, O_WRONLY | O_CREAT | O_EXCL, mode);
        if (descriptor >= 0) {
            disk.lock(descriptor); // where there are no locks, rests stay
            return descriptor;
        }
        if (errno != EEXIST)
            return -1;
    }
    return -1;
}

std::optional<fs::path> freeTemporary(Disk& disk, const fs::path& target)
{
    for (int attempt = 0; attempt < kTemporaryAttempts; ++attempt) {
        struct stat found = {};
        fs::path name = target.parent_path() / temporaryName(target.filename(), getpid(), attempt);
        if (disk.lstat(name, found) != 0 && errno == ENOENT)
            return name;
    }
    return std::nullopt;
}

void removeRests(Disk& disk, const fs::path& target)
{
    std::error_code error;
    const std::string name = target.filename();
    std::vector<fs::path> rests;
    for (fs::directory_iterator entry(target.parent_path(), error), end; !error && entry != end;
         entry.increment(error)) {
        const auto writer = temporaryWriter(entry->path().filename().native(), name);
        if (writer && !mayRun(*writer))
            rests.push_back(entry->path());
    }
    for (const fs::path& rest : rests)
        removeRest(disk, rest);
}

} // namespace orva
