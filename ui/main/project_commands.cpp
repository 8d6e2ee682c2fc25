#include "main/project_commands.h"

#include "app/files/page_report.h"
#include "app/files/report_file.h"
#include "document/variants_edit.h"
#include "shell/help_dialog.h"
#include "widgets/controls.h"
#include "widgets/outside_program.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QPrintPreviewDialog>
#include <QPrinter>

namespace orva::ui {

namespace {

QString localPath(const std::string& path)
{
    return QString::fromStdString(path);
}

} // namespace

ProjectCommands::ProjectCommands(Editor& editor, QWidget* window)
    : QObject(window),
      m_editor(editor),
      m_window(window),
      m_files(editor, window),
      m_disk(editor.session(), window)
{
    m_recentFiles.LoadRecentFiles(editor.session().store());
    connect(&editor, &Editor::projectReplaced, this, [this] { m_undecided.reset(); });
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
    if (!m_disk.finish()) // a save that is not done yet
        return;
    if (!m_editor.document().modified() || askToSave(true) == Answer::Discard)
        command();
}

bool ProjectCommands::mayClose(bool mayCancel)
{
    if (!m_disk.finish())
        return false;
    if (!m_editor.document().modified())
        return true;
    const Answer answer = askToSave(mayCancel);
    return answer == Answer::Discard ||
           (answer == Answer::Saved && m_disk.finish() && !m_editor.document().modified());
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
        SaveFile(false);
}

void ProjectCommands::SaveAs()
{
    SaveFile(true);
}

/// The name that it is given, with its ending, which the user knows to be replaced.
std::optional<QString> ProjectCommands::fileToSave(FileKind kind)
{
    const std::optional<QString> chosen = m_files.toSave(kind);
    if (!chosen)
        return std::nullopt;
    QString whole = FileChooser::wholeName(kind, *chosen);
    if (whole == *chosen)
        return whole;
    // The dialog has asked about the name as it was typed only.
    const std::optional<bool> exists =
        m_disk.run<bool>([whole] { return QFileInfo::exists(whole); });
    if (!exists ||
        (*exists && Question(m_window, m_editor.session().text(Text::ReplaceFile).arg(whole),
                             QMessageBox::Yes | QMessageBox::No)
                            .exec() != QMessageBox::Yes))
        return std::nullopt;
    return whole;
}

/// Tells what went wrong, or what of an old file could not be kept. Whether it is written.
bool ProjectCommands::told(const SaveOutcome& outcome, Text failed)
{
    const Session& session = m_editor.session();
    if (const Error* error = std::get_if<Error>(&outcome))
        showMessage(m_window, session.text(failed), kProgramTitle, session.text(*error));
    const Saved* saved = std::get_if<Saved>(&outcome);
    if (saved)
        for (const Message& note : saved->notes)
            showMessage(m_window, session.text(note));
    return saved;
}

void ProjectCommands::write(const QString& file, const std::string& bytes, Text failed,
                            const std::function<void()>& written)
{
    m_disk.add<SaveOutcome>([path = file.toStdString(),
                             bytes] { return [path, bytes] { return saveOver(path, bytes, {}); }; },
                            [this, file, failed, written](const SaveOutcome& outcome) {
                                if (!told(outcome, failed))
                                    return;
                                emit statusChanged(Text::FileWritten, file);
                                written();
                            });
}

void ProjectCommands::SaveFile(bool saveAs)
{
    if (!m_editor.setupValid()) {
        showMessage(m_window, m_editor.session().text(Text::SetupInvalidToSave));
        return;
    }
    const DocumentState& state = m_editor.document().state();
    if (const auto invalid = invalidVariant(state)) {
        showMessage(m_window, m_editor.session()
                                  .text(Text::VariantInvalidToSave)
                                  .arg(qtText(variantTitle(state.project.variants, *invalid))));
        return;
    }
    const std::string& own = m_saves > 0 ? m_target : m_editor.document().path();
    if (!saveAs && !own.empty()) {
        save(own, true);
        return;
    }
    if (const auto chosen = fileToSave(FileKind::Project))
        save(chosen->toStdString(), false);
}

/// Its own file holds what is known of it, or nothing is written.
void ProjectCommands::save(const std::string& target, bool own)
{
    m_target = target;
    ++m_saves;
    const DocumentState state = m_editor.document().state();
    const DocumentFile file{target, projectBytes(state.project)};
    m_disk.add<SaveOutcome>(
        [this, file, own] {
            std::optional<std::optional<std::string>> expected;
            if (own && file.path == m_editor.document().path())
                expected = m_editor.document().file().bytes;
            return [file, expected] { return saveOver(file.path, *file.bytes, expected); };
        },
        [this, state, file](const SaveOutcome& outcome) { saved(state, file, outcome); });
}

void ProjectCommands::saved(const DocumentState& state, const DocumentFile& file,
                            const SaveOutcome& outcome)
{
    --m_saves;
    if (std::holds_alternative<Saved>(outcome)) {
        m_undecided.reset();
        m_editor.markSaved(state, file);
        remember(file.path);
    }
    told(outcome, Text::SaveFailed);
    const auto* outside = std::get_if<ChangedOutside>(&outcome);
    if (outside && decideOutside(outside->now) == OutsideAnswer::KeepMine)
        SaveFile(false);
}

/// Asks, and does all but to save over it.
OutsideAnswer ProjectCommands::decideOutside(const std::optional<std::string>& now)
{
    const Document& document = m_editor.document();
    const QString file = localPath(document.path());
    const OutsideAnswer answer =
        askOutside(m_editor.session(), m_window, file, !now, document.modified());
    if (answer == OutsideAnswer::Reload) {
        load(file);
        return answer;
    }
    // No file holds what is here, so closing will ask.
    m_editor.markUnsaved(answer == OutsideAnswer::KeepMine ? now : document.file().bytes);
    m_undecided = now;
    if (answer == OutsideAnswer::SaveAs)
        SaveFile(true);
    return answer;
}

void ProjectCommands::lookOutside()
{
    const DocumentFile asked = m_editor.document().file();
    if (asked.path.empty() || m_look.running() || m_disk.busy() ||
        QApplication::activeModalWidget())
        return;
    using Now = Result<std::optional<std::string>>;
    const auto found = std::make_shared<std::optional<Now>>();
    m_look.start(
        [found, path = asked.path](const Task::Stop&) { *found = contentOf(path, kMostCompared); },
        [this, found, asked] {
            const Now& now = **found;
            const bool differs = now && *now != asked.bytes;
            const bool known = differs && m_undecided && *m_undecided == *now;
            if (differs && !known && !m_disk.busy() && m_editor.document().file() == asked &&
                !QApplication::activeModalWidget())
                decideOutside(*now);
        });
}

/// At once, so that several windows share the list.
void ProjectCommands::remember(const std::string& path)
{
    m_recentFiles.change(m_editor.session().store(),
                         [&](RecentFiles& files) { files.AddToRecentFiles(path); });
    m_missing.erase(path);
    emit recentFilesChanged();
}

void ProjectCommands::lookForRecent()
{
    if (m_lookForRecent.running())
        return;
    const auto missing = std::make_shared<std::set<std::string>>();
    m_lookForRecent.start(
        [missing, paths = m_recentFiles.paths()](const Task::Stop&) {
            for (const std::string& path : paths)
                if (!QFileInfo::exists(localPath(path)))
                    missing->insert(path);
        },
        [this, missing] {
            m_missing = *missing;
            emit recentFilesChanged();
        });
}

void ProjectCommands::forgetMissing()
{
    m_recentFiles.change(m_editor.session().store(), [&](RecentFiles& files) {
        for (const std::string& path : m_missing)
            files.remove(path);
    });
    m_missing.clear();
    emit recentFilesChanged();
}

void ProjectCommands::LoadFile(bool useDialog, const std::string& fileName)
{
    if (!useDialog)
        load(localPath(fileName));
    else if (const auto chosen = m_files.toOpen(FileKind::Project))
        load(*chosen);
}

std::optional<std::pair<LoadedProject, std::string>> ProjectCommands::read(const QString& name)
{
    const Session& session = m_editor.session();
    const std::string path = name.toStdString();
    const auto content = m_disk.run<Result<std::optional<std::string>>>(
        [path] { return contentOf(path, kMostCompared); });
    if (!content)
        return std::nullopt;
    if (*content && !**content) {
        showMessage(m_window,
                    session.text(Text::FileMissing1) + name + session.text(Text::FileMissing2),
                    session.text(Text::LoadFailed));
        return std::nullopt;
    }
    Result<LoadedProject> loaded =
        *content ? readProject(asBytes(***content), path) : content->error();
    if (!loaded) {
        showMessage(m_window, session.text(Text::FileInvalid), session.text(Text::LoadFailed),
                    session.text(loaded.error()));
        return std::nullopt;
    }
    return std::pair(std::move(*loaded), ***content);
}

void ProjectCommands::load(const QString& name)
{
    auto loaded = read(name);
    if (!loaded)
        return;
    const std::string path = name.toStdString();
    m_editor.open(std::move(loaded->first.project), {path, std::move(loaded->second)});
    remember(path);
    emit statusChanged(Text::None, {});
}

void ProjectCommands::CompareWith()
{
    const auto chosen = m_files.toOpen(FileKind::Project);
    if (!chosen)
        return;
    const auto loaded = read(*chosen);
    if (!loaded)
        return;
    const Project& other = loaded->first.project;
    const bool comparable = m_editor.room().sameFrame(other.room) &&
                            other.array.GIGetArrayType() == m_editor.array().GIGetArrayType() &&
                            !other.array.fault();
    if (!comparable) {
        showMessage(m_window, m_editor.session().text(Text::OtherRoom));
        return;
    }
    m_editor.compareWith(
        ViewState::Compared{{},
                            other.array,
                            other.room,
                            std::filesystem::path(chosen->toStdString()).filename().string()});
}

void ProjectCommands::LoadData()
{
    if (const auto chosen = m_files.toOpen(FileKind::SpeakerData))
        importData(*chosen);
}

void ProjectCommands::importData(const QString& file)
{
    Session& session = m_editor.session();
    const std::filesystem::path path = file.toStdString();
    const auto reading = m_disk.run<Result<SpeakerDataReading>>(
        [path, before = session.state().speakerData.directivity] {
            return readSpeakerData(path, before);
        });
    if (!reading)
        return;
    SpeakerDataLoad load;
    if (*reading)
        load = takeSpeakerData(session.state(), **reading, path);
    else
        load.error = reading->error();
    m_editor.dataImported();
    if (load.error) {
        if (load.bands > 0)
            emit statusChanged(Text::DataPartlyImported, file);
        showMessage(m_window, session.text(Text::LoadDataFailed), kProgramTitle,
                    session.text(*load.error));
        return;
    }
    if (load.note)
        showMessage(m_window, session.text(*load.note));
    emit statusChanged(Text::DataImported, file);
}

void ProjectCommands::Help()
{
    const QString file = helpFile(m_editor.session(), "ORVA-help.pdf", "ORVA-help-de.pdf");
    if (!QFileInfo::exists(file)) {
        showMessage(m_window, m_editor.session().text(Text::HelpMissing));
        return;
    }
    openOutside(m_editor.session(), file, m_window);
}

/// None where there is no valid setup to report, which it says.
std::optional<PagedDocument> ProjectCommands::pageReport()
{
    const Session& session = m_editor.session();
    if (!m_editor.setupValid()) { // the figures would be those of the last valid one
        showMessage(m_window, session.text(Text::SetupInvalidToSave));
        return std::nullopt;
    }
    const ViewState& view = m_editor.view();
    const ReportChoice choice{view.levels.choice(),     view.levels.aWeighted,
                              view.rowPitchM,           view.rowOffsetM,
                              session.drawingOptions(), session.state().settings.ShowDelay == 1};
    const DocumentState& state = m_editor.document().state();
    Project project = state.project;
    for (std::size_t variant = 0; variant < Variants::kMost; ++variant)
        if (!keptArray(state, variant))
            project.variants.kept[variant].reset();
    const BusyPointer pointer;
    Result<PagedDocument> report =
        pageReportOf(m_editor.session().state(), project, choice, QLocale::system());
    if (report)
        return std::move(*report);
    showMessage(m_window, session.text(Text::PdfFailed), kProgramTitle,
                session.text(report.error()));
    return std::nullopt;
}

void ProjectCommands::SavePdf()
{
    const std::optional<PagedDocument> report = pageReport();
    if (!report)
        return;
    const auto chosen = fileToSave(FileKind::Pdf);
    if (!chosen)
        return;
    write(*chosen, pdfOf(*report, QPrinter().pageLayout().pageSize().id()), Text::PdfFailed,
          [this, file = *chosen] { openOutside(m_editor.session(), file, m_window); });
}

void ProjectCommands::saveExport(FileKind kind, const std::string& bytes)
{
    const bool figures = kind == FileKind::Table || kind == FileKind::Json;
    if (const auto chosen = fileToSave(kind))
        write(*chosen, bytes, figures ? Text::CsvFailed : Text::PictureFailed, [] {});
}

void ProjectCommands::PrintReport()
{
    const std::optional<PagedDocument> report = pageReport();
    if (!report)
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(QString::fromStdString(report->title));
    printer.setFullPage(true);
    QPrintPreviewDialog preview(&printer, m_window);
    preview.setObjectName("dlgPrintPreview");
    connect(&preview, &QPrintPreviewDialog::paintRequested, &preview, [&](QPrinter* on) {
        QPainter painter(on);
        const int from = std::max(1, on->fromPage());
        const int to = on->toPage() > 0 ? std::min(on->toPage(), report->pages) : report->pages;
        for (int page = from; page <= to; ++page) {
            if (page > from)
                on->newPage();
            paintPage(*report, page - 1, painter, on->resolution(),
                      on->pageLayout().fullRect(QPageLayout::Point).size());
        }
    });
    preview.exec();
}

void ProjectCommands::SaveRTFFile(double aspect)
{
    const Session& session = m_editor.session();
    if (!m_editor.setupValid()) { // the sheet would be that of the last valid one
        showMessage(m_window, session.text(Text::SetupInvalidToSave));
        return;
    }
    const auto chosen = fileToSave(FileKind::Report);
    if (!chosen)
        return;
    const Result<std::string> report =
        rtfReportOf(m_editor.array(), session.drawingOptions(), aspect, QLocale::system());
    if (!report) {
        showMessage(m_window, session.text(Text::ReportFailed), kProgramTitle,
                    session.text(report.error()));
        return;
    }
    write(*chosen, *report, Text::ReportFailed,
          [this, file = *chosen] { openOutside(m_editor.session(), file, m_window); });
}

} // namespace orva::ui
