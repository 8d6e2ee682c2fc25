#include "main/main_window.h"

#include "engine/auto_aim.h"
#include "main/export_menu.h"
#include "main/last_session.h"
#include "main/optimize_dialog.h"
#include "main/rigging_page.h"
#include "main/room_page.h"
#include "main/sub_array_page.h"
#include "main/suggest_dialog.h"
#include "shell/options_dialog.h"
#include "shell/pictures.h"
#include "shell/recover_dialog.h"
#include "shell/small_dialogs.h"
#include "widgets/accessible_list.h"
#include "widgets/appearance.h"
#include "widgets/control_texts.h"
#include "widgets/controls.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileInfo>
#include <QFontDialog>
#include <QHash>
#include <QLineEdit>
#include <QMimeData>
#include <QScreen>
#include <QScrollArea>
#include <QSplitter>
#include <QStatusBar>
#include <QTabBar>
#include <QTimer>
#include <QUrl>

namespace orva::ui {

namespace {

constexpr int kWidestPath = 480; ///< pixels in the menu

std::filesystem::path recoveryFolder(const Session& session)
{
    return session.folders().state / "recovery";
}

/// What the entries and lists below a widget show.
QHash<const QWidget*, QString> shownIn(const QWidget& page)
{
    QHash<const QWidget*, QString> shown;
    for (const auto* entry : page.findChildren<QLineEdit*>())
        if (!entry->isReadOnly())
            shown[entry] = entry->text();
    for (const auto* list : page.findChildren<QComboBox*>())
        shown[list] = list->currentText();
    return shown;
}

} // namespace

MainWindow::MainWindow(Session& session) : m_session(session), m_editor(session)
{
    nameAccessibleLists();
    setObjectName("frmMain");
    setWindowIcon(programIcon());
    setAcceptDrops(true);
    Main_SSTab = named<QTabWidget>("Main_SSTab", this);
    Main_SSTab->setDocumentMode(true);
    lblOverload = named<QLabel>("lblOverload", this);
    lblOverload->setAlignment(Qt::AlignCenter);
    lblOverload->setWordWrap(true);
    lblOverload->setMargin(4);
    markInvalid(*lblOverload, true, {});
    lblOverload->setAutoFillBackground(true);
    lblOverload->hide();
    auto* centre = new QWidget(this);
    auto* column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(lblOverload);
    column->addWidget(Main_SSTab);
    setCentralWidget(centre);

    auto* setup = new QWidget(this);
    auto* setupLayout = new QHBoxLayout(setup);
    m_setupPage = new SetupPage(m_editor, setup);
    m_views = new ViewPanel(m_editor, setup);
    setupLayout->addWidget(m_setupPage);
    setupLayout->addWidget(m_views, 1);
    Main_SSTab->addTab(new RoomPage(m_editor, this), QString());
    Main_SSTab->addTab(setup, QString());
    Main_SSTab->addTab(new RiggingPage(m_editor, this), QString());
    Main_SSTab->addTab(new SubArrayPage(m_editor, this), QString());
    m_logo = logoPicture(this);
    Main_SSTab->setCornerWidget(m_logo);

    m_map = new MapCalculator(m_editor, *m_views, this);
    m_live = new LiveMap(m_editor, *m_views);
    connect(m_live, &LiveMap::coarse, this, [this](bool coarse) {
        m_coarseMap = coarse;
        showStatus();
    });
    m_commands = new ProjectCommands(m_editor, this);
    statusBar()->setObjectName("statusBar");
    m_status = new StatusLine(m_editor, this);
    statusBar()->addWidget(m_status, 1);
    connect(m_status, &StatusLine::overloaded, lblOverload, [this](const QString& why) {
        lblOverload->setText(why);
        lblOverload->setVisible(!why.isEmpty());
    });
    makeMenus();
    connect(findChild<QAbstractButton*>("cmdRowsCsv"), &QAbstractButton::clicked, m_commands,
            [this, rows = figuresShownBy("tblRows", m_editor, *m_views)] {
                m_commands->saveExport(FileKind::Table, rows->bytes(FileKind::Table));
            });
    for (auto* picture : findChildren<DrawingWidget*>())
        new ExportMenu(m_editor, *m_commands, *picture,
                       figuresShownBy(picture->objectName(), m_editor, *m_views),
                       picture->objectName() == "AreaSpl_pbx"); // there it takes the fit line away
    for (const char* name : {"tblRows", "rigText_txt"})
        new ExportMenu(m_editor, *m_commands, *findChild<QWidget*>(name),
                       figuresShownBy(name, m_editor, *m_views));
    connect(m_commands, &ProjectCommands::recentFilesChanged, this, &MainWindow::showRecentFiles);
    connect(m_commands, &ProjectCommands::statusChanged, this,
            [this](Text text, const QString& argument) {
                m_corrections.clear();
                m_statusText = text;
                m_statusArgument = argument;
                showStatus();
                m_status->refreshData();
            });
    connect(&m_commands->disk(), &DiskQueue::waits, this, [this](bool waits) {
        m_waitsForDisk = waits;
        showStatus();
    });
    connect(m_setupPage, &SetupPage::autoAimAsked, this, &MainWindow::autoAim);
    connect(m_views, &ViewPanel::optimizeAsked, this,
            [this] { OptimizeDialog::launch(m_editor, *m_views, this); });
    connect(m_views, &ViewPanel::suggestAsked, this,
            [this] { SuggestDialog(m_editor, this).exec(); });
    connect(&m_editor, &Editor::modifiedChanged, this, &MainWindow::showTitle);
    connect(&m_editor, &Editor::modifiedChanged, this, &MainWindow::showSteps);
    connect(&m_editor, &Editor::typingEnds, this, [this] { m_shownBefore = shownIn(*Main_SSTab); });
    connect(&m_editor, &Editor::stepTaken, this, &MainWindow::showStep);
    connect(&m_editor, &Editor::corrected, this, [this](const QString& what) {
        m_corrections = what;
        showStatus();
    });
    if (!session.folders().state.empty()) {
        m_recovery = std::make_unique<RecoveryKeeper>(m_editor, recoveryFolder(session));
        connect(m_recovery.get(), &RecoveryKeeper::failed, this, [this](const Error& why) {
            m_corrections = m_session.text(Text::RecoveryFailed).arg(m_session.text(why));
            showStatus();
        });
    }
    connect(&session, &Session::LanguageChanged, this, &MainWindow::showTexts);
    showTexts();
    showRecentFiles();
    if (!restoreWindow(*this, m_editor))
        setGeometry(screen()->availableGeometry());
    m_placedSize = size();
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    constexpr int kShort = 720; // every row counts then
    m_logo->setVisible(height() >= kShort &&
                       Main_SSTab->tabBar()->sizeHint().width() + m_logo->width() < width());
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (!std::exchange(m_divided, true))
        QTimer::singleShot(0, this, [this] { restoreDivisions(*this, m_session.store()); });
    // A window manager adds its frame only after the window is shown.
    for (const int ms : {0, 100, 500})
        QTimer::singleShot(ms, this, &MainWindow::fitFrame);
}

bool MainWindow::event(QEvent* event)
{
    // After a dialog as after another program.
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowUnblocked)
        QTimer::singleShot(0, m_commands, &ProjectCommands::lookOutside);
    return QMainWindow::event(event);
}

