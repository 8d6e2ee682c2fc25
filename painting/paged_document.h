#pragma once

#include <QDateTime>
#include <QPageSize>
#include <QPainter>
#include <functional>
#include <string>

namespace orva {

/// What is printed page by page.
struct PagedDocument {
    std::string title;
    QDateTime created;
    int pages = 0;
    /// Paints a page (from 0) within a rectangle of points (1/72 inch), whose corner is the origin.
    std::function<void(QPainter& painter, int page, QSizeF size)> paint;
};

/// White round what is painted, points.
constexpr double kPageMargin = 36;

/// As PDF; texts stay texts, lines stay lines. Needs no display, like pngPicture(). The same
/// document gives the same bytes.
std::string pdfOf(const PagedDocument& document, QPageSize::PageSizeId paper);

/// Paints a page on a device of that many dots per inch whose origin is the corner of a sheet.
void paintPage(const PagedDocument& document, int page, QPainter& painter, double dotsPerInch,
               const QSizeF& sheet);

} // namespace orva
