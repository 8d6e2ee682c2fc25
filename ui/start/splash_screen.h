#pragma once

#include "app/state/task.h"
#include "widgets/session.h"

#include <QDialog>
#include <QLabel>
#include <QTimer>
#include <memory>
#include <optional>

namespace orva::ui {

/// What was loaded while the splash screen was shown.
struct StartData {
    ApplicationState state; ///< settings, loudspeaker data and air
    Result<SystemDataLoad> load = SystemDataLoad{};
};

/// Covers the loading of settings and loudspeaker data, which runs beside it. Closes three ticks
/// after that has ended.
class SplashScreen final : public QDialog {
    Q_OBJECT
public:
    /// Without `waits` it ends as soon as everything is loaded; a click or a key ends the wait,
    /// too.
    SplashScreen(Session& session, bool waits);
    ~SplashScreen() override;

    /// What was loaded, once the dialog has been closed.
    StartData& loaded() { return *m_loaded; }

    void reject() override {} // nothing works before everything is loaded

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void showTexts();
    void tick();
    void skip();
    void load();

    Session& m_session;
    QLabel* lblTitle;
    QTimer* SplashTimer;
    bool m_waits;
    bool m_whole = false; ///< everything is loaded
    int m_ticks = 0;
    std::unique_ptr<StartData> m_loaded;
    Task m_loader;
};

} // namespace orva::ui