/// Title bar and edges lie on the screen, too, as long as nobody has moved the window.
void MainWindow::fitFrame()
{
    const QRect available = screen()->availableGeometry();
    const QRect frame = frameGeometry();
    const QMargins margins(geometry().left() - frame.left(), geometry().top() - frame.top(),
                           frame.right() - geometry().right(),
                           frame.bottom() - geometry().bottom());
    if (available.contains(frame) || isMaximized() || size() != m_placedSize)
        return;
    setGeometry(frame.intersected(available)
                    .united(QRect(available.topLeft(), QSize(1, 1)))
                    .marginsRemoved(margins));
    m_placedSize = size();
}

MainWindow::~MainWindow()
{
    // Entries that lose the focus now still ask the editor.
    delete takeCentralWidget();
}

void MainWindow::begin(const QString& file)
{
    const bool recovered = recover();
    if (!recovered && file.isEmpty() && m_session.state().settings.ShowNewQuery) {
        SystemDialog(m_session, this).exec();
        (void)m_session.storeSettings(); // told at the end of the program
    }
    if (!recovered)
        m_editor.SetNewProject();
    if (!file.isEmpty())
        QTimer::singleShot(0, this, [this, file] { openFile(file); }); // over the window
}

/// Offers what has been left behind; whether the user took some of it.
bool MainWindow::recover()
{
    if (!m_recovery)
        return false;
    Found found = findLeftBehind(recoveryFolder(m_session));
    for (const Message& damaged : found.damaged)
        showMessage(this, m_session.text(damaged));
    if (found.left.empty())
        return false;
    std::optional<LeftBehind> chosen = RecoverDialog(m_session, found.left, this).chosen();
    if (!chosen)
        return false;
    m_editor.recover(chosen->unsaved.state, chosen->unsaved.file);
    m_recovery->takeOver(std::move(*chosen));
    m_statusText = Text::Recovered;
    showStatus();
    return true;
}

