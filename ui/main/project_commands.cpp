#include "main/project_commands.h"

#include "app/file_access.h"
#include "app/file_names.h"
#include "app/report_file.h"
#include "widgets/outside_program.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace orva::ui {

namespace {

/// Writes a file, but not over one that is write-protected.
Result<Done> written(const QString& target, const std::string& bytes)
{
    const QFileInfo info(target);
    if (info.exists() && !info.isWritable())
        return Error{"the file is write-protected", target.toStdString()};
    const Result<Saved> saved = writeFile(target.toStdString(), bytes);
    return saved ? Result<Done>(Done{}) : saved.error();
}

QString localPath(const std::string& path)
{
    return QString::fromStdString(path);
}

/// Reasons stand below the message.
void showFailure(QWidget* window, const QString& text, const QString& title, const Error& error)
{
    showMessage(window, text, title, qtText(error.text()));
}

} // namespace

ProjectCommands::ProjectCommands(Editor& editor, QWidget* window)
    : QObject(window), m_editor(editor), m_window(window)
{
    recentFiles.LoadRecentFiles(editor.session.store);
}

ProjectCommands::Answer ProjectCommands::askToSave(bool mayCancel)
{
    QMessageBox::StandardButtons buttons = QMessageBox::Yes | QMessageBox::No;
    if (mayCancel)
        buttons |= QMessageBox::Cancel;
    switch (Question(m_window, m_editor.session.text(198), buttons).exec()) {
    case QMessageBox::Yes:
        Save();
        return Answer::Saved;
    case QMessageBox::No:
        return Answer::Discard;
    default:
        return Answer::Cancel;
    }
}

void ProjectCommands::guarded(const std::function<void()>& command)
{
    if (!m_editor.Modified() || askToSave(true) == Answer::Discard)
        command();
}

bool ProjectCommands::mayClose(bool mayCancel)
{
    if (!m_editor.Modified())
        return true;
    const Answer answer = askToSave(mayCancel);
    return answer == Answer::Discard || (answer == Answer::Saved && !m_editor.Modified());
}

void ProjectCommands::New(bool compact)
{
    m_editor.session.state.settings.NewCompact = compact;
    guarded([this] {
        m_editor.SetNewProject();
        emit statusChanged(0, {});
    });
}

void ProjectCommands::Open()
{
    guarded([this] { LoadFile(true, {}); });
}

void ProjectCommands::OpenRecent(const std::string& path)
{
    guarded([this, path] { LoadFile(false, path); });
}

void ProjectCommands::Save()
{
    SaveFile(m_editor.ProjectFile.empty());
}

void ProjectCommands::SaveAs()
{
    const bool modified = m_editor.Modified();
    m_editor.setModified(true);
    if (!SaveFile(true))
        m_editor.setModified(modified);
}

QStringList ProjectCommands::filters(int ownKind, const char* ownPattern) const
{
    // The dialog shows all but the last brackets, which hold the pattern.
    return {m_editor.session.text(ownKind) + " (" + ownPattern + ")",
            m_editor.session.text(1029) + " (*)"};
}

QString ProjectCommands::folder() const
{
    return m_editor.ProjectFile.empty() ? QString()
                                        : QFileInfo(localPath(m_editor.ProjectFile)).absolutePath();
}

std::optional<QString> ProjectCommands::fileToOpen(int titleText, const QStringList& filters)
{
    QFileDialog dialog(m_window, m_editor.session.text(titleText), folder());
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters(filters);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().front();
}

std::optional<QString> ProjectCommands::fileToSave(const std::string& extension, int titleText,
                                                   const QStringList& filters)
{
    QFileDialog dialog(m_window, m_editor.session.text(titleText), folder());
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(filters);
    dialog.setDefaultSuffix(QString::fromStdString(extension.substr(1)));
    dialog.selectFile(
        QString::fromStdString(proposedFileName(m_editor.room().GSGetProjectName(), extension)));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    const QString chosen = dialog.selectedFiles().front();
    const QString whole = QString::fromStdString(withExtension(chosen.toStdString(), extension));
    // The dialog has asked about the name as it was typed only.
    if (whole != chosen && QFileInfo::exists(whole) &&
        Question(m_window, m_editor.session.text(1030).arg(whole),
                 QMessageBox::Yes | QMessageBox::No)
                .exec() != QMessageBox::Yes)
        return std::nullopt;
    return whole;
}

