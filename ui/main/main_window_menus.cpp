#include "main/main_window.h"
#include "shell/keys_dialog.h"
#include "shell/small_dialogs.h"
#include "widgets/controls.h"

#include <QMenuBar>
#include <QSet>

namespace orva::ui {

namespace {

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

QAction* MainWindow::command(QWidget* where, const QString& name, Text text,
                             const std::function<void()>& run, const QKeySequence& keys, int number)
{
    auto* action = new QAction(where);
    where->addAction(action);
    action->setObjectName(name);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, run);
    m_actionTexts.push_back({action, text, number});
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
    command(
        file, "mnuPdf", Text::MenuPdf, [this] { m_commands->SavePdf(); }, QKeySequence());
    command(
        file, "mnuPrintReport", Text::MenuPrintReport, [this] { m_commands->PrintReport(); },
        QKeySequence("Ctrl+Shift+P"));
    separator(file, "mnuSep3");
    for (std::size_t i = 0; i < mnuMRU.size(); ++i) {
        mnuMRU[i] = file->addAction(m_session.text(Text::RecentFiles));
        mnuMRU[i]->setObjectName(elementName("mnuMRU", static_cast<int>(i)));
        mnuMRU[i]->setShortcut(QKeySequence(QString("Ctrl+Alt+%1").arg(i + 1)));
        connect(mnuMRU[i], &QAction::triggered, this,
                [this, i] { m_commands->OpenRecent(m_commands->recentFiles().paths().at(i)); });
    }
    m_forgetMissing = command(file, "mnuForgetMissing", Text::MenuForgetMissing,
                              [this] { m_commands->forgetMissing(); });
    connect(file, &QMenu::aboutToShow, m_commands, &ProjectCommands::lookForRecent);
    separator(file, "mnuSep2");
    command(
        file, "mnuExit", Text::MenuExit, [this] { exit(); }, QKeySequence("Ctrl+Q"));

    QMenu* edit = submenu(nullptr, "mnuEdit", Text::MenuEdit);
    m_undo = command(
        edit, "mnuUndo", Text::MenuUndo, [this] { m_editor.undo(); }, QKeySequence("Ctrl+Z"));
    m_redo = command(edit, "mnuRedo", Text::MenuRedo, [this] { m_editor.redo(); });
    m_redo->setShortcuts({QKeySequence("Ctrl+Shift+Z"), QKeySequence("Ctrl+Y")});

    QMenu* tools = submenu(nullptr, "mnuTools", Text::MenuTools);
    command(
        tools, "mnuLoadData", Text::MenuLoadData, [this] { m_commands->LoadData(); },
        QKeySequence("Ctrl+I"));
    command(
        tools, "mnuPythCalc", Text::MenuCalculator, [this] { calculator(); },
        QKeySequence("Ctrl+T"));
    command(
        tools, "mnuCompare", Text::CompareMenu, [this] { m_commands->CompareWith(); },
        QKeySequence());

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
        help, "mnuHelpPage", Text::HelpOnPage, [this] { helpOnPage(); }, QKeySequence("Shift+F1"));
    command(
        help, "mnuKeys", Text::MenuKeys, [this] { KeysDialog(m_session, *this).exec(); },
        QKeySequence("Ctrl+F1"));
    command(
        help, "mnuAbout", Text::MenuAbout, [this] { AboutDialog(m_session, this).exec(); },
        QKeySequence("Ctrl+Shift+F1"));
    makeKeys();
}

/// Commands that have no place in a menu: buttons and places of the window.
void MainWindow::makeKeys()
{
    const auto key = [this](const QString& name, Text text, const QString& keys,
                            const std::function<void()>& run, int number = 0) {
        command(this, name, text, run, QKeySequence(keys), number);
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
    key("keyAim", Text::KeyAim, "F7", [this, aim = press("cmdAuto")] {
        aim();
        findChild<QWidget*>("box1Angle_txt")
            ->setFocus(Qt::TabFocusReason); // what it found, selected
    });
    key("keyLock", Text::KeyLock, "F8", press("Lock_chk"));
    key("keyNextArea", Text::KeyNextArea, "F3",
        [this] { showArea(m_editor.view().SelectedArea % m_editor.room().GIGetNumAreas() + 1); });
    key("keyNextBox", Text::KeyNextBox, "F4", [this] {
        Main_SSTab->setCurrentIndex(SetupTab);
        m_setupPage->focusNextBox();
    });
    for (int area = 1; area <= Room::kAreas; ++area)
        key(
            elementName("keyArea", area), Text::KeySelectArea, QString("Ctrl+%1").arg(area),
            [this, area] { showArea(area); }, area);
    for (int page = RoomTab; page <= SubArrayTab; ++page)
        key(elementName("keyPage", page), kPageTitles[page], QString("Alt+%1").arg(page + 1),
            [this, page] { Main_SSTab->setCurrentIndex(page); });
}

void MainWindow::helpOnPage()
{
    constexpr const char* kSections[] = {"location", "setup", "rigging", "subarray"};
    if (HelpDialog::page(m_session).isEmpty()) {
        showMessage(this, m_session.text(Text::HelpMissing));
        return;
    }
    if (!m_help)
        m_help = new HelpDialog(m_session, this);
    m_help->showSection(kSections[Main_SSTab->currentIndex()]);
    m_help->show();
    m_help->raise();
    m_help->activateWindow();
}

void MainWindow::showArea(int number)
{
    Main_SSTab->setCurrentIndex(SetupTab);
    if (number <= m_editor.room().GIGetNumAreas())
        m_editor.selectArea(number);
}

void MainWindow::showCommands()
{
    for (const ActionText& shown : m_actionTexts)
        shown.action->setText(
            m_session.text(shown.text).replace("%1", QString::number(shown.number)));
    for (const QMenu* menu : menuBar()->findChildren<QMenu*>())
        partLetters(*menu);
}

} // namespace orva::ui
