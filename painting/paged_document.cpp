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

namespace {

/// Puts `created` where the writer has put the present moment, which it cannot be told.
void setCreated(QByteArray& pdf, const QDateTime& created)
{
    const QByteArray before = "/CreationDate (D:";
    const qsizetype from = pdf.indexOf(before);
    const qsizetype end = pdf.indexOf(')', from);
    if (from < 0 || end < 0)
        return;
    const QByteArray date = before + created.toUTC().toString("yyyyMMddhhmmss").toLatin1() + "Z)";
    pdf.replace(from, end + 1 - from, date.leftJustified(end + 1 - from, ' '));
}

} // namespace

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
    QByteArray pdf = buffer.data();
    setCreated(pdf, document.created);
    return pdf.toStdString();
}

} // namespace orva
