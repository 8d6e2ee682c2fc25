#pragma once

#include <QLoggingCategory>
#include <filesystem>
#include <mutex>
#include <string_view>

namespace orva {

Q_DECLARE_LOGGING_CATEGORY(logStart)
Q_DECLARE_LOGGING_CATEGORY(logFiles)
Q_DECLARE_LOGGING_CATEGORY(logMessages)

/// A file of lines that several processes write to and any thread. It and the one before it,
/// "NAME.1", hold kMostBytes at most. What cannot be written is lost in silence: a log never
/// stands in the way.
class LogFile {
public:
    static constexpr std::size_t kMostBytes = 1U << 20U;

    explicit LogFile(std::filesystem::path file) : m_file(std::move(file)) {}
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;
    ~LogFile();

    void write(std::string_view line);

private:
    bool open();
    void close();
    void turnOver();

    std::mutex m_mutex;
    std::filesystem::path m_file;
    int m_descriptor = -1;
};

} // namespace orva
