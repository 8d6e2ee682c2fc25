#include "app/files/file_access.h"
#include "app/state/ini_text.h"
#include "app/state/settings.h"

#include <QDateTime>
#include <QFile>
#include <QLockFile>
#include <QSettings>
#include <chrono>

namespace orva {

namespace {

/// QSettings reads the file. It would also write it, but puts an empty one in its place where the
/// disk is full.
class PlatformSettingsStore final : public SettingsStore {
public:
    explicit PlatformSettingsStore(Disk& disk) : m_disk(disk) {}
    ~PlatformSettingsStore() override
    {
        if (!m_changes.isEmpty())
            (void)exchange([] {}); // told by those who ask
    }

    std::optional<std::string> value(std::string_view section, std::string_view key) const override
    {
        if (const auto changed = m_changes.find(path(section, key)); changed != m_changes.end())
            return changed->join(',').toStdString();
        const QVariant value = m_stored.value(path(section, key));
        if (!value.isValid())
            return std::nullopt;
        // A comma that someone typed into the file parts a list there.
        return value.toStringList().join(',').toStdString();
    }

    void setValue(std::string_view section, std::string_view key, std::string_view text) override
    {
        m_changes[path(section, key)] = {fromUtf8(text)};
    }

    Result<Done> exchange(const std::function<void()>& change) override
    {
        std::error_code ignored; // told when it is written
        std::filesystem::create_directories(file().parent_path(), ignored);
        QLockFile lock(m_stored.fileName() + ".exchange");
        constexpr int kPatienceMs = 2000; // then rather at once than never
        lock.tryLock(kPatienceMs);
        const IniValues changes = m_changes;
        constexpr int kTries = 20; // where another program writes without having the lock
        Write written = Write::Overtaken;
        for (int i = 0; i < kTries && written == Write::Overtaken; ++i) {
            m_changes = changes;
            m_stored.sync();
            change();
            written = write();
        }
        if (written == Write::Done && m_stored.status() != QSettings::FormatError)
            return Done{};
        return Error{
            Message(written == Write::Done ? Text::OptionsNotRead : Text::OptionsNotWritten),
            file().string()};
    }

    Result<Done> flush() override
    {
        return exchange([] {});
    }

private:
    static QString fromUtf8(std::string_view text)
    {
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    static QString path(std::string_view section, std::string_view key)
    {
        return fromUtf8(section) + '/' + fromUtf8(key);
    }
    std::filesystem::path file() const { return m_stored.fileName().toStdString(); }

    enum class Write { Done, Overtaken, Failed };

    Write write()
    {
        if (m_stored.status() == QSettings::AccessError)
            return Write::Failed;
        if (m_changes.isEmpty())
            return Write::Done;
        QSettings own("ORVA", "ORVA");
        own.setFallbacksEnabled(false); // what all users share stays where it is
        IniValues values;
        for (const QString& key : own.allKeys())
            values[key] = own.value(key).toStringList();
        values.insert(m_changes);
        std::error_code none;
        const auto before = std::filesystem::last_write_time(file(), none);
        if (const auto saved = writeFile(file(), iniText(values).toStdString(), m_disk); !saved)
            return saved.error().what.text() == Message(Text::WrittenMeanwhile).text()
                       ? Write::Overtaken
                       : Write::Failed;
        makeNewer(before);
        m_changes.clear();
        m_stored.sync();
        return Write::Done;
    }

    /// QSettings tells by size and time, to the millisecond, that a file is another one.
    void makeNewer(std::filesystem::file_time_type before) const
    {
        constexpr std::chrono::milliseconds kLeast(1);
        std::error_code ignored;
        if (std::filesystem::last_write_time(file(), ignored) < before + kLeast)
            std::filesystem::last_write_time(file(), before + kLeast, ignored);
    }

    Disk& m_disk;
    QSettings m_stored{"ORVA", "ORVA"};
    IniValues m_changes; ///< not yet in the file
};

} // namespace

Result<std::string> setSettingsAside()
{
    const QString file = QSettings("ORVA", "ORVA").fileName();
    if (!QFile::exists(file))
        return std::string();
    const QString aside =
        file + "." + QDateTime::currentDateTime().toString("yyyy-MM-dd-hhmmss") + ".old";
    if (!QFile::rename(file, aside))
        return Error{Message(Text::OptionsNotWritten), file.toStdString()};
    return aside.toStdString();
}

std::unique_ptr<SettingsStore> platformSettingsStore(Disk& disk)
{
    return std::make_unique<PlatformSettingsStore>(disk);
}

} // namespace orva
