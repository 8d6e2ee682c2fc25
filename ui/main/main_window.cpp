#include "main/main_window.h"

#include "engine/auto_aim.h"
#include "main/optimize_dialog.h"
#include "main/rigging_page.h"
#include "main/room_page.h"
#include "main/step_places.h"
#include "main/sub_array_page.h"
#include "shell/keys_dialog.h"
#include "shell/options_dialog.h"
#include "shell/pictures.h"
#include "shell/small_dialogs.h"
#include "widgets/accessible_list.h"
#include "widgets/appearance.h"
#include "widgets/control_texts.h"
#include "widgets/controls.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QFileInfo>
#include <QFontDialog>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QScrollArea>
#include <QSet>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QTabBar>
#include <QTimer>
#include <QUrl>

namespace orva::ui {

namespace {

constexpr int kWidestPath = 480; ///< pixels in the menu

/// Of two commands of a menu with the same letter the second one goes without: it has a key.
void partLetters(const QMenu& menu)
{
    QSet<QChar> taken;
    for (QAction* action : menu.actions()) {
        const qsizetype at = action->text().indexOf('&');
        if (at < 0 || at + 1 >= action->text().size())
            continue;
        const QChar letter = action->text()[at + 1].toLower();
        if (letter != '&' && taken.contains(letter))
            action->setText(action->text().remove(at, 1));
        taken.insert(letter);
    }
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
    m_commands = new ProjectCommands(m_editor, this);
    statusBar()->setObjectName("statusBar");
    m_status = new StatusLine(m_editor, this);
    statusBar()->addWidget(m_status, 1);
    connect(m_status, &StatusLine::overloaded, lblOverload, [this](const QString& why) {
        lblOverload->setText(why);
        lblOverload->setVisible(!why.isEmpty());
    });
    makeMenus();
    connect(m_commands, &ProjectCommands::recentFilesChanged, this, &MainWindow::showRecentFiles);
    connect(m_commands, &ProjectCommands::statusChanged, this,
            [this](Text text, const QString& argument) {
                m_corrections.clear();
                m_statusText = text;
                m_statusArgument = argument;
                showStatus();
                m_status->refreshData();
            });
    connect(m_setupPage, &SetupPage::autoAimAsked, this, &MainWindow::autoAim);
    connect(m_views, &ViewPanel::optimizeAsked, this,
            [this] { OptimizeDialog::launch(m_editor, *m_views, this); });
    connect(&m_editor, &Editor::modifiedChanged, this, &MainWindow::showTitle);
    connect(&m_editor, &Editor::modifiedChanged, this, &MainWindow::showSteps);
    connect(&m_editor, &Editor::stepTaken, this, &MainWindow::showStep);
    connect(&m_editor, &Editor::corrected, this, [this](const QString& what) {
        m_corrections = what;
        showStatus();
    });
    connect(&session, &Session::LanguageChanged, this, &MainWindow::showTexts);
    showTexts();
    showRecentFiles();
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
    // A window manager adds its frame only after the window is shown.
    for (const int ms : {0, 100, 500})
        QTimer::singleShot(ms, this, &MainWindow::fitFrame);
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
    if (file.isEmpty() && m_session.state().settings.ShowNewQuery)
        SystemDialog(m_session, this).exec();
    m_editor.SetNewProject();
    if (!file.isEmpty())
        QTimer::singleShot(0, this, [this, file] { openFile(file); }); // over the window
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

QAction* MainWindow::command(QMenu* menu, const QString& name, Text text,
                             const std::function<void()>& run, const QKeySequence& keys)
{
    QAction* action = menu->addAction(QString());
    action->setObjectName(name);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, run);
    m_actionTexts.push_back({action, text, 0});
    return action;
}

QMenu* MainWindow::submenu(QMenu* parent, const char* name, Text text)
{
    QMenu* menu = parent ? parent->addMenu(QString()) : menuBar()->addMenu(QString());
    menu->setObjectName(name);
    menu->menuAction()->setObjectName(name);
    m_actionTexts.push_back({menu->menuAction(), text, 0});
    return menu;
}

void MainWindow::makeMenus()
{
    const auto separator = [](QMenu* menu, const char* name) {
        menu->addSeparator()->setObjectName(name);
    };
    QMenu* file = submenu(nullptr, "mnuFile", Text::MenuFile);
    QMenu* newMenu = submenu(file, "mnuNew", Text::MenuNew);
    const QKeySequence newKeys[] = {QKeySequence("Ctrl+N"), QKeySequence("Ctrl+Shift+N")};
    for (std::int16_t number = 0; isSystem(number); ++number) {
        const SystemRecord& system = systemRecord(number);
        const auto at = static_cast<std::size_t>(number);
        command(
            newMenu, "mnuNew" + QString::fromUtf8(system.suffix.data()), system.newCommand,
            [this, number] { m_commands->New(number); },
            at < std::size(newKeys) ? newKeys[at] : QKeySequence());
    }
    command(
        file, "mnuOpen", Text::MenuOpen, [this] { m_commands->Open(); }, QKeySequence("Ctrl+O"));
    command(
        file, "mnuSave", Text::MenuSave, [this] { m_commands->Save(); }, QKeySequence("Ctrl+S"));
    command(
        file, "mnuSaveAs", Text::MenuSaveAs, [this] { m_commands->SaveAs(); },
        QKeySequence("Ctrl+Shift+S"));
    separator(file, "mnuSep1");
    command(
        file, "mnuPrint", Text::MenuPrint, [this] { createPrintVersion(); },
        QKeySequence("Ctrl+P"));
    separator(file, "mnuSep3");
    for (std::size_t i = 0; i < mnuMRU.size(); ++i) {
        mnuMRU[i] = file->addAction(m_session.text(Text::RecentFiles));
        mnuMRU[i]->setObjectName(elementName("mnuMRU", static_cast<int>(i)));
        mnuMRU[i]->setShortcut(QKeySequence(QString("Ctrl+Alt+%1").arg(i + 1)));
        connect(mnuMRU[i], &QAction::triggered, this,
                [this, i] { m_commands->OpenRecent(m_commands->recentFiles().paths().at(i)); });
    }
    separator(file, "mnuSep2");
    command(
        file, "mnuExit", Text::MenuExit, [this] { exit(); }, QKeySequence("Ctrl+Q"));

    QMenu* edit = submenu(nullptr, "mnuEdit", Text::MenuEdit);
    m_undo = command(
        edit, "mnuUndo", Text::MenuUndo, [this] { m_editor.undo(); }, QKeySequence("Ctrl+Z"));
    m_redo = command(
        edit, "mnuRedo", Text::MenuRedo, [this] { m_editor.redo(); }, QKeySequence("Ctrl+Shift+Z"));
    m_redo->setShortcuts({QKeySequence("Ctrl+Shift+Z"), QKeySequence("Ctrl+Y")});

    QMenu* tools = submenu(nullptr, "mnuTools", Text::MenuTools);
    command(
        tools, "mnuLoadData", Text::MenuLoadData, [this] { m_commands->LoadData(); },
        QKeySequence("Ctrl+I"));
    command(
        tools, "mnuPythCalc", Text::MenuCalculator, [this] { calculator(); },
        QKeySequence("Ctrl+T"));

    QMenu* options = submenu(nullptr, "mnuOptions", Text::MenuOptions);
    command(
        options, "mnuToolsChangeLanguage", Text::MenuLanguage,
        [this] { LanguageDialog::ShowDialog(m_session, false, this); }, QKeySequence("Ctrl+L"));
    command(
        options, "mnuFont", Text::DisplayFont, [this] { displayFont(); }, QKeySequence("Ctrl+F"));
    command(
        options, "mnuGenOptions", Text::GeneralOptions, [this] { generalOptions(); },
        QKeySequence("Ctrl+,"));

    QMenu* help = submenu(nullptr, "mnuHelp", Text::MenuHelp);
    command(
        help, "mnuCallHelp", Text::MenuCallHelp, [this] { m_commands->Help(); },
        QKeySequence("F1"));
    command(
        help, "mnuKeys", Text::MenuKeys, [this] { KeysDialog(m_session, *this).exec(); },
        QKeySequence("Ctrl+F1"));
    command(
        help, "mnuAbout", Text::MenuAbout, [this] { AboutDialog(m_session, this).exec(); },
        QKeySequence("Shift+F1"));
    makeKeys();
}

/// Commands that have no place in a menu: buttons and places of the window.
void MainWindow::makeKeys()
{
    const auto key = [this](const QString& name, Text text, const char* keys,
                            const std::function<void()>& run, int number = 0) {
        auto* action = new QAction(this);
        action->setObjectName(name);
        action->setShortcut(QKeySequence(keys));
        connect(action, &QAction::triggered, this, run);
        addAction(action);
        m_actionTexts.push_back({action, text, number});
    };
    const auto press = [this](const char* button) {
        return [this, button] {
            Main_SSTab->setCurrentIndex(SetupTab);
            findChild<QAbstractButton*>(button)->click();
        };
    };
    key("keyCalculate", Text::KeyCalculate, "F5", press("CalcBand_cmd"));
    key("keyCalculateAll", Text::KeyCalculateAll, "Shift+F5", press("CalcAll_cmd"));
    key("keyOptimize", Text::KeyOptimize, "F6", press("Optimize_cmd"));
    key("keyAim", Text::KeyAim, "F7", press("cmdAuto"));
    key("keyLock", Text::KeyLock, "F8", press("Lock_chk"));
    key("keyNextArea", Text::KeyNextArea, "F3", [this] { selectNextArea(); });
    key("keyNextBox", Text::KeyNextBox, "F4", [this] {
        Main_SSTab->setCurrentIndex(SetupTab);
        m_setupPage->focusNextBox();
    });
    for (int area = 1; area <= Room::kAreas; ++area)
        key(
            elementName("keyArea", area), Text::KeySelectArea,
            QString("Ctrl+%1").arg(area).toUtf8(),
            [this, area] {
                Main_SSTab->setCurrentIndex(SetupTab);
                if (area <= m_editor.room().GIGetNumAreas())
                    m_editor.selectArea(area);
            },
            area);
    constexpr Text kPages[] = {Text::LocationPage, Text::SetupPage, Text::RiggingPage,
                               Text::SubArrayPage};
    for (int page = RoomTab; page <= SubArrayTab; ++page)
        key(elementName("keyPage", page), kPages[page], QString("Alt+%1").arg(page + 1).toUtf8(),
            [this, page] { Main_SSTab->setCurrentIndex(page); });
}

void MainWindow::selectNextArea()
{
    Main_SSTab->setCurrentIndex(SetupTab);
    const int areas = m_editor.room().GIGetNumAreas();
    m_editor.selectArea(m_editor.view().SelectedArea % areas + 1);
}

void MainWindow::showTexts()
{
    for (const ActionText& shown : m_actionTexts)
        shown.action->setText(
            m_session.text(shown.text).replace("%1", QString::number(shown.number)));
    for (const QMenu* menu : menuBar()->findChildren<QMenu*>())
        partLetters(*menu);
    const Text pages[] = {Text::LocationPage, Text::SetupPage, Text::RiggingPage,
                          Text::SubArrayPage};
    for (int page = RoomTab; page <= SubArrayTab; ++page)
        Main_SSTab->setTabText(page, m_session.text(pages[page]));
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

/// Brings what a step changed before the user's eyes.
void MainWindow::showStep(const StepName& step, bool undone, bool unlocked)
{
    const StepPlace place = placeOf(step);
    Main_SSTab->setCurrentIndex(place.page);
    auto* control = findChild<QWidget*>(place.control);
    if (control && control->isVisible() && control->isEnabled()) {
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
    m_status->say(m_corrections.isEmpty() ? kept : m_corrections);
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
    for (std::size_t i = 0; i < mnuMRU.size(); ++i) {
        mnuMRU[i]->setVisible(i < paths.size());
        if (i >= paths.size())
            continue;
        const QString path = QString::fromStdString(paths[i]);
        const QString shown = fontMetrics().elidedText(path, Qt::ElideMiddle, kWidestPath);
        mnuMRU[i]->setText(QString(shown).replace("&", "&&")); // no shortcut
        mnuMRU[i]->setToolTip(path);
    }
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

void MainWindow::AppShutdown()
{
    m_commands->recentFiles().SaveRecentFiles(m_session.store());
    SaveSettings(m_session.state().settings, m_session.store());
    if (const Result<Done> stored = m_session.store().flush(); !stored)
        showMessage(this, m_session.text(Text::OptionsNotStored), kProgramTitle,
                    m_session.text(stored.error()));
    if (m_calculator)
        m_calculator->close();
}

} // namespace orva::ui
