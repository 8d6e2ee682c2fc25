#include "painting/painter_surface.h"

#include <QFontMetricsF>
#include <QImage>
#include <algorithm>
#include <cmath>
#include <vector>

namespace orva {

QColor qtColour(Colour colour)
{
    return {static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
            static_cast<int>((colour >> 16) & 0xFF)};
}

namespace {

QString qtText(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Index of the cell that each device pixel's middle lies in; -1 outside.
std::vector<int> cellOfPixel(int first, int count, double ratio, std::span<const double> edges)
{
    std::vector<int> cells(static_cast<std::size_t>(count), -1);
    std::size_t cell = 0;
    for (int i = 0; i < count; ++i) {
        const double middle = (first + i + 0.5) / ratio;
        while (cell + 1 < edges.size() && middle >= edges[cell + 1])
            ++cell;
        if (cell + 1 < edges.size() && middle >= edges[0])
            cells[static_cast<std::size_t>(i)] = static_cast<int>(cell);
    }
    return cells;
}

} // namespace

PainterSurface::PainterSurface(QPainter& painter, QSizeF size) : m_painter(painter), m_size(size)
{
    m_painter.setRenderHint(QPainter::Antialiasing);
    setTextHeight(m_textHeight);
}

QPointF PainterSurface::pixel(Point point) const
{
    // What is far outside stays outside without losing its direction on any drawing that fits.
    constexpr double kFar = 1e6;
    return {std::clamp((point.x - scale().left) / pixelX(), -kFar, kFar),
            std::clamp((point.y - scale().top) / pixelY(), -kFar, kFar)};
}

QRectF PainterSurface::pixelRect(Point corner, Point opposite) const
{
    return QRectF(pixel(corner), pixel(opposite)).normalized();
}

void PainterSurface::usePen(Colour colour, double width)
{
    m_painter.setPen(QPen(qtColour(colour), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    m_painter.setBrush(Qt::NoBrush);
}

void PainterSurface::clear()
{
    // Where the size is no whole number of device pixels the last ones are covered too.
    m_painter.fillRect(QRectF(QPointF(0, 0), m_size + QSizeF(1, 1)),
                       qtColour(colour(Role::Canvas)));
}

void PainterSurface::line(Point from, Point to, Colour colour, double width)
{
    usePen(colour, width);
    m_painter.drawLine(pixel(from), pixel(to));
}

void PainterSurface::polyline(std::span<const Point> points, Colour colour, double width)
{
    usePen(colour, width);
    QPolygonF polygon;
    for (const Point& point : points)
        polygon.append(pixel(point));
    m_painter.drawPolyline(polygon);
}

void PainterSurface::rectangle(Point corner, Point opposite, Colour colour, double width)
{
    usePen(colour, width);
    m_painter.drawRect(pixelRect(corner, opposite));
}

void PainterSurface::fillRectangle(Point corner, Point opposite, Colour colour)
{
    m_painter.fillRect(pixelRect(corner, opposite), qtColour(colour));
}

void PainterSurface::circle(Point centre, double radius, Colour colour, double width)
{
    usePen(colour, width);
    m_painter.drawEllipse(pixel(centre), radius / pixelX(), radius / pixelY());
}

void PainterSurface::arc(Point centre, double radius, double fromDeg, double toDeg, Colour colour,
                         double width)
{
    usePen(colour, width);
    const Point reach = {radius, radius};
    const QRectF box = pixelRect({centre.x - reach.x, centre.y - reach.y},
                                 {centre.x + reach.x, centre.y + reach.y});
    m_painter.drawArc(box, static_cast<int>(std::lround(fromDeg * 16)),
                      static_cast<int>(std::lround((toDeg - fromDeg) * 16)));
}

void PainterSurface::setTextHeight(double pixels)
{
    m_textHeight = pixels;
    QFont font = m_painter.font();
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels))));
    m_painter.setFont(font);
}

void PainterSurface::print(Point at, std::string_view text, Colour colour)
{
    m_painter.setPen(qtColour(colour));
    const QPointF corner = pixel(at);
    m_painter.drawText(QPointF(corner.x(), corner.y() + QFontMetricsF(m_painter.font()).ascent()),
                       qtText(text));
}

Point PainterSurface::textSize(std::string_view text) const
{
    const QFontMetricsF metrics(m_painter.font());
    return {metrics.horizontalAdvance(qtText(text)) * pixelX(), metrics.height() * pixelY()};
}

void PainterSurface::cells(std::span<const double> columnEdges, std::span<const double> rowEdges,
                           const RowColours& rowColours)
{
    const double ratio = m_painter.device()->devicePixelRatioF();
    const auto inPixels = [](std::span<const double> edges, double origin, double unit) {
        std::vector<double> pixels(edges.size());
        std::transform(edges.begin(), edges.end(), pixels.begin(),
                       [=](double edge) { return (edge - origin) / unit; });
        return pixels;
    };
    const std::vector<double> x = inPixels(columnEdges, scale().left, pixelX());
    const std::vector<double> y = inPixels(rowEdges, scale().top, pixelY());

    // The device pixels that the cells cover, each painted once: sharp at any ratio.
    const auto device = [ratio](double edge, double size) {
        return static_cast<int>(std::lround(std::clamp(edge, 0.0, size) * ratio));
    };
    const int left = device(x.front(), m_size.width());
    const int top = device(y.front(), m_size.height());
    const int width = device(x.back(), m_size.width()) - left;
    const int height = device(y.back(), m_size.height()) - top;
    if (width <= 0 || height <= 0)
        return;
    const std::vector<int> columns = cellOfPixel(left, width, ratio, x);
    const std::vector<int> rows = cellOfPixel(top, height, ratio, y);

    std::vector<Colour> colours(columnEdges.size() - 1);
    QImage image(width, height, QImage::Format_RGB32);
    for (int line = 0; line < height; ++line) {
        auto* pixels = reinterpret_cast<QRgb*>(image.scanLine(line));
        const int row = rows[static_cast<std::size_t>(line)];
        if (line > 0 && row == rows[static_cast<std::size_t>(line - 1)]) {
            std::copy_n(reinterpret_cast<const QRgb*>(image.constScanLine(line - 1)), width,
                        pixels);
            continue;
        }
        if (row < 0) {
            std::fill_n(pixels, width, qRgb(255, 255, 255));
            continue;
        }
        rowColours(static_cast<std::size_t>(row), colours);
        for (int i = 0; i < width; ++i) {
            const int column = columns[static_cast<std::size_t>(i)];
            const Colour colour = column < 0 ? kWhite : colours[static_cast<std::size_t>(column)];
            pixels[i] =
                qRgb(static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
                     static_cast<int>((colour >> 16) & 0xFF));
        }
    }
    image.setDevicePixelRatio(ratio);
    m_painter.drawImage(QPointF(left / ratio, top / ratio), image);
}

} // namespace orva
