#pragma once

#include "app/state/task.h"
#include "main/editor.h"
#include "optimize/hang_map.h"
#include "widgets/drawing_widget.h"

namespace orva::ui {

/// Shows how even the areas would be with the array anywhere in the room, and hangs it where one
/// clicks: coarse at first, then finer, beside the window.
class HangGuide final : public QObject {
    Q_OBJECT
public:
    HangGuide(Editor& editor, DrawingWidget& view);

    /// What the room view shows instead of a level map; null: nothing.
    const HangMap* map() const { return m_map ? &*m_map : nullptr; }
    /// The best place, over the picture.
    void drawOverlay(DrawingSurface& surface) const;
    /// Hangs the array there; false where nothing is shown.
    bool click(QPointF position);
    /// Whether what was asked for is there, as fine as it gets.
    bool finished() const { return m_map && !m_task.running(); }

private:
    /// What the map depends on: the array but for its place, the room, what is heard.
    struct Wanted {
        Project project;
        std::shared_ptr<const LevelKernel> kernel;
        PerBand<BandReference> levels;
        LevelChoice choice;

        friend bool operator==(const Wanted&, const Wanted&) = default;
    };
    std::optional<Wanted> wanted() const;
    void follow();
    void calculate(double rasterM);
    void showFigures(QPointF position);
    std::optional<HangPlace> placeAt(QPointF position) const;

    Editor& m_editor;
    DrawingWidget& m_view;
    std::optional<Wanted> m_wanted;
    std::optional<HangMap> m_map;
    std::optional<HangPlace> m_best;
    std::optional<HangMap> m_coming; ///< the task's own while it runs
    std::optional<HangPlace> m_comingBest;
    Task m_task;
};

} // namespace orva::ui
