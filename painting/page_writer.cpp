#include "painting/page_writer.h"

#include "painting/painter_surface.h"

#include <algorithm>
#include <cmath>

namespace orva {

namespace {

constexpr double kHeadPt = 11;
constexpr int kLeftMiddle = static_cast<int>(Qt::AlignLeft) | static_cast<int>(Qt::AlignVCenter);
constexpr int kRightMiddle = static_cast<int>(Qt::AlignRight) | static_cast<int>(Qt::AlignVCenter);
/// Fonts have whole pixels: letters of any size are so many times as large, and scaled down.
constexpr int kFine = 20;

QString qt(const std::string& text)
{
    return QString::fromStdString(text);
}

} // namespace

QFont PageWriter::fineFont() const
{
    QFont font = m_font;
    font.setPixelSize(static_cast<int>(std::lround(m_size * kFine)));
    return font;
}

double PageWriter::widthOf(const QString& text) const
{
    return QFontMetricsF(fineFont()).horizontalAdvance(text) / kFine;
}

void PageWriter::setFont(double points, bool bold, const char* family)
{
    m_font = QFont(family);
    m_font.setBold(bold);
    m_size = points;
}

void PageWriter::text(const QRectF& where, const QString& text, int flags, QColor colour)
{
    m_painter.save();
    m_painter.scale(1.0 / kFine, 1.0 / kFine);
    m_painter.setFont(fineFont());
    m_painter.setPen(colour);
    m_painter.drawText(QRectF(where.topLeft() * kFine, where.size() * kFine),
                       flags | Qt::TextDontClip, text);
    m_painter.restore();
}

void PageWriter::line(const QString& words, QColor colour)
{
    const double height = m_size * kLine;
    text({m_place.left(), m_place.top(), m_place.width(), height}, words, kLeftMiddle, colour);
    skip(height);
}

void PageWriter::paragraph(const QString& words, QColor colour)
{
    QString rest;
    for (const QString& word : words.simplified().split(' ')) {
        const QString longer = rest.isEmpty() ? word : rest + ' ' + word;
        if (!rest.isEmpty() && widthOf(longer) > m_place.width()) {
            line(rest, colour);
            rest = word;
        } else {
            rest = longer;
        }
    }
    line(rest, colour);
}

void PageWriter::head(const QString& words)
{
    setFont(kHeadPt, true);
    line(words);
    m_painter.setPen(QPen(QColor(0x80, 0x80, 0x80), 0.5));
    m_painter.drawLine(m_place.topLeft(), m_place.topRight());
    skip(3);
}

void PageWriter::table(const Row& heads, const std::vector<Row>& rows, double points)
{
    std::vector<double> widths;
    setFont(points);
    for (std::size_t column = 0; column < heads.size(); ++column) {
        setFont(points, true);
        double widest = widthOf(qt(heads[column]));
        setFont(points);
        for (const Row& row : rows)
            widest = std::max(widest, widthOf(qt(row[column])));
        widths.push_back(widest + 8);
    }
    const auto write = [&](const Row& row, bool bold) {
        setFont(points, bold);
        double x = m_place.left();
        for (std::size_t column = 0; column < row.size(); ++column) {
            text({x, m_place.top(), widths[column] - 4, points * kLine}, qt(row[column]),
                 column == 0 ? kLeftMiddle : kRightMiddle);
            x += widths[column];
        }
        skip(points * kLine);
    };
    write(heads, true);
    for (const Row& row : rows)
        write(row, false);
}

void PageWriter::drawing(double height, const std::function<void(DrawingSurface&)>& draw)
{
    const QRectF where(m_place.left(), m_place.top(), m_place.width(), height);
    m_painter.save();
    m_painter.setClipRect(where);
    m_painter.translate(where.topLeft());
    PainterSurface surface(m_painter, where.size());
    surface.setTextHeight(kSmallPt);
    draw(surface);
    m_painter.restore();
    m_painter.setPen(QPen(QColor(0xA0, 0xA0, 0xA0), 0.4));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(where);
    skip(height + kGap / 2);
}

} // namespace orva
