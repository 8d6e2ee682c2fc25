#pragma once

#include "app/forms/suggestions.h"
#include "app/state/task.h"
#include "main/editor.h"

#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <mutex>

namespace orva::ui {

/// Looks for arrays for the room and lists them; a click on one hangs it in the document, as one
/// step however many are tried.
class SuggestDialog final : public QDialog {
    Q_OBJECT
public:
    SuggestDialog(Editor& editor, QWidget* window);

    bool running() const { return m_task.running(); }
    /// Stops what runs, or closes.
    void reject() override;

private:
    void showTexts();
    void poll();
    void ended();
    void list();
    void hang();

    Editor& m_editor;
    const Project m_project;
    const LevelChoice m_choice;
    const Gesture m_gesture;
    std::vector<Suggestion> m_shown;

    // Shared with the task.
    std::mutex m_mutex;
    std::vector<Suggestion> m_found;
    bool m_changed = false;
    std::atomic<double> m_share = 0;

    QTableWidget* tblSuggestions;
    QProgressBar* pbarSuggest;
    QLabel* lblSuggest;
    QPushButton* cmdStopSuggest;
    QPushButton* cmdCloseSuggest;
    QTimer m_poll;
    Task m_task; ///< ends before what it shares
};

} // namespace orva::ui
