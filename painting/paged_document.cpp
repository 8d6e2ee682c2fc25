#include "painting/paged_document.h"

#include "painting/picture.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPdfWriter>

namespace orva {

void paintPage(const PagedDocument& document, int page, QPainter& painter, double dotsPerInch,
               const QSizeF& sheet)
{
    constexpr double kPointsPerInch = 72;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(dotsPerInch / kPointsPerInch, dotsPerInch / kPointsPerInch);
    painter.translate(kPageMargin, kPageMargin);
    document.paint(painter, page, sheet - QSizeF(2 * kPageMargin, 2 * kPageMargin));
    painter.restore();
}

std::string pdfOf(const PagedDocument& document, QPageSize::PageSizeId paper)
{
    needApplication();
    constexpr int kDotsPerInch = 1200;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setTitle(QString::fromStdString(document.title));
        writer.setCreator("ORVA");
        writer.setResolution(kDotsPerInch);
        writer.setPageLayout(QPageLayout(QPageSize(paper), QPageLayout::Portrait, QMarginsF()));
        QPainter painter(&writer);
        for (int page = 0; page < document.pages; ++page) {
            if (page > 0)
                writer.newPage();
            paintPage(document, page, painter, kDotsPerInch,
                      QPageSize(paper).size(QPageSize::Point));
        }
    }
    return buffer.data().toStdString();
}

} // namespace orva
