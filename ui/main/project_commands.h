#pragma once

#include "app/files/save_over.h"
#include "app/state/recent_files.h"
#include "main/disk_queue.h"
#include "main/file_chooser.h"
#include "main/outside_question.h"
#include "painting/paged_document.h"

#include <set>

namespace orva::ui {

/// New, Open, Save, Save As, recent files and the question that guards unsaved changes.
class ProjectCommands final : public QObject {
    Q_OBJECT
public:
    ProjectCommands(Editor& editor, QWidget* window);

    const RecentFiles& recentFiles() const { return m_recentFiles; }
    /// Whether it was not there when lookForRecent() looked last.
    bool isMissing(const std::string& recent) const { return m_missing.contains(recent); }
    void lookForRecent();
    void forgetMissing();

    void New(std::int16_t system);
    void Open();
    void OpenRecent(const std::string& path);
    void Save();
    void SaveAs();
    /// Whether the window may close: nothing to save, saved, or given up. With `mayCancel` the
    /// question has a Cancel button.
    bool mayClose(bool mayCancel);
    /// Looks, beside the window, whether another program has changed the file of the project, and
    /// asks what then.
    void lookOutside();

    /// Writes the report and opens it; `aspect` is the shape of its rigging picture.
    void SaveRTFFile(double aspect);
    /// The report page by page: as PDF, or on a printer after a preview.
    void SavePdf();
    void PrintReport();
    /// A picture or a table of figures, under a name that is asked for.
    void saveExport(FileKind kind, const std::string& bytes);
    /// Compares the setup with that of another project.
    void CompareWith();
    /// Imports directivity data until the next system selection.
    void LoadData();
    void importData(const QString& file);
    void Help();

    DiskQueue& disk() { return m_disk; }

signals:
    void recentFilesChanged();
    /// What the status line says from now on: a text with that argument; None: nothing.
    void statusChanged(Text text, const QString& argument);

private:
    std::optional<PagedDocument> pageReport();
    enum class Answer { Saved, Discard, Cancel };
    Answer askToSave(bool mayCancel);
    /// Runs a command that drops the project: at once, after No, never after Yes or Cancel.
    void guarded(const std::function<void()>& command);

    void SaveFile(bool saveAs);
    void save(const std::string& target, bool own);
    void saved(const DocumentState& state, const DocumentFile& file, const SaveOutcome& outcome);
    bool told(const SaveOutcome& outcome, Text failed);
    /// Over any file, beside the window.
    void write(const QString& file, const std::string& bytes, Text failed,
               const std::function<void()>& written);
    OutsideAnswer decideOutside(const std::optional<std::string>& now);
    void LoadFile(bool useDialog, const std::string& fileName);
    void load(const QString& file);
    /// The project of a file, read beside the window; none where it cannot be read, which was said,
    /// or was given up.
    std::optional<std::pair<LoadedProject, std::string>> read(const QString& file);
    std::optional<QString> fileToSave(FileKind kind);
    void remember(const std::string& path);

    Editor& m_editor;
    QWidget* m_window;
    FileChooser m_files;
    RecentFiles m_recentFiles;
    std::set<std::string> m_missing;
    std::string m_target; ///< of the saves that are not done yet
    int m_saves = 0;      ///< of those
    /// What the file held when the user did not want to decide about it.
    std::optional<std::optional<std::string>> m_undecided;
    DiskQueue m_disk;
    Task m_look;
    Task m_lookForRecent;
};

} // namespace orva::ui
