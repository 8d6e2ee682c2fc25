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

Session::Session(SettingsStore& settingsStore, std::filesystem::path folder)
    : store(settingsStore), programFolder(std::move(folder))
{
}

std::string_view Session::MlText(Text id) const
{
    return MlGetString(state.gLanguageId, id);
}

TextOptions Session::textOptions() const
{
    return {state.gLanguageId, state.settings.Units_Meters};
}

DrawingOptions Session::drawingOptions() const
{
    return {textOptions(), state.settings.GridUnit_Room, state.settings.GridUnit_Rigging,
            state.settings.GridUnit_Area};
}

QString minutesAndSeconds(double seconds)
{
    const auto whole = static_cast<qint64>(std::min(std::ceil(seconds), 1e9));
    return QString("%1:%2").arg(whole / 60).arg(whole % 60, 2, 10, QChar('0'));
}

void Session::ChangeLanguage(std::int32_t languageId)
{
    MlSetLanguage(state, languageId);
    const bool german = state.gLanguageId == Language::German;
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
