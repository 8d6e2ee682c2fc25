#include "main/difference_view.h"

#include "engine/spl_difference.h"

#include <utility>

namespace orva::ui {

namespace {

/// More cells than these are calculated coarsely first; fewer suffice where changes follow each
/// other faster than they are calculated.
constexpr std::size_t kAtOnce = 40'000;
constexpr float kCoarser = 4;

} // namespace

DifferenceView::DifferenceView(Editor& editor, QObject* parent)
    : QObject(parent), m_editor(editor), m_task(this)
{
}

std::optional<SummedMap> DifferenceView::Side::map(const MapWork& work, const Progress& progress)
{
    if (!of || !of->samePowers(work)) {
        planes.clear();
        of = work;
    }
    return mapOf(work, progress, planes);
}

bool DifferenceView::Wanted::resembles(const Wanted& shown) const
{
    return other == shown.other && now.choice == shown.now.choice && roomM == shown.roomM;
}

void DifferenceView::follow(const std::optional<MapGrid>& grid)
{
    const LineArray* other = m_editor.calculable() ? m_editor.comparedArray() : nullptr;
    std::optional<Wanted> now;
    if (other && grid) {
        ApplicationState& state = m_editor.session().state();
        now = Wanted{{state.levelKernel(), m_editor.array(), state.speakerData.BandLevel,
                      m_editor.view().levels.choice(), *grid},
                     *other,
                     m_editor.room().GFAGetRoomDims()};
    }
    if (now == m_wanted)
        return;
    const bool inTime = !m_task.running();
    m_task.end();
    if (!now || !m_wanted || !now->resembles(*m_wanted))
        m_shown.reset();
    m_wanted = std::move(now);
    if (!m_wanted)
        return;
    Wanted first = *m_wanted;
    if (first.now.grid.cells() > (inTime ? kAtOnce : kAtOnce / 16))
        first.now.grid = coarser(first.now.grid, m_editor.room(), kCoarser);
    calculate(first);
}

void DifferenceView::calculate(const Wanted& wanted)
{
    m_task.start(
        [this, wanted](const Task::Stop& stop) {
            const Progress progress = [&](int, int) { return !stop(); };
            MapWork other = wanted.now;
            other.array = wanted.other;
            const auto now = m_sides[0].map(wanted.now, progress);
            const auto before = now ? m_sides[1].map(other, progress) : std::nullopt;
            m_coming.reset();
            if (before)
                m_coming = Map{wanted.now.grid, mapDifference(*before, *now)};
        },
        [this, wanted] {
            if (!m_coming)
                return;
            m_shown = std::exchange(m_coming, std::nullopt);
            if (m_wanted && wanted.now.grid != m_wanted->now.grid)
                calculate(*m_wanted);
            emit shown();
        });
}

} // namespace orva::ui
