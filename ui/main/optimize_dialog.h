#pragma once

#include "app/search_setup.h"
#include "document/search_form.h"
#include "main/view_panel.h"
#include "optimize/quick_search.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QThread>
#include <QTimer>
#include <atomic>
#include <memory>

namespace orva::ui {

/// The search for the most even splay angles: its options, its progress, its results.
class OptimizeDialog final : public QDialog {
    Q_OBJECT
public:
    /// Opens it for the selected area and the fit line; says so where no box aims at the area.
    static void launch(Editor& editor, ViewPanel& views, QWidget* window);

    ~OptimizeDialog() override;

    /// The frame's button, Cancel and, while nothing is calculated, Esc: closes without a result.
    void reject() override;

protected:
    /// Esc pauses a running search.
    void keyPressEvent(QKeyEvent* event) override;

private:
    OptimizeDialog(Editor& editor, ViewPanel& views, JointRange aiming, const FitLineTarget& target,
                   QWidget* window);

    QWidget* settingsFrame();
    QWidget* progressFrame();
    QWidget* resultsFrame();
    void showTexts();
    void showState();
    void showToTest();
    void showFitLabels();
    void showProgress();
    void showCurrentRms();
    void measureRate();

    void chooseCandidates();
    void beginOrPause();
    void runSearch();
    bool searchQuickly(const std::function<bool()>& stop);
    void searchStopped();
    void stopSearch();
    void listTopConfigs();
    void selectConfig(int row);
    LineArray arrayOf(int row) const;
    void calculateCurves(int points);
    CurvePicture curves(int points);
    void commitConfig();

    Editor& m_editor;
    ViewPanel& m_views;
    const JointRange AreaSpkRange;
    const FitLineTarget m_target;
    const AreaSegment m_area;
    const LineArray m_original;
    SearchForm m_form;
    int m_points = 200;
    std::unique_ptr<CandidateSet> m_candidates;

    // Belong to the thread while it runs.
    std::unique_ptr<Search> m_search;
    std::unique_ptr<QuickSearch> m_quickSearch;
    std::optional<QuickResult> m_quick;
    std::unique_ptr<QThread> m_thread;
    // Shared with it.
    std::atomic<bool> PauseFlag = false;
    std::atomic<std::uint64_t> m_tested = 0;
    std::atomic<double> m_best;
    std::atomic<bool> m_searching = false; ///< exhaustively

    QTimer m_poll;
    QElapsedTimer m_since;            ///< of the search, begun or continued
    std::uint64_t m_testedBefore = 0; ///< at that time
    double m_perSecond = 0;           ///< configurations, as measured last
    std::vector<Ranked> m_results;    ///< three best; where it was asked for, the quick one
    std::vector<std::vector<float>> m_curves;
    int m_curvePoints = 0;

    QGroupBox* Frame2;
    QCheckBox* chkArea;
    QCheckBox* chkNeighbor;
    QCheckBox* chkQuick;
    QGroupBox* fraMeasure;
    QRadioButton* optMeasure[2];
    QLabel* Label2;
    QLineEdit* txtNumPts;
    QGroupBox* fraFitLine;
    QLabel* m_x1Label;
    QLabel* m_x2Label;
    QLabel* lblX1;
    QLabel* lblX2;
    QLabel* lblUnits[2];
    QLabel* Label11;
    QLabel* lblDeltadB;

    QLabel* Label6;
    QLabel* lblArea;
    QLabel* Label1;
    QLabel* lblToTest;
    QLabel* Label4;
    QLabel* lblConfigNum;
    QLabel* Label3;
    QLabel* lblTested;
    QLabel* Label7;
    QLabel* lblComp;
    QLabel* m_timeLeftLabel;
    QLabel* lblTimeLeft;
    QLabel* Label8;
    QLabel* lblCurrentRMS;
    QLabel* Label5;
    QLabel* lblBestRMS;
    QLabel* lblQuick;
    QPushButton* cmdOptimize;

    QLabel* Label12;
    QComboBox* cmbConfigs;
    QCheckBox* chkShowSetup;
    DrawingWidget* dbgpbx;
    QPushButton* cmdCommit;
    QPushButton* cmdCancel;
};

} // namespace orva::ui
