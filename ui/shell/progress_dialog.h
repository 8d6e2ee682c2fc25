#pragma once

#include "widgets/session.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <atomic>

namespace orva::ui {

/// Shown, modal, while something long is calculated. Esc, the Abort button and the frame's button
/// set `Aborted`, which the calculation polls from any thread; it closes the dialog itself.
class ProgressDialog final : public QDialog {
    Q_OBJECT
public:
    ProgressDialog(Session& session, QWidget* mainWindow);

    std::atomic<bool> Aborted = false;

    /// What is being done; the time left counts from here.
    void beginStage(const QString& caption, bool canAbort);
    void showPercent(int percent);
    /// Nobody knows how long it takes.
    void beginWaiting(const QString& caption);

    void reject() override
    {
        Aborted = true;
        emit aborted();
    }

signals:
    void aborted();

private:
    void showTexts();

    Session& m_session;
    QLabel* Label1;
    QLabel* Label2;
    QLabel* lblPercent;
    QLabel* lblTimeLeft;
    QProgressBar* pbarPercent;
    QPushButton* Abort_cmb;
    QElapsedTimer m_since;
};

} // namespace orva::ui
