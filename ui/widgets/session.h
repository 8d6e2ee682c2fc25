#pragma once

#include "app/state/application_state.h"
#include "drawing/drawing_options.h"
#include "widgets/messages.h"

#include <QObject>
#include <QString>

namespace orva::ui {

/// A text of the tables or of a library.
QString qtText(std::string_view text);

/// "1:05", whole seconds rounded up.
QString minutesAndSeconds(double seconds);

/// Where a running program finds and leaves its files.
struct Folders {
    std::filesystem::path program; ///< of the executable, or where an installed one keeps its data
    std::filesystem::path state{}; ///< of recovery files; empty: there are none
    std::filesystem::path logFile{};
};

/// What all windows of the running program share. Every open window follows LanguageChanged().
class Session final : public QObject {
    Q_OBJECT
public:
    Session(SettingsStore& store, Folders folders);

    ApplicationState& state() { return m_state; }
    const ApplicationState& state() const { return m_state; }
    SettingsStore& store() { return m_store; }
    /// Stores the settings that have changed since they were loaded or stored last.
    Result<Done> storeSettings();
    /// Those of the state are as they were loaded.
    void settingsLoaded() { m_stored = m_state.settings; }
    const Folders& folders() const { return m_folders; }
    const std::filesystem::path& programFolder() const { return m_folders.program; }

    QString text(Text id) const { return qtText(MlText(id)); }
    QString text(const Message& message) const { return qtText(message.text(m_state.gLanguageId)); }
    QString text(const Error& error) const { return qtText(error.text(m_state.gLanguageId)); }
    TextOptions textOptions() const;
    DrawingOptions drawingOptions() const;

    /// "Time left: 1:05".
    QString timeLeft(double seconds) const
    {
        return text(Text::TimeLeft) + minutesAndSeconds(seconds);
    }

    /// Makes a language current for the program, its windows and the platform's dialogs.
    void ChangeLanguage(std::int32_t languageId);

signals:
    void LanguageChanged();

private:
    std::string_view MlText(Text id) const;

    ApplicationState m_state;
    Settings m_stored;
    SettingsStore& m_store;
    Folders m_folders;
};

} // namespace orva::ui
