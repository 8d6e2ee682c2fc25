#include "main/project_commands.h"

#include "app/files/file_access.h"
#include "app/files/file_names.h"
#include "app/files/report_file.h"
#include "widgets/outside_program.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace orva::ui {

namespace {

/// Writes a file, but not over one that is write-protected.
Result<Saved> written(const QString& target, const std::string& bytes)
{
    const QFileInfo info(target);
    if (info.exists() && !info.isWritable())
        return Error{Message(Text::WriteProtected), target.toStdString()};
    return writeFile(target.toStdString(), bytes);
}

QString localPath(const std::string& path)
{
    return QString::fromStdString(path);
}

} // namespace

ProjectCommands::ProjectCommands(Editor& editor, QWidget* window)
    : QObject(window), m_editor(editor), m_window(window)
{
    m_recentFiles.LoadRecentFiles(editor.session().store());
}

ProjectCommands::Answer ProjectCommands::askToSave(bool mayCancel)
{
    QMessageBox::StandardButtons buttons = QMessageBox::Yes | QMessageBox::No;
    if (mayCancel)
        buttons |= QMessageBox::Cancel;
    switch (Question(m_window, m_editor.session().text(Text::SaveChanges), buttons).exec()) {
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
    if (!m_editor.document().modified() || askToSave(true) == Answer::Discard)
        command();
}

bool ProjectCommands::mayClose(bool mayCancel)
{
    if (!m_editor.document().modified())
        return true;
    const Answer answer = askToSave(mayCancel);
    return answer == Answer::Discard ||
           (answer == Answer::Saved && !m_editor.document().modified());
}

void ProjectCommands::New(std::int16_t system)
{
    m_editor.session().state().settings.newSystem = system;
    (void)m_editor.session().storeSettings(); // told at the end of the program
    guarded([this] {
        m_editor.SetNewProject();
        emit statusChanged(Text::None, {});
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
    if (m_editor.document().modified())
        SaveFile(m_editor.document().path().empty());
}

void ProjectCommands::SaveAs()
{
    SaveFile(true);
}

QStringList ProjectCommands::filters(Text ownKind, const char* ownPattern) const
{
    // The dialog shows all but the last brackets, which hold the pattern.
    return {m_editor.session().text(ownKind) + " (" + ownPattern + ")",
            m_editor.session().text(Text::AllFiles) + " (*)"};
}

QString ProjectCommands::folder() const
{
    return m_editor.document().path().empty()
               ? QString()
               : QFileInfo(localPath(m_editor.document().path())).absolutePath();
}

std::optional<QString> ProjectCommands::fileToOpen(Text titleText, const QStringList& filters)
{
    QFileDialog dialog(m_window, m_editor.session().text(titleText), folder());
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters(filters);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().front();
}

std::optional<QString> ProjectCommands::fileToSave(const std::string& extension, Text titleText,
                                                   const QStringList& filters)
{
    QFileDialog dialog(m_window, m_editor.session().text(titleText), folder());
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
        Question(m_window, m_editor.session().text(Text::ReplaceFile).arg(whole),
                 QMessageBox::Yes | QMessageBox::No)
                .exec() != QMessageBox::Yes)
        return std::nullopt;
    return whole;
}

/// Writes a file and tells what went wrong, or what of the old one could not be kept.
bool ProjectCommands::write(const QString& target, const std::string& bytes, Text failed)
{
    const Session& session = m_editor.session();
    const Result<Saved> saved = written(target, bytes);
    if (!saved) {
        showMessage(m_window, session.text(failed), kProgramTitle, session.text(saved.error()));
        return false;
    }
    for (const Message& note : saved->notes)
        showMessage(m_window, session.text(note));
    return true;
}

bool ProjectCommands::SaveFile(bool saveAs)
{
    const Session& session = m_editor.session();
    if (!m_editor.setupValid()) {
        showMessage(m_window, session.text(Text::SetupInvalidToSave));
        return false;
    }
    QString target = localPath(m_editor.document().path());
    if (saveAs) {
        const auto chosen =
            fileToSave(".lad", Text::SaveTitle, filters(Text::ProjectFiles, "*.lad"));
        if (!chosen)
            return false;
        target = *chosen;
    }
    if (!write(target, projectBytes(m_editor.document().state().project), Text::SaveFailed))
        return false;
    m_editor.markSaved(target.toStdString());
    remember(m_editor.document().path());
    return true;
}

/// At once, so that several windows share the list.
void ProjectCommands::remember(const std::string& path)
{
    m_recentFiles.change(m_editor.session().store(),
                         [&](RecentFiles& files) { files.AddToRecentFiles(path); });
    emit recentFilesChanged();
}

void ProjectCommands::LoadFile(bool useDialog, const std::string& fileName)
{
    Session& session = m_editor.session();
    QString name = localPath(fileName);
    if (useDialog) {
        const auto chosen = fileToOpen(Text::LoadTitle, filters(Text::ProjectFiles, "*.lad"));
        if (!chosen)
            return;
        name = *chosen;
    }
    if (!QFileInfo::exists(name)) {
        showMessage(m_window,
                    session.text(Text::FileMissing1) + name + session.text(Text::FileMissing2),
                    session.text(Text::LoadFailed));
        return;
    }
    Result<LoadedProject> loaded = loadProject(name.toStdString());
    if (!loaded) {
        showMessage(m_window, session.text(Text::FileInvalid), session.text(Text::LoadFailed),
                    session.text(loaded.error()));
        return;
    }
    m_editor.open(std::move(loaded->project), name.toStdString());
    remember(m_editor.document().path());
    emit statusChanged(Text::None, {});
}

void ProjectCommands::LoadData()
{
    const auto chosen = fileToOpen(Text::LoadDataTitle, filters(Text::SpeakerDataFiles, "*.xhn"));
    if (chosen)
        importData(*chosen);
}

void ProjectCommands::importData(const QString& file)
{
    Session& session = m_editor.session();
    const Result<SpeakerDataLoad> imported = importSpeakerData(session.state(), file.toStdString());
    const std::optional<Error> failure = imported ? imported->error : imported.error();
    if (failure) {
        if (imported && imported->bands > 0)
            emit statusChanged(Text::DataPartlyImported, file);
        showMessage(m_window, session.text(Text::LoadDataFailed), kProgramTitle,
                    session.text(*failure));
        return;
    }
    if (imported->note)
        showMessage(m_window, session.text(*imported->note));
    emit statusChanged(Text::DataImported, file);
}

void ProjectCommands::Help()
{
    const QString file = QDir(QString::fromStdString(m_editor.session().programFolder().string()))
                             .filePath("ORVA-help.pdf");
    if (!QFileInfo::exists(file)) {
        showMessage(m_window, m_editor.session().text(Text::HelpMissing));
        return;
    }
    openOutside(m_editor.session(), file, m_window);
}

void ProjectCommands::SaveRTFFile(double aspect)
{
    const Session& session = m_editor.session();
    if (!m_editor.setupValid()) { // the sheet would be that of the last valid one
        showMessage(m_window, session.text(Text::SetupInvalidToSave));
        return;
    }
    const auto chosen = fileToSave(".rtf", Text::SaveReportTitle, filters(Text::RtfFiles, "*.rtf"));
    if (!chosen)
        return;
    const Result<std::string> report =
        rtfReportOf(m_editor.array(), session.drawingOptions(), aspect, QLocale::system());
    if (!report)
        showMessage(m_window, session.text(Text::ReportFailed), kProgramTitle,
                    session.text(report.error()));
    else if (write(*chosen, *report, Text::ReportFailed))
        openOutside(session, *chosen, m_window);
}

} // namespace orva::ui
