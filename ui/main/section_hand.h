#pragma once

#include "main/editor.h"
#include "widgets/drawing_widget.h"

namespace orva::ui {

/// The hand on a side section: drags what can be moved, turns boxes, zooms and pans. One undo step
/// per drag; Esc ends one where it began. What it does not use goes on to the view.
class SectionHand final : public QObject {
    Q_OBJECT
public:
    /// `withArray`: the section shows the array, too.
    SectionHand(Editor& editor, DrawingWidget& view, bool withArray);

    /// What is under the pointer, and the selected box, over the picture.
    void drawOverlay(DrawingSurface& surface) const;
    /// Asked first what a click with the left button does; true: nothing else.
    void setClick(std::function<bool(QPointF)> click) { m_click = std::move(click); }
    bool dragging() const { return m_drag && m_drag->moved; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Drag {
        Handle handle;
        QPointF from;
        DocumentState start;
        Gesture gesture;
        bool moved = false;
    };
    bool press(const QMouseEvent& event);
    bool move(const QMouseEvent& event);
    bool release(const QMouseEvent& event);
    bool wheel(const QWheelEvent& event);
    bool key(const QKeyEvent& event);
    bool nudge(const QKeyEvent& event);
    void drag(const QMouseEvent& event);
    void hover(QPointF position);
    void endDrag(bool takeBack);
    void showFigures(const Handle& handle, QPointF position);
    std::optional<Handle> handleUnder(QPointF position);
    std::optional<int> boxUnder(QPointF position);
    Point roomPoint(QPointF position);
    Size metres(QPointF pixels);
    void pan(QPointF pixels);

    Editor& m_editor;
    DrawingWidget& m_view;
    bool m_withArray;
    std::optional<Drag> m_drag;
    std::optional<Handle> m_under;    ///< the pointer
    std::optional<Handle> m_selected; ///< that the cursor keys nudge
    std::optional<QPointF> m_pan;     ///< where the pointer was
    bool m_space = false;
    std::function<bool(QPointF)> m_click;
};

} // namespace orva::ui
