#include "widgets/drawing_widget.h"

#include "painting/painter_surface.h"
#include "widgets/appearance.h"

#include <QBuffer>
#include <QMouseEvent>
#include <QPainter>
#include <QSvgGenerator>
#include <QTimer>
#include <algorithm>

namespace orva::ui {

namespace {

QColor canvas()
{
    return qtColour(drawingScheme()[Role::Canvas]);
}

} // namespace

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
    if (m_scheduled || !isVisible())
        return;
    m_scheduled = true;
    QTimer::singleShot(0, this, [this] {
        m_scheduled = false;
        if (m_stale && isVisible())
            render();
    });
}

/// Whether the picture has the widget's size in device pixels.
bool DrawingWidget::fits() const
{
    return m_picture.size() == (QSizeF(size().expandedTo({1, 1})) * devicePixelRatioF()).toSize();
}

const QPixmap& DrawingWidget::picture()
{
    if (m_stale || !fits())
        render();
    return m_picture;
}

void DrawingWidget::render()
{
    if (m_prepare)
        m_prepare();
    m_stale = false;
    const double ratio = devicePixelRatioF();
    const QSize shown = size().expandedTo({1, 1});
    const QSize pixels = (QSizeF(shown) * ratio).toSize();
    if (m_picture.size() != pixels) {
        m_picture = QPixmap(pixels);
        m_picture.setDevicePixelRatio(ratio);
    }
    QPainter painter(&m_picture);
    drawOn(painter);
    update();
}

void DrawingWidget::drawOn(QPainter& painter)
{
    painter.setFont(font());
    PainterSurface surface(painter, size().expandedTo({1, 1}));
    surface.setScheme(drawingScheme());
    if (m_zoom)
        surface.setZoom(m_zoom());
    m_draw(surface);
    m_scale = surface.scale();
}

QByteArray DrawingWidget::png()
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture().save(&buffer, "PNG");
    return bytes;
}

QByteArray DrawingWidget::svg()
{
    picture(); // what is drawn is prepared
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(size());
    generator.setViewBox(rect());
    generator.setTitle(accessibleName());
    generator.setDescription(accessibleDescription());
    QPainter painter(&generator);
    drawOn(painter);
    painter.end();
    return bytes;
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
    if (!fits()) { // another screen, say
        redraw();
        painter.fillRect(rect(), canvas());
    }
    painter.drawPixmap(rect(), m_picture);
    if (!m_overlay)
        return;
    painter.setFont(font());
    PainterSurface surface(painter, size());
    surface.setScheme(drawingScheme());
    surface.setScale(m_scale);
    m_overlay(surface);
}

void DrawingWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_stale = true;
    emit resized();
    if (isVisible())
        render();
}

void DrawingWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    picture();
}

void DrawingWidget::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        redraw();
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
