#include "app/files/log.h"

#include "app/files/file_access.h"

#include <string>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orva {

Q_LOGGING_CATEGORY(logStart, "orva.start")
Q_LOGGING_CATEGORY(logFiles, "orva.files")
Q_LOGGING_CATEGORY(logMessages, "orva.messages")

LogFile::~LogFile()
{
    close();
}

bool LogFile::open()
{
    if (m_descriptor >= 0 && isStillNamed(m_descriptor, m_file))
        return true;
    close();
    std::error_code error;
    std::filesystem::create_directories(m_file.parent_path(), error);
    m_descriptor =
        ::open(m_file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK, 0600);
    return m_descriptor >= 0;
}

void LogFile::close()
{
    if (m_descriptor >= 0)
        ::close(std::exchange(m_descriptor, -1));
}

/// A full file becomes the one before. Of several processes one does it.
void LogFile::turnOver()
{
    if (::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0 && isStillNamed(m_descriptor, m_file))
        (void)::rename(m_file.c_str(), (m_file.string() + ".1").c_str()); // else it grows on
}

void LogFile::write(std::string_view line)
{
    constexpr std::size_t kHalf = kMostBytes / 2;
    const std::lock_guard guard(m_mutex);
    if (!open())
        return;
    std::string whole(line.substr(0, kHalf / 8));
    whole += '\n';
    struct stat found = {};
    if (::fstat(m_descriptor, &found) == 0 && S_ISREG(found.st_mode) &&
        static_cast<std::size_t>(found.st_size) + whole.size() > kHalf) {
        turnOver();
        if (!open())
            return;
    }
    [[maybe_unused]] const ssize_t written = ::write(m_descriptor, whole.data(), whole.size());
}

} // namespace orva
