#include "app/state/settings.h"

#include <QDateTime>
#include <QFile>
#include <QLockFile>
#include <QSettings>
#include <QStringList>

namespace orva {

namespace {

/// QSettings locks its file, merges what another program wrote meanwhile, and replaces it whole.
class PlatformSettingsStore : public SettingsStore {
public:
    std::optional<std::string> value(std::string_view section, std::string_view key) const override
    {
        const QVariant value = m_settings.value(path(section, key));
        if (!value.isValid())
            return std::nullopt;
        // A comma that someone typed into the file parts a list there.
        return value.toStringList().join(',').toStdString();
    }

    void setValue(std::string_view section, std::string_view key, std::string_view text) override
    {
        m_settings.setValue(path(section, key), fromUtf8(text));
    }

    Result<Done> exchange(const std::function<void()>& change) override
    {
        QLockFile lock(m_settings.fileName() + ".exchange");
        constexpr int kPatienceMs = 2000; // then rather at once than never
        lock.tryLock(kPatienceMs);
        m_settings.sync();
        return SettingsStore::exchange(change);
    }

    Result<Done> flush() override
    {
        m_settings.sync();
        if (m_settings.status() == QSettings::NoError)
            return Done{};
        return Error{Message(m_settings.status() == QSettings::AccessError ? Text::OptionsNotWritten
                                                                           : Text::OptionsNotRead),
                     m_settings.fileName().toStdString()};
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

    QSettings m_settings{"ORVA", "ORVA"};
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

std::unique_ptr<SettingsStore> platformSettingsStore()
{
    return std::make_unique<PlatformSettingsStore>();
}

} // namespace orva
