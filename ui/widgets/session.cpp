#include "widgets/session.h"

#include "lang/string_table.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <algorithm>
#include <cmath>

namespace orva::ui {

QString qtText(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

Session::Session(SettingsStore& store, Folders folders)
    : m_store(store), m_folders(std::move(folders))
{
}

Result<Done> Session::storeSettings()
{
    const Settings& now = m_state.settings;
    Result<Done> stored = m_store.exchange([&] { SaveChangedSettings(now, m_stored, m_store); });
    if (stored)
        m_stored = now;
    return stored;
}

std::string_view Session::MlText(Text id) const
{
    return MlGetString(m_state.gLanguageId, id);
}

TextOptions Session::textOptions() const
{
    return {m_state.gLanguageId, m_state.settings.Units_Meters};
}

DrawingOptions Session::drawingOptions() const
{
    return {textOptions(), m_state.settings.GridUnit_Room, m_state.settings.GridUnit_Rigging,
            m_state.settings.GridUnit_Area, m_state.settings.map};
}

QString minutesAndSeconds(double seconds)
{
    const auto whole = static_cast<qint64>(std::min(std::ceil(seconds), 1e9));
    return QString("%1:%2").arg(whole / 60).arg(whole % 60, 2, 10, QChar('0'));
}

void Session::ChangeLanguage(std::int32_t languageId)
{
    MlSetLanguage(m_state, languageId);
    const bool german = m_state.gLanguageId == Language::German;
    auto* translator = findChild<QTranslator*>();
    if (!translator)
        translator = new QTranslator(this);
    QCoreApplication::removeTranslator(translator);
    // The buttons of the platform's own dialogs.
    if (german && translator->load("qtbase_de", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
    emit LanguageChanged();
}

} // namespace orva::ui
