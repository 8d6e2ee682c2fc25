#pragma once

#include "app/forms/search_run.h"
#include "app/state/task.h"
#include "main/search_more.h"
#include "main/view_panel.h"
#include "widgets/figure_table.h"

#include <QButtonGroup>
#include <QDialog>
#include <QLineEdit>
#include <QTimer>

namespace orva::ui {

/// The search for the most even splay angles: its options, its progress, its results.
class OptimizeDialog final : public QDialog {
    Q_OBJECT
public:
    /// Opens it for the selected area and the fit line; says so where no box aims at the area.
    static void launch(Editor& editor, ViewPanel& views, QWidget* window);

    /// The frame's button, Cancel and, while nothing is calculated, Esc: closes without a result.
    void reject() override;

protected:
    /// Esc pauses a running search.
    void keyPressEvent(QKeyEvent* event) override;

private:
    OptimizeDialog(Editor& editor, ViewPanel& views, const FitLineTarget& target, QWidget* window);

    /// "_" for none.
    static QString decibels(double rms, const char* unit = "dB");
    QWidget* settingsFrame();
    QWidget* progressFrame();
    QWidget* resultsFrame();
    void showTexts();
    void showState();
    void showToTest();
    void showFitLabels();
    QString gapText(const SearchRun::Progress& now) const;
    void showProgress();

    SearchChoice choice() const;
    void chooseCandidates();
    void beginOrPause();
    void searchStopped();
    QString lineOf(const SearchRun::Result& result, int number) const;
    void listTopConfigs();
    void selectConfig(int row);
    void calculateCurves(int points);
    CurvePicture curves(int points);
    CurvePicture betterCurve(int points);
    std::vector<float> levelsOf(const LineArray& array, int points) const;
    void foldOut(bool more);
    void fillResults();
    void chooseRows();
    void commitConfig();

    Editor& m_editor;
    ViewPanel& m_views;
    const Segment m_area;
    const FitLineTarget m_target;
    int m_points = 200;
    SearchRun m_run;
    Task m_task; ///< ends before the run that it works on
    QTimer m_poll;
    std::vector<std::vector<float>> m_curves;
    std::optional<LineArray> m_better; ///< the best so far of a search that runs
    int m_curvePoints = 0;

    QGroupBox* Frame2;
    QCheckBox* chkArea;
    QCheckBox* chkNeighbor;
    QCheckBox* chkQuick;
    QGroupBox* fraMeasure;
    QButtonGroup* m_measures; ///< ids are those of Measure
    QLabel* Label2;
    NumberEdit* txtNumPts;
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
    QLabel* m_rateLabel;
    QLabel* lblRate;
    QLabel* lblQuick;
    QLabel* lblGap;
    QPushButton* cmdOptimize;

    QLabel* Label12;
    QComboBox* cmbConfigs;
    QCheckBox* chkShowSetup;
    DrawingWidget* dbgpbx;
    QPushButton* cmdCommit;
    QPushButton* cmdCancel;

    QPushButton* cmdMore;
    SearchMore* m_more;
    QTableWidget* tblResults;
};

} // namespace orva::ui
