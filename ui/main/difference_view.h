#pragma once

#include "app/state/task.h"
#include "main/editor.h"
#include "main/map_work.h"

namespace orva::ui {

/// The map of what the current setup has over the one it is compared with: calculated beside the
/// window, in a large room coarse at first. The planes of the side that stays are kept.
class DifferenceView final : public QObject {
    Q_OBJECT
public:
    DifferenceView(Editor& editor, QObject* parent);

    /// Brings the map to what holds now, with those cells; none: no map.
    void follow(const std::optional<MapGrid>& grid);
    /// What the room view shows instead of a level map; null: nothing.
    const SummedMap* map() const { return m_shown ? &m_shown->map : nullptr; }
    const MapGrid* grid() const { return m_shown ? &m_shown->grid : nullptr; }

signals:
    void shown();

private:
    struct Wanted {
        MapWork now;
        LineArray other;
        FloatPair roomM;

        /// Whether a map of it may stand in for this one until this one is there.
        bool resembles(const Wanted& shown) const;

        friend bool operator==(const Wanted&, const Wanted&) = default;
    };
    /// The planes of one array, the task's own while it runs.
    struct Side {
        std::optional<MapWork> of;
        RawSplCache planes;

        std::optional<SummedMap> map(const MapWork& work, const Progress& progress);
    };
    struct Map {
        MapGrid grid;
        SummedMap map;
    };
    void calculate(const Wanted& wanted);

    Editor& m_editor;
    std::optional<Wanted> m_wanted;
    std::optional<Map> m_shown;
    std::optional<Map> m_coming;
    Side m_sides[2];
    Task m_task;
};

} // namespace orva::ui
