#pragma once

#include "drawing/drawing_surface.h"

#include <QFont>
#include <QPainter>
#include <functional>
#include <string>
#include <vector>

namespace orva {

/// Writes and draws down a page, in points.
class PageWriter {
public:
    static constexpr double kTextPt = 8.5;
    static constexpr double kSmallPt = 7.5;
    static constexpr double kLine = 1.3; ///< height of a line over that of its letters
    static constexpr double kGap = 10;
    using Row = std::vector<std::string>; ///< UTF-8

    PageWriter(QPainter& painter, QRectF place) : m_painter(painter), m_place(place) {}

    /// What is left of the page, and how high that is.
    QRectF place() const { return m_place; }
    double left() const { return m_place.height(); }
    void moveTo(const QRectF& place) { m_place = place; }
    void skip(double points) { m_place.setTop(m_place.top() + points); }

    void setFont(double points, bool bold = false, const char* family = "DejaVu Sans");
    /// Without moving on.
    void text(const QRectF& where, const QString& text, int flags, QColor colour = Qt::black);
    void line(const QString& words, QColor colour = Qt::black);
    /// As many lines as it takes.
    void paragraph(const QString& words, QColor colour = Qt::black);
    void head(const QString& words);
    /// Figures to the right; each column is as wide as its widest text.
    void table(const Row& heads, const std::vector<Row>& rows, double points = kTextPt);
    /// A drawing so high, over the whole width.
    void drawing(double height, const std::function<void(DrawingSurface&)>& draw);

private:
    QFont fineFont() const;
    double widthOf(const QString& text) const;

    QPainter& m_painter;
    QRectF m_place;
    QFont m_font;
    double m_size = kTextPt;
};

} // namespace orva
