#pragma once

#include "app/state/task.h"
#include "main/view_panel.h"

namespace orva::ui {

/// The map that follows every edit: whole before the room is drawn where a frame suffices for it;
/// else coarse at first, and to the chosen cell beside the window. The last state wins.
class LiveMap final : public QObject {
    Q_OBJECT
public:
    LiveMap(Editor& editor, ViewPanel& views);

    /// Brings the map to what holds now, as fine as there is time for.
    void follow();

signals:
    /// What is shown has coarser cells than those chosen; or no longer.
    void coarse(bool coarse);

private:
    /// All that a map is calculated from.
    struct Work {
        std::shared_ptr<const LevelKernel> kernel;
        LineArray array;
        PerBand<BandReference> levels;
        LevelChoice choice;
        MapGrid grid;

        /// Whether the other's powers are these ones'. Those of few bands are more exact than the
        /// same ones among many: what is shown must not depend on what was shown before.
        bool samePowers(const Work& other) const
        {
            return kernel == other.kernel && array == other.array && grid == other.grid &&
                   choice.bands == other.choice.bands;
        }
    };
    static std::optional<SummedMap> calculate(const Work& work, const Progress& progress,
                                              RawSplCache& cache);
    std::optional<Work> wanted() const;
    bool isThere(const Work& work) const;
    double expectedMs(const Work& work) const;
    SummedMap timed(const Work& work, RawSplCache& cache);
    void show(const Work& work, SummedMap shown, bool whole);
    void say(bool isCoarse);
    Work coarser(const Work& work, double forMs) const;
    void calculateBeside(const Work& work, RawSplCache& cache, bool whole,
                         const std::function<void()>& then);
    void refine(const Work& work);
    void finish(const Work& work);

    Editor& m_editor;
    ViewPanel& m_views;
    RawSplCache m_planes;        ///< of the chosen cells; the task's own while it runs
    std::optional<Work> m_whole; ///< of those planes
    bool m_saidCoarse = false;
    std::optional<Work> m_coming; ///< that the task works at
    RawSplCache m_coarse;
    /// What a cell costs, for so many boxes and bands; it is measured with every map.
    struct {
        std::size_t boxes = 0;
        int bands = 0;
        double ms = 0;
    } m_cell;
    Task m_fine;
};

} // namespace orva::ui
