#include "main/hang_guide.h"

#include "engine/parallel.h"
#include "lang/number_text.h"
#include "lang/string_table.h"

#include <QToolTip>
#include <algorithm>
#include <cmath>

namespace orva::ui {

namespace {

/// Places are so far apart, in a room that is not huge; coarse ones four times as far.
constexpr double kRasterM = 0.25;
constexpr double kMostPlaces = 60'000;
constexpr double kCoarser = 4;

double rasterOf(const Room& room)
{
    const auto [width, height] = room.GFAGetRoomDims();
    return std::max(kRasterM, std::sqrt(static_cast<double>(width) * height / kMostPlaces));
}

} // namespace

HangGuide::HangGuide(Editor& editor, DrawingWidget& view)
    : QObject(&view), m_editor(editor), m_view(view), m_task(this)
{
    connect(&editor, &Editor::changed, this, &HangGuide::follow);
    for (const auto signal : {&Editor::levelsChosen, &Editor::hangingChanged, &Editor::dataChanged})
        connect(&editor, signal, this, &HangGuide::follow);
    connect(&view, &DrawingWidget::moved, this,
            [this](QPointF position, Qt::MouseButtons) { showFigures(position); });
}

std::optional<HangGuide::Wanted> HangGuide::wanted() const
{
    if (!m_editor.view().hanging || m_editor.view().locked || !m_editor.calculable())
        return std::nullopt;
    ApplicationState& state = m_editor.session().state();
    Wanted wanted{m_editor.document().state().project, state.levelKernel(),
                  state.speakerData.BandLevel, m_editor.view().levels.choice()};
    wanted.project.array.GBSetCradleCoord({0, 0});
    wanted.project.subArray = {};
    wanted.project.variants = {};
    wanted.project.room.takeTexts({});
    return wanted;
}

void HangGuide::follow()
{
    std::optional<Wanted> now = wanted();
    if (now == m_wanted)
        return;
    const bool redraw = m_map || now;
    m_task.end();
    m_wanted = std::move(now);
    m_map.reset();
    m_best.reset();
    if (m_wanted)
        calculate(kCoarser * rasterOf(m_editor.room()));
    if (redraw)
        m_view.redraw();
}

void HangGuide::calculate(double rasterM)
{
    m_task.start(
        [this, asked = *m_wanted, rasterM](const Task::Stop& stop) {
            const Hearing hearing{*asked.kernel, asked.levels, areaReceivers(asked.project.room),
                                  asked.choice};
            m_coming = hangMap(hearing, asked.project, rasterM, coreCount(),
                               [&](int, int) { return !stop(); });
            m_comingBest =
                m_coming ? bestPlace(hearing, asked.project, *m_coming, stop) : std::nullopt;
        },
        [this, rasterM] {
            if (!m_coming)
                return;
            m_map = std::move(m_coming);
            m_best = m_comingBest;
            const double finest = rasterOf(m_wanted->project.room);
            if (rasterM > finest)
                calculate(finest);
            m_view.redraw();
        });
}

void HangGuide::drawOverlay(DrawingSurface& surface) const
{
    if (!m_best)
        return;
    const double x = m_best->place.x;
    const double y = -m_best->place.y;
    const double arm = 7 * surface.pixelX();
    surface.line({x - arm, y}, {x + arm, y}, Role::Ink, 2);
    surface.line({x, y - arm}, {x, y + arm}, Role::Ink, 2);
    surface.print({x + arm, y}, fixedText(m_best->evenness.rms, 2) + " dB", Role::Ink);
}

/// The best place where the pointer is near it, else that of the cell below it.
std::optional<HangPlace> HangGuide::placeAt(QPointF position) const
{
    constexpr double kReachPx = 8;
    const Point at = m_view.userPoint(position);
    const Point point{at.x, -at.y};
    if (m_best && std::hypot(point.x - m_best->place.x, point.y - m_best->place.y) *
                          m_view.width() / m_view.scale().width <
                      kReachPx)
        return m_best;
    const std::optional<std::size_t> cell = m_map->cellAt(point);
    if (!cell || !std::isfinite(m_map->rms.levels[*cell]))
        return std::nullopt;
    return HangPlace{m_map->placeOf(*cell), {m_map->rms.levels[*cell], m_map->spread[*cell]}};
}

void HangGuide::showFigures(QPointF position)
{
    if (!m_map)
        return;
    const Session& session = m_editor.session();
    const double factor = m_editor.lengthFactor();
    const std::optional<HangPlace> place = placeAt(position);
    const QString text =
        place ? session.text(Message(
                    Text::HangFigures,
                    {plainText(place->place.x * factor, 2), plainText(place->place.y * factor, 2),
                     std::string(lengthUnit(session.textOptions())),
                     fixedText(place->evenness.rms, 2), fixedText(place->evenness.spread, 1)}))
              : session.text(Text::HangNowhere);
    QToolTip::showText(m_view.mapToGlobal(position.toPoint()), text, &m_view);
}

bool HangGuide::click(QPointF position)
{
    if (!m_map)
        return false;
    if (const std::optional<HangPlace> place = placeAt(position))
        m_editor.editArray({Text::StepCradle}, [&](LineArray& array) {
            return array.GBSetCradleCoord(
                {static_cast<float>(place->place.x), static_cast<float>(place->place.y)});
        });
    return true;
}

} // namespace orva::ui
