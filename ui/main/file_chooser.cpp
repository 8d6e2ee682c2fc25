#include "main/file_chooser.h"

#include "app/files/file_names.h"
#include "main/last_session.h"

#include <QFileDialog>
#include <QFileInfo>

namespace orva::ui {

namespace {

struct Kind {
    const char* ending;
    Text name;
    Text openTitle;
    Text saveTitle;
    const char* folderKey;
};
constexpr Kind kKinds[] = {
    {".lad", Text::ProjectFiles, Text::LoadTitle, Text::SaveTitle, "FolderProjects"},
    {".rtf", Text::RtfFiles, Text::None, Text::SaveReportTitle, "FolderReports"},
    {".xhn", Text::SpeakerDataFiles, Text::LoadDataTitle, Text::None, "FolderData"},
    {".csv", Text::CsvFiles, Text::None, Text::SaveCsvTitle, "FolderTables"},
    {".json", Text::JsonFiles, Text::None, Text::SaveCsvTitle, "FolderTables"},
    {".pdf", Text::PdfFiles, Text::None, Text::SavePdfTitle, "FolderReports"},
    {".png", Text::PngFiles, Text::None, Text::SavePictureTitle, "FolderPictures"},
    {".svg", Text::SvgFiles, Text::None, Text::SavePictureTitle, "FolderPictures"}};

const Kind& recordOf(FileKind kind)
{
    return kKinds[static_cast<std::size_t>(kind)];
}

} // namespace

QStringList FileChooser::filters(FileKind kind) const
{
    // The dialog shows all but the last brackets, which hold the pattern.
    return {m_editor.session().text(recordOf(kind).name) + " (*" + recordOf(kind).ending + ")",
            m_editor.session().text(Text::AllFiles) + " (*)"};
}

/// Projects and reports lie where the project does; a folder that is gone is the current one.
QString FileChooser::folder(FileKind kind) const
{
    const QString project = QString::fromStdString(m_editor.document().path());
    QString own = project.isEmpty() ? QString() : QFileInfo(project).absolutePath();
    if (kind != FileKind::SpeakerData && !own.isEmpty())
        return own;
    const QString last = lastSession(m_editor.session().store(), recordOf(kind).folderKey);
    return last.isEmpty() ? own : last;
}

std::optional<QString> FileChooser::chosen(QFileDialog& dialog, FileKind kind)
{
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilters(filters(kind));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    QString file = dialog.selectedFiles().front();
    keepForNextSession(m_editor.session().store(),
                       {{recordOf(kind).folderKey, QFileInfo(file).absolutePath()}});
    return file;
}

std::optional<QString> FileChooser::toOpen(FileKind kind)
{
    QFileDialog dialog(m_window, m_editor.session().text(recordOf(kind).openTitle), folder(kind));
    dialog.setFileMode(QFileDialog::ExistingFile);
    return chosen(dialog, kind);
}

std::optional<QString> FileChooser::toSave(FileKind kind)
{
    QFileDialog dialog(m_window, m_editor.session().text(recordOf(kind).saveTitle), folder(kind));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(recordOf(kind).ending + 1);
    dialog.selectFile(QString::fromStdString(
        proposedFileName(m_editor.room().GSGetProjectName(), recordOf(kind).ending)));
    return chosen(dialog, kind);
}

QString FileChooser::wholeName(FileKind kind, const QString& chosen)
{
    return QString::fromStdString(withExtension(chosen.toStdString(), recordOf(kind).ending));
}

} // namespace orva::ui
