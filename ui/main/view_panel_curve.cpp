// The curve picture and the fit line in it.
#include "engine/spl_difference.h"
#include "lang/number_text.h"
#include "main/view_panel.h"
#include "widgets/controls.h"

#include <algorithm>

namespace orva::ui {

void ViewPanel::setCurves(CurveSource source)
{
    m_otherCurves = std::move(source);
    if (m_otherCurves)
        m_pages->setCurrentIndex(0);
    AreaSpl_pbx->redraw();
}

int ViewPanel::curvePoints() const
{
    return orva::curvePoints(AreaSpl_pbx->width());
}

double ViewPanel::shortestFitLineM() const
{
    constexpr double kShortestPixels = 2;
    const Segment area = m_editor.room().area(m_editor.view().SelectedArea);
    return kShortestPixels / curveEnd(AreaSpl_pbx->width()) * area.lengthM;
}

/// The chosen areas over the same metres, the selected one on top.
CurvePicture ViewPanel::allCurves(int points) const
{
    constexpr Role kColours[] = {Role::Result1, Role::Result2, Role::Result3};
    constexpr int kDashes[] = {0, 6, 2};
    CurvePicture picture = areaCurve(1);
    picture.curves.clear();
    picture.detailed = true;
    std::vector<int> shown;
    for (int number = 1; number <= m_editor.room().GIGetNumAreas(); ++number) {
        if (number != picture.area &&
            !m_editor.view().curveAreas.at(static_cast<std::size_t>(number - 1)))
            continue;
        shown.push_back(number);
        picture.lengthM = std::max(picture.lengthM, m_editor.room().area(number).lengthM);
    }
    for (const int number : shown) {
        const Segment area = m_editor.room().area(number);
        const double share = picture.lengthM > 0 ? area.lengthM / picture.lengthM : 0;
        const auto at = static_cast<std::size_t>(number - 1);
        const int own = std::max(1, static_cast<int>(points * share));
        const bool selected = number == picture.area;
        Curve curve{m_editor.levelsAlong(area, own), kColours[at], selected ? 2.0 : 1.0,
                    kDashes[at], number};
        if (selected)
            picture.range = m_editor.weatherRange(area, own);
        picture.curves.insert(selected ? picture.curves.end() : picture.curves.begin(),
                              std::move(curve));
    }
    return picture;
}

/// How much the current setup has over the one that it is compared with.
CurvePicture ViewPanel::differenceCurve(int points) const
{
    const Segment area = m_editor.room().area(m_editor.view().SelectedArea);
    const std::vector<float> other =
        m_editor.comparedPrediction()->levelsAlong(area, points, m_editor.view().levels.choice());
    std::vector<float> levels = m_editor.levelsAlong(area, points);
    std::transform(other.begin(), other.end(), levels.begin(), levels.begin(), levelDifference);
    return {m_editor.view().SelectedArea, area.lengthM, {{levels, Role::Result1, 2}}, {}};
}

/// Before it, fainter, those of the other variants.
CurvePicture ViewPanel::areaCurve(int points) const
{
    const Segment area = m_editor.room().area(m_editor.view().SelectedArea);
    CurvePicture picture{m_editor.view().SelectedArea,
                         area.lengthM,
                         {},
                         m_editor.view().fitLine,
                         m_editor.view().baseline};
    constexpr int kDashes[] = {12, 6, 3, 1};
    for (std::size_t variant = 0; variant < Variants::kMost; ++variant)
        if (Prediction* kept = m_editor.keptPrediction(variant))
            picture.curves.push_back(
                {kept->levelsAlong(area, points, m_editor.view().levels.choice()), Role::Leader, 1,
                 kDashes[variant]});
    picture.curves.push_back({m_editor.levelsAlong(area, points)});
    return picture;
}

void ViewPanel::prepareCurve()
{
    std::optional<BusyPointer> pointer;
    if (!m_editor.live() && !m_hand->dragging()) // else it would flicker
        pointer.emplace();
    const int points = curvePoints();
    m_curve = m_otherCurves                   ? m_otherCurves(points)
              : m_editor.comparedPrediction() ? differenceCurve(points)
              : m_editor.view().allAreas      ? allCurves(points)
                                              : areaCurve(points);
    const std::vector<float>& levels = m_curve.curves.back().levels;
    const auto [least, largest] = std::minmax_element(levels.begin(), levels.end());
    AreaSpl_pbx->setAccessibleDescription(
        m_editor.session().text(Text::CurveTitle) + QString::number(m_curve.area) + ", " +
        m_editor.session().text(Text::MapMax) + " " + qtText(fixedText(*largest, 1)) + "dB, " +
        m_editor.session().text(Text::MapMin) + " " + qtText(fixedText(*least, 1)) + "dB");
}

/// The place on the area below the pointer.
void ViewPanel::probeOnCurve(QPointF position)
{
    const double along =
        m_curve.placeAt(AreaSpl_pbx->userPoint(position), AreaSpl_pbx->width()).alongM;
    const Segment area = m_editor.room().area(m_curve.area);
    if (along >= 0 && along <= area.lengthM)
        m_editor.probe(area.at(along));
    else
        m_editor.probe({});
}

void ViewPanel::connectFitLine()
{
    connect(AreaSpl_pbx, &DrawingWidget::moved, this, &ViewPanel::probeOnCurve);
    connect(AreaSpl_pbx, &DrawingWidget::left, this, [this] { m_editor.probe({}); });
    // Not into differences: a line stands for levels.
    const auto drawing = [this] {
        return chkDrawLine->isChecked() && !m_editor.comparedPrediction();
    };
    const auto place = [this](QPointF position) {
        CurvePoint at = m_curve.placeAt(AreaSpl_pbx->userPoint(position), AreaSpl_pbx->width());
        if (m_curve.detailed) // longer areas go on
            at.alongM = std::min(at.alongM, m_editor.room().area(m_curve.area).lengthM);
        return at;
    };
    connect(AreaSpl_pbx, &DrawingWidget::pressed, this,
            [this, drawing, place](QPointF position, Qt::MouseButton button) {
                if (button == Qt::RightButton)
                    m_editor.setFitLine({});
                else if (button == Qt::LeftButton && drawing())
                    m_editor.setFitLine(FitLine{place(position), place(position)});
                AreaSpl_pbx->redraw();
            });
    connect(AreaSpl_pbx, &DrawingWidget::moved, this,
            [this, drawing, place](QPointF position, Qt::MouseButtons buttons) {
                if (!buttons.testFlag(Qt::LeftButton) || !drawing() || !m_editor.view().fitLine)
                    return;
                m_editor.setFitLine(FitLine{m_editor.view().fitLine->first, place(position)});
                AreaSpl_pbx->redraw();
            });
    connect(AreaSpl_pbx, &DrawingWidget::released, this,
            [this, drawing, place](QPointF position, Qt::MouseButton button) {
                if (button == Qt::RightButton)
                    m_editor.setFitLine({});
                if (button == Qt::LeftButton && drawing() && m_editor.view().fitLine) {
                    FitLine line{m_editor.view().fitLine->first, place(position)};
                    if (line.second.alongM < line.first.alongM)
                        std::swap(line.first, line.second);
                    m_editor.setFitLine(line);
                }
                AreaSpl_pbx->redraw();
            });
}

} // namespace orva::ui
