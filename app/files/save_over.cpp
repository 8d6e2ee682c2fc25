#include "app/files/save_over.h"

#include <QFileInfo>

namespace orva {

SaveOutcome saveOver(const std::filesystem::path& path, std::string_view bytes,
                     const std::optional<std::optional<std::string>>& expected, Disk& disk)
{
    const QFileInfo info(QString::fromStdString(path.string()));
    if (info.exists() && !info.isWritable())
        return Error{Message(Text::WriteProtected), path.string()};
    PendingFiles files(disk);
    if (const Result<Done> added = files.add(path, bytes); !added)
        return added.error();
    // Only now: what is written from here on is found by commit().
    if (expected) {
        const Result<std::optional<std::string>> now = contentOf(path, kMostCompared, disk);
        if (!now)
            return now.error();
        if (*now != *expected)
            return ChangedOutside{*now};
    }
    const Result<Saved> saved = files.commit();
    return saved ? SaveOutcome(*saved) : saved.error();
}

} // namespace orva