/// A project, or loudspeaker data.
void MainWindow::openFile(const QString& file)
{
    if (file.endsWith(".xhn", Qt::CaseInsensitive))
        m_commands->importData(file);
    else
        m_commands->OpenRecent(file.toStdString());
}

namespace {

/// The file that is dropped; empty for what is none.
QString droppedFile(const QMimeData& data)
{
    const QList<QUrl> urls = data.urls();
    const QString file = urls.size() == 1 ? urls.front().toLocalFile() : QString();
    const bool known =
        file.endsWith(".lad", Qt::CaseInsensitive) || file.endsWith(".xhn", Qt::CaseInsensitive);
    return known ? file : QString();
}

} // namespace

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (droppedFile(*event->mimeData()).isEmpty())
        return;
    event->setDropAction(Qt::CopyAction); // the file stays where it is
    event->accept();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
    const QString file = droppedFile(*event->mimeData());
    // The program that it was dragged from waits for this event to end.
    QTimer::singleShot(0, this, [this, file] { openFile(file); });
}

void MainWindow::showTexts()
{
    showCommands();
    for (int page = RoomTab; page <= SubArrayTab; ++page)
        Main_SSTab->setTabText(page, m_session.text(kPageTitles[page]));
    explainControls(*this, m_session);
    showTitle();
    showSteps();
    m_corrections.clear();
    showStatus();
}

/// What Undo and Redo would do.
void MainWindow::showSteps()
{
    const auto show = [this](QAction* action, const std::optional<StepName>& step, Text plain,
                             Text named) {
        action->setEnabled(step.has_value());
        action->setText(step ? m_session.text(named).arg(m_session.text(step->message()))
                             : m_session.text(plain));
    };
    show(m_undo, m_editor.document().undoName(), Text::MenuUndo, Text::MenuUndoStep);
    show(m_redo, m_editor.document().redoName(), Text::MenuRedo, Text::MenuRedoStep);
}

/// Of what a step changed the control that it is named after, or the first one.
QWidget* MainWindow::changedControl(const StepPlace& place) const
{
    const auto usable = [](const QWidget* control) {
        return control && control->isVisible() && control->isEnabled();
    };
    auto* named = findChild<QWidget*>(place.control);
    QWidget* first = nullptr;
    const QHash<const QWidget*, QString> now = shownIn(*Main_SSTab->currentWidget());
    for (auto* control : Main_SSTab->currentWidget()->findChildren<QWidget*>()) {
        if (!usable(control) || !now.contains(control) ||
            now.value(control) == m_shownBefore.value(control))
            continue;
        if (control == named)
            return named;
        first = first ? first : control;
    }
    return first || !usable(named) ? first : named;
}

/// Brings what a step changed before the user's eyes.
void MainWindow::showStep(const StepName& step, bool undone, bool unlocked)
{
    const StepPlace place = placeOf(step);
    Main_SSTab->setCurrentIndex(place.page);
    if (QWidget* control = changedControl(place)) {
        control->setFocus(Qt::OtherFocusReason);
        for (QWidget* outer = control; outer; outer = outer->parentWidget())
            if (auto* area = qobject_cast<QScrollArea*>(outer))
                area->ensureWidgetVisible(control);
    }
    const Text said = undone ? Text::Undone : Text::Redone;
    m_corrections = m_session.text(said).arg(m_session.text(step.message()));
    if (unlocked)
        m_corrections = m_session.text(Text::UndoneUnlocked).arg(m_corrections);
    showStatus();
}

