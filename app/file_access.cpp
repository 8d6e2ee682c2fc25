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

} // namespace

Result<std::string> readFile(const fs::path& path, std::size_t limit)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fileError("cannot be opened", file, path);
    const QByteArray bytes = file.read(static_cast<qint64>(limit));
    if (file.error() != QFileDevice::NoError)
        return fileError("cannot be read", file, path);
    return bytes.toStdString();
}

Result<Done> writeFile(const fs::path& path, std::string_view bytes)
{
    std::error_code error;
    if (fs::exists(path, error) && !fs::is_regular_file(path, error))
        return Error{"cannot be written: it is no regular file", path.string()};
    QSaveFile file(QString::fromStdString(path.string()));
    const auto size = static_cast<qint64>(bytes.size());
    // commit() does not see that emptying the buffer failed, on a full disk say: flush() does.
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), size) != size ||
        !file.flush() || !file.commit())
        return fileError("cannot be written", file, path);
    return Done{};
}

} // namespace orva
