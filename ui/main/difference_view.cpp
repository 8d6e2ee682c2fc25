#include "main/difference_view.h"

#include "engine/parallel.h"
#include "engine/spl_difference.h"

#include <utility>

namespace orva::ui {

namespace {

/// More cells than these are calculated coarsely first.
constexpr std::size_t kAtOnce = 40'000;
constexpr float kCoarser = 4;

} // namespace

DifferenceView::DifferenceView(Editor& editor, QObject* parent)
    : QObject(parent), m_editor(editor), m_task(this)
{
}

std::optional<SummedMap> DifferenceView::Side::mapOf(const Wanted& wanted, const Progress& progress)
{
    const bool same = of && of->kernel == wanted.kernel && of->array == wanted.array &&
                      of->grid == wanted.grid && of->choice.bands == wanted.choice.bands;
    if (!same) {
        planes.clear();
        of = wanted;
    }
    if (!CalcRawSPL(*wanted.kernel, wanted.array, wanted.grid, wanted.choice.bands, coreCount(),
                    progress, planes))
        return std::nullopt;
    return CalcSummedSPL(planes, wanted.levels, wanted.grid, wanted.choice, coreCount(), progress);
}

void DifferenceView::follow(const std::optional<MapGrid>& grid)
{
    const LineArray* other = m_editor.calculable() ? m_editor.comparedArray() : nullptr;
    std::optional<Wanted> now;
    if (other && grid) {
        ApplicationState& state = m_editor.session().state();
        now = Wanted{state.levelKernel(),
                     state.speakerData.BandLevel,
                     m_editor.view().levels.choice(),
                     m_editor.array(),
                     *other,
                     *grid};
    }
    if (now == m_wanted)
        return;
    m_task.end();
    m_wanted = std::move(now);
    if (!m_wanted) {
        m_shown.reset();
        return;
    }
    Wanted first = *m_wanted;
    if (first.grid.cells() > kAtOnce)
        first.grid = PrepareMapGrid(m_editor.room(), first.grid.CellW * kCoarser,
                                    first.grid.CellH * kCoarser)
                         .value_or(first.grid);
    calculate(first);
}

void DifferenceView::calculate(const Wanted& wanted)
{
    m_task.start(
        [this, wanted](const Task::Stop& stop) {
            const Progress progress = [&](int, int) { return !stop(); };
            Wanted other = wanted;
            other.array = wanted.other;
            const auto now = m_sides[0].mapOf(wanted, progress);
            const auto before = now ? m_sides[1].mapOf(other, progress) : std::nullopt;
            m_coming.reset();
            if (before)
                m_coming = Map{wanted.grid, mapDifference(*before, *now)};
        },
        [this, wanted] {
            if (!m_coming)
                return;
            m_shown = std::exchange(m_coming, std::nullopt);
            if (m_wanted && wanted.grid != m_wanted->grid)
                calculate(*m_wanted);
            emit shown();
        });
}

} // namespace orva::ui
