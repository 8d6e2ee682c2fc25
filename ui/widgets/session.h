#pragma once

#include "app/application_state.h"
#include "drawing/drawing_options.h"

#include <QObject>
#include <QString>

namespace orva::ui {

/// The program's title, as in captions of messages.
inline constexpr const char* kProgramTitle = "ORVA";

/// A text of the tables or of a library.
QString qtText(std::string_view text);

/// What all windows of the running program share. Every open window follows LanguageChanged().
class Session final : public QObject {
    Q_OBJECT
public:
    Session(SettingsStore& settingsStore, std::filesystem::path folder);

    ApplicationState state;
    SettingsStore& store;
    /// Folder of the executable, or where an installed program keeps its data.
    std::filesystem::path programFolder;

    QString text(int id) const { return qtText(MlText(id)); }
    TextOptions textOptions() const;
    DrawingOptions drawingOptions() const;

    /// "Time left: 1:05".
    QString timeLeft(double seconds) const;

    /// Makes a language current for the program, its windows and the platform's dialogs.
    void ChangeLanguage(std::int32_t languageId);

signals:
    void LanguageChanged();

private:
    std::string_view MlText(int id) const;
};

/// Shows a message with an OK button.
void showMessage(QWidget* parent, const QString& text, const QString& title = kProgramTitle);

} // namespace orva::ui
