#include "main/project_commands.h"

#include "app/file_access.h"
#include "app/report_file.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QUrl>

namespace orva::ui {

namespace {

const QStringList kProjectFilters = {"ORVA Project Data Files (*.lad)", "All Files (*.*)"};
const QStringList kSpeakerDataFilters = {"ARDA ASCII speaker data file (*.xhn)", "All Files (*.*)"};

const QStringList kReportFilters = {"RTF Files (*.rtf)", "All Files (*.*)"};

/// Writes a file, but not over one that is write-protected.
Result<Done> written(const QString& target, const std::string& bytes)
{
    const QFileInfo info(target);
    if (info.exists() && !info.isWritable())
        return Error{"the file is write-protected", target.toStdString()};
    return writeFile(target.toStdString(), bytes);
}

QString localPath(const std::string& path)
{
    return QString::fromStdString(path);
}

/// A message with the reason below it.
void showFailure(QWidget* window, const QString& text, const QString& title, const Error& error)
{
    QMessageBox box(QMessageBox::Warning, title, text, QMessageBox::Ok, window);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(qtText(error.text()));
    box.exec();
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
    QMessageBox box(QMessageBox::Question, kProgramTitle, m_editor.session.text(198), buttons,
                    m_window);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::Yes);
    switch (box.exec()) {
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
        emit statusChanged(QString());
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

std::optional<QString> ProjectCommands::chosenFile(const QString& toSave, int titleText,
                                                   const QStringList& filters,
                                                   const QString& proposed)
{
    QFileDialog dialog(m_window, m_editor.session.text(titleText));
    const bool saves = !toSave.isEmpty();
    dialog.setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    // A file that is missing is ours to report.
    dialog.setFileMode(saves ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilters(filters);
    if (saves)
        dialog.setDefaultSuffix(toSave);
    if (!m_editor.ProjectFile.empty())
        dialog.setDirectory(QFileInfo(localPath(m_editor.ProjectFile)).absolutePath());
    dialog.selectFile(proposed);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().front();
}

bool ProjectCommands::SaveFile(bool saveAs)
{
    if (!m_editor.Modified())
        return true;
    const Session& session = m_editor.session;
    if (m_editor.setup.SetupInvalid.any()) {
        showMessage(m_window, session.text(206));
        return false;
    }
    QString target = localPath(m_editor.ProjectFile);
    if (saveAs) {
        const QString name = trimmedProjectName();
        const auto chosen =
            chosenFile("lad", 205, kProjectFilters, name.isEmpty() ? QString() : name + ".lad");
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
        const auto chosen = chosenFile({}, 208, kProjectFilters, {});
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
    emit statusChanged(QString());
}

void ProjectCommands::LoadData()
{
    Session& session = m_editor.session;
    const auto chosen = chosenFile({}, 201, kSpeakerDataFilters, {});
    if (!chosen)
        return;
    const std::string file = chosen->toStdString();
    const Directivity before = session.state.speakerData.directivity;
    const Result<Done> imported = importSpeakerData(session.state, file);
    if (imported) {
        emit statusChanged(session.text(1014).arg(*chosen));
        return;
    }
    if (session.state.speakerData.directivity != before)
        emit statusChanged(session.text(1015).arg(*chosen));
    showFailure(m_window, "Load data failed", kProgramTitle, imported.error());
}

void ProjectCommands::Help()
{
    const QString file = QDir(QString::fromStdString(m_editor.session.programFolder.string()))
                             .filePath("ORVA-help.pdf");
    if (!QFileInfo::exists(file)) {
        showMessage(m_window, m_editor.session.text(200));
        return;
    }
    openOutside(file);
}

void ProjectCommands::openOutside(const QString& file)
{
    // Qt would say on the console what the window says here.
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const bool opened = QDesktopServices::openUrl(QUrl::fromLocalFile(file));
    qInstallMessageHandler(before);
    if (!opened)
        showMessage(m_window, m_editor.session.text(1016).arg(file));
}

QString ProjectCommands::trimmedProjectName() const
{
    return qtText(m_editor.room().GSGetProjectName()).trimmed();
}

void ProjectCommands::SaveRTFFile(double aspect)
{
    const Session& session = m_editor.session;
    const auto chosen = chosenFile("rtf", 204, kReportFilters, trimmedProjectName() + ".rtf");
    if (!chosen)
        return;
    const Result<std::string> report =
        rtfReportOf(session.state, session.drawingOptions(), aspect, QLocale::system());
    const Result<Done> saved = report ? written(*chosen, *report) : Result<Done>(report.error());
    if (!saved) {
        showFailure(m_window, session.text(221), kProgramTitle, saved.error());
        return;
    }
    openOutside(*chosen);
}

} // namespace orva::ui
