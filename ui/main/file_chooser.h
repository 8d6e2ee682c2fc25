#pragma once

#include "main/editor.h"

#include <QFileDialog>

namespace orva::ui {

/// What files are asked for; each has the folder where it was found last.
enum class FileKind { Project, Report, SpeakerData, Table, Json, Pdf, Png, Svg };

/// The dialogs for files.
class FileChooser final {
public:
    FileChooser(Editor& editor, QWidget* window) : m_editor(editor), m_window(window) {}

    std::optional<QString> toOpen(FileKind kind);
    /// As the user typed it: wholeName() is what to write to.
    std::optional<QString> toSave(FileKind kind);
    /// With the extension of its kind.
    static QString wholeName(FileKind kind, const QString& chosen);

private:
    QStringList filters(FileKind kind) const;
    QString folder(FileKind kind) const;
    std::optional<QString> chosen(QFileDialog& dialog, FileKind kind);

    Editor& m_editor;
    QWidget* m_window;
};

} // namespace orva::ui
