#pragma once

#include "app/state/recent_files.h"
#include "main/editor.h"

#include <QWidget>

namespace orva::ui {

/// New, Open, Save, Save As, recent files and the question that guards unsaved changes.
class ProjectCommands final : public QObject {
    Q_OBJECT
public:
    ProjectCommands(Editor& editor, QWidget* window);

    const RecentFiles& recentFiles() const { return m_recentFiles; }

    void New(std::int16_t system);
    void Open();
    void OpenRecent(const std::string& path);
    void Save();
    void SaveAs();
    /// Whether the window may close: nothing to save, saved, or given up. With `mayCancel` the
    /// question has a Cancel button.
    bool mayClose(bool mayCancel);

    /// Writes the report and opens it; `aspect` is the shape of its rigging picture.
    void SaveRTFFile(double aspect);
    /// Imports directivity data until the next system selection.
    void LoadData();
    void importData(const QString& file);
    void Help();

signals:
    void recentFilesChanged();
    /// What the status line says from now on: a text with that argument; None: nothing.
    void statusChanged(Text text, const QString& argument);

private:
    enum class Answer { Saved, Discard, Cancel };
    Answer askToSave(bool mayCancel);
    /// Runs a command that drops the project: at once, after No, never after Yes or Cancel.
    void guarded(const std::function<void()>& command);

    bool SaveFile(bool saveAs);
    void LoadFile(bool useDialog, const std::string& fileName);
    QStringList filters(Text ownKind, const char* ownPattern) const;
    QString folder() const;
    std::optional<QString> fileToOpen(Text titleText, const QStringList& filters);
    /// The name ends in the extension.
    std::optional<QString> fileToSave(const std::string& extension, Text titleText,
                                      const QStringList& filters);
    bool write(const QString& target, const std::string& bytes, Text failed);
    void remember(const std::string& path);

    Editor& m_editor;
    QWidget* m_window;
    RecentFiles m_recentFiles;
};

} // namespace orva::ui
