#include "main/live_map.h"

#include <QElapsedTimer>
#include <cmath>
#include <utility>

namespace orva::ui {

namespace {

/// Of a frame, for the map; the rest is for drawing.
constexpr double kMapMs = 4;
/// What takes longer is not waited for without something finer meanwhile, which takes so long.
constexpr double kLongMs = 250;
constexpr double kFinerMs = 60;
/// Cells that are calculated at once on any machine.
constexpr double kFewCells = 2000;

} // namespace

LiveMap::LiveMap(Editor& editor, ViewPanel& views)
    : QObject(&views), m_editor(editor), m_views(views)
{
    views.setFollowMap([this] { follow(); });
}

std::optional<MapWork> LiveMap::wanted() const
{
    const std::optional<MapGrid> grid = m_views.mapGrid();
    if (!grid || !m_editor.live() || !m_editor.calculable())
        return std::nullopt;
    ApplicationState& state = m_editor.session().state();
    return MapWork{state.levelKernel(), m_editor.array(), state.speakerData.BandLevel,
                   m_editor.view().levels.choice(), *grid};
}

/// Whether what is shown is, or soon will be, that one.
bool LiveMap::isThere(const MapWork& work) const
{
    const ViewState::Map& map = m_editor.view().map;
    const std::optional<MapWork>& made = map.coarse ? m_coming : m_whole;
    return map.shown && map.shownChoice == work.choice && made && made->samePowers(work) &&
           made->levels == work.levels;
}

void LiveMap::follow()
{
    const std::optional<MapWork> work = wanted();
    if (!work) {
        m_fine.end();
        m_coming.reset();
        say(false);
        return;
    }
    m_editor.map().Valid = true;
    if (isThere(*work))
        return;
    m_fine.end();
    m_coming.reset();
    if (!m_whole || !m_whole->samePowers(*work)) {
        m_planes.clear();
        m_whole.reset();
    }
    if (expectedMs(*work) > kMapMs) { // or nobody knows, and this tells
        const MapWork few = coarser(*work, kMapMs);
        m_coarse.clear();
        SummedMap shown = timed(few, m_coarse);
        show(few, std::move(shown), false);
    }
    if (expectedMs(*work) > kMapMs) {
        refine(*work);
        return;
    }
    SummedMap shown = timed(*work, m_planes);
    m_whole = work;
    show(*work, std::move(shown), true);
}

/// Infinite where nothing like it was calculated before.
double LiveMap::expectedMs(const MapWork& work) const
{
    if (m_whole && m_whole->samePowers(work))
        return 0;
    const bool known = m_cell.boxes == static_cast<std::size_t>(work.array.boxCount()) &&
                       m_cell.bands == work.choice.bands.count();
    return known ? m_cell.ms * static_cast<double>(work.grid.cells())
                 : std::numeric_limits<double>::infinity();
}

SummedMap LiveMap::timed(const MapWork& work, RawSplCache& cache)
{
    const bool whole = expectedMs(work) > 0;
    QElapsedTimer timer;
    timer.start();
    SummedMap shown = mapOf(work, {}, cache).value_or(SummedMap{});
    const double ms =
        static_cast<double>(timer.nsecsElapsed()) / 1e6 / static_cast<double>(work.grid.cells());
    if (whole)
        m_cell = {static_cast<std::size_t>(work.array.boxCount()), work.choice.bands.count(), ms};
    return shown;
}

void LiveMap::show(const MapWork& work, SummedMap shown, bool whole)
{
    ViewState::Map& map = m_editor.map();
    map.grid = work.grid;
    map.shown = std::move(shown);
    map.shownChoice = work.choice;
    map.coarse = !whole;
    say(!whole);
}

void LiveMap::say(bool isCoarse)
{
    if (std::exchange(m_saidCoarse, isCoarse) != isCoarse)
        emit coarse(isCoarse);
}

/// The whole room in as many cells as there is time for.
MapWork LiveMap::coarser(const MapWork& work, double forMs) const
{
    const double all = static_cast<double>(work.grid.cells());
    const double ms = expectedMs(work);
    const double cells = std::isfinite(ms) ? all * forMs / ms : kFewCells;
    const auto factor = static_cast<float>(std::ceil(std::sqrt(all / std::max(cells, 1.0))));
    MapWork few = work;
    few.grid = orva::ui::coarser(work.grid, m_editor.room(), factor);
    return few;
}

/// Calculates it in the task, shows it, goes on.
void LiveMap::calculateBeside(const MapWork& work, RawSplCache& cache, bool whole,
                              const std::function<void()>& then)
{
    const auto shown = std::make_shared<std::optional<SummedMap>>();
    m_fine.start(
        [work, shown, &cache](const Task::Stop& stopped) {
            *shown = mapOf(
                work, [&](int, int) { return !stopped(); }, cache);
        },
        [this, work, shown, whole, then] {
            show(work, std::move(**shown), whole);
            m_views.roomView().redraw();
            then();
        },
        [this] { m_editor.setLive(false); }); // else it would be tried with each edit
}

/// Where the chosen cells take long, with finer ones first.
void LiveMap::refine(const MapWork& work)
{
    m_coming = work;
    if (expectedMs(work) <= kLongMs) {
        finish(work);
        return;
    }
    m_coarse.clear();
    calculateBeside(coarser(work, kFinerMs), m_coarse, false, [this, work] { finish(work); });
}

void LiveMap::finish(const MapWork& work)
{
    calculateBeside(work, m_planes, true, [this, work] {
        m_coming.reset();
        m_whole = work;
    });
}

} // namespace orva::ui
