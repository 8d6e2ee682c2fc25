#pragma once

#include "drawing/drawing_surface.h"

#include <QPixmap>
#include <QWidget>
#include <functional>

namespace orva::ui {

/// Where something is drawn: in the colours of the appearance, sharp at any device pixel ratio,
/// drawn anew when it is resized. What is drawn is kept; painting only shows it, calculates nothing
/// and changes nothing.
class DrawingWidget final : public QWidget {
    Q_OBJECT
public:
    /// Clears its surface first.
    using Draw = std::function<void(DrawingSurface&)>;

    DrawingWidget(const QString& name, Draw draw, QWidget* parent);

    /// Draws anew in the next turn of the event loop, or once it is shown.
    void redraw();
    /// Calculates what will be drawn, each time before it is drawn.
    void setPrepare(std::function<void()> prepare) { m_prepare = std::move(prepare); }
    /// Drawn over the rest at each repaint, in the scale that the drawing left behind.
    void setOverlay(Draw overlay) { m_overlay = std::move(overlay); }

    /// Which part of a view that can be zoomed is drawn.
    void setZoom(std::function<Zoom()> zoom) { m_zoom = std::move(zoom); }

    /// The drawing, made anew if need be, as a picture.
    const QPixmap& picture();
    /// The same as PNG and as SVG, which keeps lines and texts.
    QByteArray png();
    QByteArray svg();
    /// A point of the widget in the user coordinates that the drawing left behind.
    Point userPoint(QPointF position);
    /// The scale that the drawing left behind.
    const Scale& scale();

    QSize sizeHint() const override { return {480, 320}; }
    QSize minimumSizeHint() const override { return {80, 60}; }

signals:
    void pressed(QPointF position, Qt::MouseButton button);
    void moved(QPointF position, Qt::MouseButtons buttons);
    void released(QPointF position, Qt::MouseButton button);
    void left();
    void resized();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void render();
    void drawOn(QPainter& painter);
    bool fits() const;

    Draw m_draw;
    Draw m_overlay;
    std::function<void()> m_prepare;
    std::function<Zoom()> m_zoom;
    QPixmap m_picture;
    Scale m_scale;
    bool m_stale = true;
    bool m_scheduled = false;
};

} // namespace orva::ui
