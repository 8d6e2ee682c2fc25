#include "app/file_access.h"

#include <QFile>
#include <QSaveFile>

namespace orva {

namespace fs = std::filesystem;

namespace {

Error fileError(const char* what, const QFileDevice& file, const fs::path& path)
{
    return {std::string(what) + ": " + file.errorString().toStdString(), path.string()};
}

/// Qt's name of a file; none where Qt would mean another one.
Result<QString> qtName(const fs::path& path)
{
    const std::string bytes = path.string();
    const QString name = QString::fromStdString(bytes);
    if (bytes.empty())
        return Error{"the file name is empty", {}};
    if (name.toStdString() != bytes)
        return Error{"the file name is not UTF-8", bytes};
    return name;
}

} // namespace

Result<std::string> readFile(const fs::path& path, std::size_t limit)
{
    const Result<QString> name = qtName(path);
    if (!name)
        return name.error();
    QFile file(*name);
    if (!file.open(QIODevice::ReadOnly))
        return fileError("cannot be opened", file, path);
    const QByteArray bytes = file.read(static_cast<qint64>(limit));
    if (file.error() != QFileDevice::NoError)
        return fileError("cannot be read", file, path);
    return bytes.toStdString();
}

struct PendingFiles::File {
    fs::path path;
    QSaveFile file;
};

PendingFiles::PendingFiles() = default;
PendingFiles::PendingFiles(PendingFiles&&) noexcept = default;
PendingFiles& PendingFiles::operator=(PendingFiles&&) noexcept = default;
PendingFiles::~PendingFiles() = default;

Result<Done> PendingFiles::add(const fs::path& path, std::string_view bytes)
{
    const Result<QString> name = qtName(path);
    if (!name)
        return name.error();
    std::error_code error;
    if (fs::exists(path, error) && !fs::is_regular_file(path, error))
        return Error{"cannot be written: it is no regular file", path.string()};
    auto pending = std::make_unique<File>();
    pending->path = path;
    QSaveFile& file = pending->file;
    file.setFileName(*name);
    const auto size = static_cast<qint64>(bytes.size());
    // commit() does not see that emptying the buffer failed, on a full disk say: flush() does.
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), size) != size || !file.flush())
        return fileError("cannot be written", file, path);
    m_files.push_back(std::move(pending));
    return Done{};
}

Result<Done> PendingFiles::commit()
{
    for (const auto& pending : m_files)
        if (!pending->file.commit())
            return fileError("cannot be written", pending->file, pending->path);
    m_files.clear();
    return Done{};
}

Result<Done> writeFile(const fs::path& path, std::string_view bytes)
{
    PendingFiles files;
    if (auto added = files.add(path, bytes); !added)
        return added;
    return files.commit();
}

} // namespace orva
