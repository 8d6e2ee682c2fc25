#pragma once

#include "main/difference_view.h"
#include "main/hang_guide.h"
#include "main/level_pages.h"
#include "main/page.h"
#include "main/section_hand.h"
#include "widgets/drawing_widget.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>

namespace orva::ui {

/// The room view with the array and its levels, the curve of the selected area, and what they
/// show: map type, averaging, band, weighting.
class ViewPanel final : public Page {
    Q_OBJECT
public:
    ViewPanel(Editor& editor, QWidget* parent);

    /// The room view, and the curve of the selected area.
    DrawingWidget& roomView() const { return *Main_pbx; }
    DrawingWidget& curveView() const { return *AreaSpl_pbx; }

    /// The cells of the map as the options say, none smaller than a pixel; none for too many.
    std::optional<MapGrid> mapGrid() const;
    /// Called before the room is drawn, to bring the map to what holds.
    void setFollowMap(std::function<void()> follow) { m_followMap = std::move(follow); }
    /// The map that the room view shows, whole, as it is drawn; none where it shows none.
    struct ShownMap {
        const MapGrid* grid;
        const SummedMap* map;
    };
    std::optional<ShownMap> shownMap();
    bool aimingLines() const { return chkAiming->isChecked(); }
    /// What else the curve picture shows; none: the curve of the selected area.
    using CurveSource = std::function<CurvePicture(int points)>;
    void setCurves(CurveSource source);
    QSize minimumSizeHint() const override;
    /// Points of a curve in the picture.
    int curvePoints() const;
    /// The shortest fit line, in metres along the selected area: two pixels.
    double shortestFitLineM() const;

signals:
    void calculateAllAsked();
    void calculateBandAsked();
    /// What is shown has changed: cached bands are summed again.
    void levelChoiceChanged();
    void optimizeAsked();
    void suggestAsked();

protected:
    bool concerns(const Shown& what) const override
    {
        const Changes& changes = what.changes;
        return what.everything || what.view || changes.room || changes.array || changes.setup ||
               changes.variants;
    }
    void display() override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void makeRoomView();
    QWidget* controlsFrame();
    void prepareRoom();
    void prepareCurve();
    CurvePicture areaCurve(int points) const;
    CurvePicture differenceCurve(int points) const;
    CurvePicture allCurves(int points) const;
    void markArea(QPointF position);
    bool pinOrUnpin(QPointF position);
    void drawPins(DrawingSurface& surface) const;
    void probeOnCurve(QPointF position);
    void selectArea(QPointF position);
    void connectFitLine();
    void showTexts();
    void displayCurveAreas();
    void displayLevels();
    void arrange();
    void arrangeControls(bool below);
    void chooseLevels(const std::function<void(LevelChoiceForm&)>& choose);

    std::function<void()> m_followMap;
    std::optional<int> m_areaUnderMouse;
    CurveSource m_otherCurves;
    RoomViewContent m_room; ///< as it is shown
    CurvePicture m_curve;

    DrawingWidget* Main_pbx;
    SectionHand* m_hand;
    HangGuide* m_hang;
    DifferenceView* m_difference;
    DrawingWidget* AreaSpl_pbx;
    LevelPages* m_pages;
    QSplitter* m_bottom;
    int m_columnWidth = 0; ///< that the controls need beside the curve
    QFrame* m_divider;
    QGroupBox* fraSPLControls;
    QRadioButton* MapType_opt[3];
    QLabel* avg_lbl;
    QComboBox* Average_cmb;
    QComboBox* cmbTerzOktave;
    QCheckBox* chkAWeight;
    QCheckBox* chkAiming;
    QCheckBox* chkLive;
    QCheckBox* chkProbe;
    QCheckBox* chkAllAreas;
    QCheckBox* chkCurveArea[3];
    QPushButton* CalcBand_cmd;
    QPushButton* CalcAll_cmd;
    QCheckBox* chkDrawLine;
    QPushButton* Optimize_cmd;
    QPushButton* cmdSuggest;
};

} // namespace orva::ui