void MainWindow::showStatus()
{
    const QString kept =
        m_statusText != Text::None ? m_session.text(m_statusText).arg(m_statusArgument) : QString();
    QStringList said;
    for (const auto& [holds, text] :
         {std::pair(m_waitsForDisk, Text::WaitForDisk), std::pair(m_coarseMap, Text::CoarseMap)})
        if (holds)
            said += m_session.text(text);
    if (const QString& last = m_corrections.isEmpty() ? kept : m_corrections; !last.isEmpty())
        said += last;
    m_status->say(said.join("; "));
}

void MainWindow::showTitle()
{
    QString title = m_session.text(Text::ProgramTitle);
    if (!m_editor.document().path().empty())
        title += " - " + QFileInfo(QString::fromStdString(m_editor.document().path())).fileName();
    setWindowTitle(title + "[*]");
    setWindowModified(m_editor.document().modified());
}

void MainWindow::showRecentFiles()
{
    const std::vector<std::string>& paths = m_commands->recentFiles().paths();
    bool anyMissing = false;
    for (std::size_t i = 0; i < mnuMRU.size(); ++i) {
        mnuMRU[i]->setVisible(i < paths.size());
        if (i >= paths.size())
            continue;
        const QString path = QString::fromStdString(paths[i]);
        const QString shown = fontMetrics().elidedText(path, Qt::ElideMiddle, kWidestPath);
        const QString name = QString(shown).replace("&", "&&"); // no shortcut
        const bool missing = m_commands->isMissing(paths[i]);
        anyMissing |= missing;
        mnuMRU[i]->setText(missing ? m_session.text(Text::RecentMissing).arg(name) : name);
        mnuMRU[i]->setToolTip(path);
    }
    m_forgetMissing->setVisible(anyMissing);
}

void MainWindow::autoAim()
{
    const std::optional<double> angle = orva::autoAim(m_editor.room(), m_editor.array());
    if (!angle) {
        showMessage(this, m_session.text(Text::NoAreaToAimAt));
        return;
    }
    m_editor.aimFirstBox(*angle);
}

void MainWindow::generalOptions()
{
    OptionsDialog dialog(m_session, this);
    Settings before = m_session.state().settings;
    connect(&dialog, &OptionsDialog::applied, this, [this, &before] {
        const Settings& now = m_session.state().settings;
        useAppearance(now.Appearance);
        const bool onlyLook = sameButForLooks(before, now);
        before = now;
        (void)m_session.storeSettings(); // told at the end of the program
        if (onlyLook) {
            m_editor.redrawViews();
            return;
        }
        m_editor.followSettings();
        m_map->bringUpToDate();
        if (m_calculator)
            m_calculator->showUnits();
    });
    dialog.exec();
    m_editor.shortenSubArray();
}

void MainWindow::displayFont()
{
    QFontDialog dialog(QApplication::font(), this);
    dialog.setWindowTitle(m_session.text(Text::DisplayFont));
    // The platform's font reaches windows that are opened later, too.
    if (dialog.exec() == QDialog::Accepted)
        QApplication::setFont(dialog.selectedFont());
}

void MainWindow::calculator()
{
    if (!m_calculator) {
        m_calculator = new CalculatorWindow(m_session, this);
        m_calculator->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_calculator->show();
    m_calculator->raise();
    m_calculator->activateWindow();
}

void MainWindow::createPrintVersion()
{
    Main_SSTab->setCurrentIndex(RiggingTab);
    const QWidget* view = findChild<QWidget*>("Rigging_pbx");
    m_commands->SaveRTFFile(static_cast<double>(std::max(1, view->width())) /
                            std::max(1, view->height()));
}

void MainWindow::exit()
{
    Exiting = m_commands->mayClose(true);
    if (Exiting)
        close();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_map->busy() || (!Exiting && !m_commands->mayClose(false))) {
        event->ignore();
        return;
    }
    AppShutdown();
    event->accept();
}

void MainWindow::endUnasked()
{
    if (m_recovery)
        m_recovery->writeNow();
    keepWindow(*this, m_editor);
    (void)m_session.storeSettings();
}

void MainWindow::AppShutdown()
{
    keepWindow(*this, m_editor);
    if (const Result<Done> stored = m_session.storeSettings(); !stored)
        showMessage(this, m_session.text(Text::OptionsNotStored), kProgramTitle,
                    m_session.text(stored.error()));
    if (m_calculator)
        m_calculator->close();
    hide();             // a slow disk holds up nobody
    m_recovery.reset(); // a proper end
}

} // namespace orva::ui
