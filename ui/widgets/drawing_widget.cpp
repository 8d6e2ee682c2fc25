#include "widgets/drawing_widget.h"

#include "painting/painter_surface.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace orva::ui {

DrawingWidget::DrawingWidget(const QString& name, Draw draw, QWidget* parent)
    : QWidget(parent), m_draw(std::move(draw))
{
    setObjectName(name);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void DrawingWidget::redraw()
{
    m_stale = true;
    update();
}

const QPixmap& DrawingWidget::picture()
{
    const double ratio = devicePixelRatioF();
    const QSize shown = size().expandedTo({1, 1});
    const QSize pixels = (QSizeF(shown) * ratio).toSize();
    if (!m_stale && m_picture.size() == pixels)
        return m_picture;
    m_stale = false;
    if (m_picture.size() != pixels) {
        m_picture = QPixmap(pixels);
        m_picture.setDevicePixelRatio(ratio);
    }
    m_picture.fill(Qt::white);
    QPainter painter(&m_picture);
    painter.setFont(font());
    PainterSurface surface(painter, shown);
    m_draw(surface);
    m_scale = surface.scale();
    return m_picture;
}

const Scale& DrawingWidget::scale()
{
    picture();
    return m_scale;
}

Point DrawingWidget::userPoint(QPointF position)
{
    const Scale& shown = scale();
    return {shown.left + position.x() * shown.width / std::max(1, width()),
            shown.top + position.y() * shown.height / std::max(1, height())};
}

void DrawingWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.drawPixmap(0, 0, picture());
    if (!m_overlay)
        return;
    painter.setFont(font());
    PainterSurface surface(painter, size());
    surface.setScale(m_scale);
    m_overlay(surface);
}

void DrawingWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_stale = true;
    emit resized();
}

void DrawingWidget::mousePressEvent(QMouseEvent* event)
{
    emit pressed(event->position(), event->button());
}

void DrawingWidget::mouseMoveEvent(QMouseEvent* event)
{
    emit moved(event->position(), event->buttons());
}

void DrawingWidget::mouseReleaseEvent(QMouseEvent* event)
{
    emit released(event->position(), event->button());
}

void DrawingWidget::leaveEvent(QEvent*)
{
    emit left();
}

} // namespace orva::ui
