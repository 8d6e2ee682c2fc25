#pragma once

#include "app/state/task.h"
#include "main/map_work.h"
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
    std::optional<MapWork> wanted() const;
    bool isThere(const MapWork& work) const;
    double expectedMs(const MapWork& work) const;
    SummedMap timed(const MapWork& work, RawSplCache& cache);
    void show(const MapWork& work, SummedMap shown, bool whole);
    void say(bool isCoarse);
    MapWork coarser(const MapWork& work, double forMs) const;
    void calculateBeside(const MapWork& work, RawSplCache& cache, bool whole,
                         const std::function<void()>& then);
    void refine(const MapWork& work);
    void finish(const MapWork& work);

    Editor& m_editor;
    ViewPanel& m_views;
    RawSplCache m_planes;           ///< of the chosen cells; the task's own while it runs
    std::optional<MapWork> m_whole; ///< of those planes
    bool m_saidCoarse = false;
    std::optional<MapWork> m_coming; ///< that the task works at
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
