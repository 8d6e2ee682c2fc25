#pragma once

#include "main/live_map.h"
#include "main/map_calculator.h"
#include "main/project_commands.h"
#include "main/recovery_keeper.h"
#include "main/setup_page.h"
#include "main/status_line.h"
#include "main/step_places.h"
#include "shell/calculator_window.h"
#include "shell/help_dialog.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>
#include <QTabWidget>

namespace orva::ui {

/// The main window: menus, the four pages, and the commands behind them.
class MainWindow final : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(Session& session);
    ~MainWindow() override;

    /// Asks for the system where the user wants that, and makes the first project.
    /// With a file that is opened instead, where one is named.
    void begin(const QString& file = {});
    /// The end comes unasked: what is not saved and the options are stored.
    void endUnasked();
    Editor& editor() { return m_editor; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void makeMenus();
    void makeKeys();
    void showCommands();
    void showArea(int number);
    /// In a menu, or in the window alone, with that number in its text.
    QAction* command(QWidget* where, const QString& name, Text text,
                     const std::function<void()>& run, const QKeySequence& keys = {},
                     int number = 0);
    QMenu* submenu(QMenu* parent, const char* name, Text text);
    void showTexts();
    void showTitle();
    void showRecentFiles();
    void showStatus();
    void showSteps();
    void showStep(const StepName& step, bool undone, bool unlocked);
    QWidget* changedControl(const StepPlace& place) const;
    void fitFrame();

    void openFile(const QString& file);
    bool recover();
    void autoAim();
    void createPrintVersion();
    void exit();
    void generalOptions();
    void displayFont();
    void calculator();
    void helpOnPage();
    void AppShutdown();

    Session& m_session;
    Editor m_editor;
    QTabWidget* Main_SSTab;
    QWidget* m_logo;
    SetupPage* m_setupPage;
    ViewPanel* m_views;
    MapCalculator* m_map;
    LiveMap* m_live;
    ProjectCommands* m_commands;
    std::unique_ptr<RecoveryKeeper> m_recovery;
    QPointer<CalculatorWindow> m_calculator;
    QPointer<HelpDialog> m_help;
    QLabel* lblOverload;
    StatusLine* m_status;
    Text m_statusText = Text::None;
    QString m_statusArgument;
    bool m_waitsForDisk = false;
    bool m_coarseMap = false;
    QString m_corrections; ///< what the last edit or step did, until something else is said
    QAction* m_undo;
    QAction* m_redo;
    QHash<const QWidget*, QString> m_shownBefore; ///< the step that is taken back, or again

    struct ActionText {
        QAction* action;
        Text text;
        int number; ///< in the text
    };
    std::vector<ActionText> m_actionTexts;
    std::array<QAction*, RecentFiles::kMost> mnuMRU;
    QAction* m_forgetMissing;
    QSize m_placedSize; ///< that the program gave the window
    bool m_divided = false;
    bool Exiting = false;
};

} // namespace orva::ui
