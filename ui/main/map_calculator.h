#pragma once

#include "main/view_panel.h"
#include "shell/progress_dialog.h"

#include <QMainWindow>

namespace orva::ui {

/// Calculates the map off the user-interface thread on all cores, under the progress dialog.
class MapCalculator final : public QObject {
    Q_OBJECT
public:
    MapCalculator(Editor& editor, ViewPanel& views, QWidget* window);

    /// `all`: every band, else those of the choice. `redraw`: only sums what has been calculated;
    /// where a band lacks, the setup is drawn without a map.
    void CalcMapping(bool all, bool redraw);
    bool busy() const { return m_busy; }
    /// Calculates a map again that is still on screen but no longer fits the options.
    void bringUpToDate();

private:
    void calculate(bool all, bool redraw);
    bool prepareGrid();
    bool done(BandSpan bands) const;
    /// Runs one stage; false when it was aborted.
    bool runStage(ProgressDialog& dialog, const QString& caption,
                  const std::function<bool(const Progress&)>& stage);

    Editor& m_editor;
    ViewPanel& m_views;
    QWidget* m_window;
    bool m_busy = false;
};

} // namespace orva::ui
