#include "app/files/recovery.h"

#include "app/files/temporary_file.h"
#include "document/state_bytes.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <algorithm>
#include <cerrno>
#include <ctime>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace orva {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kMagic = "ORVA recovery 2\n";
constexpr std::size_t kCheckBytes = 20;
constexpr std::size_t kMostBytes = 1U << 20U;
constexpr const char* kEnding = ".recovery";
constexpr const char* kLockEnding = ".lock";

std::string checkOf(std::string_view content)
{
    return QCryptographicHash::hash(
               QByteArray(content.data(), static_cast<qsizetype>(content.size())),
               QCryptographicHash::Sha1)
        .toStdString();
}

fs::path withEnding(fs::path file, const char* ending)
{
    return file.replace_extension(ending);
}

} // namespace

HeldLock::HeldLock(HeldLock&& other) noexcept
    : m_file(std::move(other.m_file)), m_descriptor(std::exchange(other.m_descriptor, -1))
{
}

HeldLock& HeldLock::operator=(HeldLock&& other) noexcept
{
    std::swap(m_file, other.m_file);
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

HeldLock::~HeldLock()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

HeldLock HeldLock::take(const fs::path& file)
{
    HeldLock lock;
    const int descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor < 0)
        return lock;
    // Whoever held it may have removed the file between the two calls.
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0 || !isStillNamed(descriptor, file)) {
        ::close(descriptor);
        return lock;
    }
    lock.m_file = file;
    lock.m_descriptor = descriptor;
    return lock;
}

void HeldLock::remove()
{
    if (m_descriptor < 0)
        return;
    ::unlink(m_file.c_str());
    ::close(std::exchange(m_descriptor, -1));
}

namespace {

constexpr std::int32_t kNoText = -1;

void append(ByteWriter& out, const std::optional<std::string>& text)
{
    out.i32(text ? static_cast<std::int32_t>(text->size()) : kNoText);
    out.chars(text.value_or(""));
}

/// Takes a text with its length off the front; false where it is not whole.
bool take(std::string_view& content, std::optional<std::string>& text)
{
    ByteReader in(asBytes(content), {});
    if (content.size() < sizeof(std::int32_t))
        return false;
    const std::int32_t length = in.i32();
    content.remove_prefix(sizeof length);
    if (length == kNoText)
        return true;
    if (length < 0 || static_cast<std::size_t>(length) > content.size())
        return false;
    text = content.substr(0, static_cast<std::size_t>(length));
    content.remove_prefix(text->size());
    return true;
}

} // namespace

std::string recoveryBytes(const Unsaved& unsaved)
{
    ByteWriter out;
    append(out, unsaved.file.path);
    append(out, unsaved.file.bytes);
    out.append(writeState(unsaved.state));
    const std::string content(asText(out.bytes()));
    return std::string(kMagic) + checkOf(content) + content;
}

Result<Unsaved> readRecovery(std::string_view bytes, std::string_view name)
{
    const Error damaged{Message(Text::RecoveryDamaged), std::string(name)};
    if (bytes.substr(0, kMagic.size()) != kMagic || bytes.size() < kMagic.size() + kCheckBytes)
        return damaged;
    const std::string_view check = bytes.substr(kMagic.size(), kCheckBytes);
    std::string_view content = bytes.substr(kMagic.size() + kCheckBytes);
    if (checkOf(content) != check)
        return damaged;
    Unsaved unsaved;
    std::optional<std::string> path;
    if (!take(content, path) || !take(content, unsaved.file.bytes))
        return damaged;
    unsaved.file.path = path.value_or("");
    Result<DocumentState> state = readState(asBytes(content), name);
    if (!state)
        return state.error();
    unsaved.state = std::move(*state);
    return unsaved;
}

/// The names are new with each window: process, moment, and what is free.
Result<Done> RecoveryFile::prepare()
{
    if (m_lock)
        return Done{};
    std::error_code error;
    fs::create_directories(m_folder, error);
    if (error)
        return Error{Message(Text::NotWrittenBecause, {reasonOf(error.value())}), m_folder};
    const std::string name = std::to_string(::getpid()) + "-" + std::to_string(std::time(nullptr));
    constexpr int kMost = 100;
    for (int number = 0; number < kMost && !m_lock; ++number) {
        m_file = m_folder / (name + "-" + std::to_string(number) + kEnding);
        if (!fs::exists(m_file, error))
            m_lock = HeldLock::take(withEnding(m_file, kLockEnding));
    }
    if (!m_lock)
        return Error{Message(Text::NotWrittenBecause, {reasonOf(errno)}), m_folder};
    return Done{};
}

Result<Done> RecoveryFile::write(std::string_view bytes)
{
    if (auto prepared = prepare(); !prepared)
        return prepared;
    const Result<Saved> written = writeFile(m_file, bytes);
    return written ? Result<Done>(Done{}) : written.error();
}

void RecoveryFile::remove()
{
    if (!m_lock)
        return;
    std::error_code error;
    fs::remove(m_file, error);
    m_lock.remove();
}

namespace {

std::vector<fs::path> filesEnding(const fs::path& folder, const char* ending)
{
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (entry->path().extension() == ending)
            files.push_back(entry->path());
    return files;
}

std::chrono::system_clock::time_point timeOf(const fs::path& file)
{
    struct stat found = {};
    ::lstat(file.c_str(), &found);
    return std::chrono::system_clock::from_time_t(found.st_mtime);
}

Message setAside(const fs::path& file, const Error& why)
{
    const fs::path aside = file.string() + ".damaged";
    std::error_code error;
    fs::rename(file, aside, error);
    return Message(Text::RecoverySetAside,
                   {file.string(), why.what, error ? file.string() : aside.string()});
}

} // namespace

Found findLeftBehind(const fs::path& folder)
{
    Found found;
    for (const fs::path& file : filesEnding(folder, kEnding)) {
        HeldLock lock = HeldLock::take(withEnding(file, kLockEnding));
        if (!lock)
            continue;
        const Result<std::string> bytes = readFile(file, kMostBytes);
        Result<Unsaved> unsaved = bytes ? readRecovery(*bytes, file.string()) : bytes.error();
        if (!unsaved) {
            found.damaged.push_back(setAside(file, unsaved.error()));
            lock.remove();
            continue;
        }
        found.left.push_back({std::move(lock), file, timeOf(file), std::move(*unsaved)});
    }
    std::sort(found.left.begin(), found.left.end(),
              [](const LeftBehind& a, const LeftBehind& b) { return a.written > b.written; });
    std::error_code error;
    for (const fs::path& file : filesEnding(folder, kLockEnding)) {
        const fs::path recovery = withEnding(file, kEnding);
        if (fs::exists(recovery, error))
            continue;
        if (HeldLock lock = HeldLock::take(file)) {
            removeRests(systemDisk(), recovery);
            lock.remove();
        }
    }
    return found;
}

void removeLeftBehind(LeftBehind& left)
{
    std::error_code error;
    fs::remove(left.file, error);
    removeRests(systemDisk(), left.file);
    left.lock.remove();
}

} // namespace orva
