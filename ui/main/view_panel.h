#pragma once

#include "main/editor.h"
#include "widgets/drawing_widget.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace orva::ui {

/// The room view with the array and its levels, the curve of the selected area, and what they
/// show: map type, averaging, band, weighting.
class ViewPanel final : public QWidget {
    Q_OBJECT
public:
    ViewPanel(Editor& editor, QWidget* parent);

    DrawingWidget* Main_pbx;
    DrawingWidget* AreaSpl_pbx;

    bool aimingLines() const { return chkAiming->isChecked(); }
    /// Levels of the curve picture, for whoever adds curves.
    void setCurves(std::function<void(DrawingSurface&)> draw) { m_otherCurves = std::move(draw); }

signals:
    void calculateAllAsked();
    void calculateBandAsked();
    /// What is shown has changed: cached bands are summed again.
    void levelChoiceChanged();
    void optimizeAsked();

private:
    QWidget* controlsFrame();
    void drawRoom(DrawingSurface& surface);
    void drawCurve(DrawingSurface& surface);
    void markArea(QPointF position);
    void selectArea(QPointF position);
    void connectFitLine();
    void showTexts();
    void display();
    void displayLevels();
    void chooseLevels(const std::function<void(LevelChoiceForm&)>& choose);

    Editor& m_editor;
    std::optional<int> m_areaUnderMouse;
    std::function<void(DrawingSurface&)> m_otherCurves;

    QGroupBox* fraSPLControls;
    QRadioButton* MapType_opt[3];
    QLabel* avg_lbl;
    QComboBox* Average_cmb;
    QComboBox* cmbTerzOktave;
    QCheckBox* chkAWeight;
    QCheckBox* chkAiming;
    QPushButton* CalcBand_cmd;
    QPushButton* CalcAll_cmd;
    QCheckBox* chkDrawLine;
    QPushButton* Optimize_cmd;
};

} // namespace orva::ui