bool ProjectCommands::SaveFile(bool saveAs)
{
    if (!m_editor.Modified())
        return true;
    const Session& session = m_editor.session;
    if (!m_editor.setupValid()) {
        showMessage(m_window, session.text(206));
        return false;
    }
    QString target = localPath(m_editor.ProjectFile);
    if (saveAs) {
        const auto chosen = fileToSave(".lad", 205, filters(1026, "*.lad"));
        if (!chosen)
            return false;
        target = *chosen;
    }
    const Result<Done> saved = written(target, projectBytes(session.state));
    if (!saved) {
        showFailure(m_window, session.text(207), kProgramTitle, saved.error());
        return false;
    }
    m_editor.ProjectFile = target.toStdString();
    m_editor.setModified(false);
    recentFiles.AddToRecentFiles(m_editor.ProjectFile);
    emit recentFilesChanged();
    return true;
}

void ProjectCommands::LoadFile(bool useDialog, const std::string& fileName)
{
    Session& session = m_editor.session;
    QString name = localPath(fileName);
    if (useDialog) {
        const auto chosen = fileToOpen(208, filters(1026, "*.lad"));
        if (!chosen)
            return;
        name = *chosen;
    }
    if (!QFileInfo::exists(name)) {
        showMessage(m_window, session.text(209) + name + session.text(210), session.text(211));
        return;
    }
    if (const Result<int> loaded = loadProject(session.state, name.toStdString()); !loaded) {
        showFailure(m_window, session.text(202), session.text(211), loaded.error());
        return;
    }
    m_editor.ProjectFile = name.toStdString();
    m_editor.RefreshFromClass();
    m_editor.setModified(false);
    recentFiles.AddToRecentFiles(m_editor.ProjectFile);
    emit recentFilesChanged();
    emit statusChanged(0, {});
}

void ProjectCommands::LoadData()
{
    Session& session = m_editor.session;
    const auto chosen = fileToOpen(201, filters(1027, "*.xhn"));
    if (!chosen)
        return;
    const std::string file = chosen->toStdString();
    const Directivity before = session.state.speakerData.directivity;
    const Result<std::string> imported = importSpeakerData(session.state, file);
    if (imported) {
        if (!imported->empty())
            showMessage(m_window, qtText(*imported));
        emit statusChanged(1014, *chosen);
        return;
    }
    if (session.state.speakerData.directivity != before)
        emit statusChanged(1015, *chosen);
    showFailure(m_window, session.text(1031), kProgramTitle, imported.error());
}

void ProjectCommands::Help()
{
    const QString file = QDir(QString::fromStdString(m_editor.session.programFolder.string()))
                             .filePath("ORVA-help.pdf");
    if (!QFileInfo::exists(file)) {
        showMessage(m_window, m_editor.session.text(200));
        return;
    }
    openFile(file);
}

void ProjectCommands::openFile(const QString& file)
{
    openOutside(file, this,
                [this, file] { showMessage(m_window, m_editor.session.text(1016).arg(file)); });
}

void ProjectCommands::SaveRTFFile(double aspect)
{
    const Session& session = m_editor.session;
    if (!m_editor.setupValid()) { // the sheet would be that of the last valid one
        showMessage(m_window, session.text(206));
        return;
    }
    const auto chosen = fileToSave(".rtf", 204, filters(1028, "*.rtf"));
    if (!chosen)
        return;
    const Result<std::string> report =
        rtfReportOf(session.state, session.drawingOptions(), aspect, QLocale::system());
    const Result<Done> saved = report ? written(*chosen, *report) : Result<Done>(report.error());
    if (!saved) {
        showFailure(m_window, session.text(221), kProgramTitle, saved.error());
        return;
    }
    openFile(*chosen);
}

} // namespace orva::ui
