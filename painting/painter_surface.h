#pragma once

#include "drawing/drawing_surface.h"

#include <QColor>
#include <QPainter>

namespace orva {

QColor qtColour(Colour colour);

/// A surface on whatever a QPainter paints on: a widget or a picture of any device pixel ratio.
class PainterSurface final : public DrawingSurface {
public:
    /// `size` in device-independent pixels, above 0. The painter must outlive the surface.
    PainterSurface(QPainter& painter, QSizeF size);

    double pixelWidth() const override { return m_size.width(); }
    double pixelHeight() const override { return m_size.height(); }

    void clear() override;
    void line(Point from, Point to, Colour colour, double width) override;
    void polyline(std::span<const Point> points, Colour colour, double width) override;
    void rectangle(Point corner, Point opposite, Colour colour, double width) override;
    void fillRectangle(Point corner, Point opposite, Colour colour) override;
    void circle(Point centre, double radius, Colour colour, double width) override;
    void arc(Point centre, double radius, double fromDeg, double toDeg, Colour colour,
             double width) override;
    void setTextHeight(double pixels) override;
    double textHeight() const override { return m_textHeight; }
    void print(Point at, std::string_view text, Colour colour) override;
    Point textSize(std::string_view text) const override;
    void cells(std::span<const double> columnEdges, std::span<const double> rowEdges,
               const RowColours& rowColours) override;

private:
    QPointF pixel(Point point) const;
    QRectF pixelRect(Point corner, Point opposite) const;
    void usePen(Colour colour, double width);

    QPainter& m_painter;
    QSizeF m_size;
    double m_textHeight = 12;
};

} // namespace orva
