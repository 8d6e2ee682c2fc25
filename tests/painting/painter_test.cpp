#include "painting/paged_document.h"
#include "painting/painter_surface.h"
#include "painting/picture.h"

#include <QImage>
#include <array>

#include <gtest/gtest.h>

namespace orva {
namespace {

constexpr Colour kRed = 0x0000FF;
constexpr Colour kBlue = 0xFF0000;

TEST(Painting, PicturesArePngOfTheWantedSize)
{
    const std::string png = pngPicture(320, 180, [](DrawingSurface& surface) {
        surface.setScale({0, 0, 32, 18});
        surface.fillRectangle({16, 0}, {32, 18}, kRed);
        surface.print({1, 1}, "Höhe 5°");
    });
    const QImage image = QImage::fromData(QByteArray::fromStdString(png));
    ASSERT_EQ(image.size(), QSize(320, 180));
    EXPECT_EQ(image.pixel(300, 90), qRgb(255, 0, 0));
    EXPECT_EQ(image.pixel(150, 170), qRgb(255, 255, 255));
}

TEST(Painting, PagesFillTheirSheetAtAnyResolution)
{
    const PagedDocument document{"", {}, 1, [](QPainter& painter, int, QSizeF size) {
                                     painter.fillRect(QRectF({}, size), Qt::red);
                                 }};
    for (const int dotsPerInch : {72, 144}) {
        const int dots = dotsPerInch / 72;
        QImage sheet(QSize(200, 300) * dots, QImage::Format_RGB32);
        sheet.fill(Qt::white);
        QPainter painter(&sheet);
        paintPage(document, 0, painter, dotsPerInch, {200, 300});
        painter.end();
        const QRect painted(QPoint(36, 36) * dots, QSize(128, 228) * dots);
        for (const auto& [at, colour] :
             {std::pair(painted.topLeft(), Qt::red), std::pair(painted.bottomRight(), Qt::red),
              std::pair(painted.topLeft() - QPoint(1, 1), Qt::white),
              std::pair(painted.bottomRight() + QPoint(1, 1), Qt::white)})
            EXPECT_EQ(sheet.pixelColor(at), QColor(colour)) << dotsPerInch << " " << at.x();
    }
}

TEST(Painting, CellsAreSharpAtAnyPixelRatio)
{
    for (const double ratio : {1.0, 1.5, 2.0}) {
        QImage image(QSize(100, 60) * ratio, QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::green);
        QPainter painter(&image);
        PainterSurface surface(painter, QSizeF(100, 60));
        surface.setScale({0, 0, 10, 6});
        // edges that are not evenly spaced, within the surface and beyond its right edge
        surface.cells(std::array{2.0, 5.0, 12.0}, std::array{1.0, 2.0, 5.0},
                      [](std::size_t row, std::span<Colour> to) {
                          to[0] = row == 0 ? kRed : kBlack;
                          to[1] = row == 0 ? kBlue : kRed;
                      });
        painter.end();
        const auto at = [&](double x, double y) {
            return image.pixel(static_cast<int>(x * 10 * ratio), static_cast<int>(y * 10 * ratio));
        };
        EXPECT_EQ(at(1.9, 1.5), qRgb(0, 255, 0)) << ratio;
        EXPECT_EQ(at(2.1, 1.1), qRgb(255, 0, 0)) << ratio;
        EXPECT_EQ(at(4.9, 1.9), qRgb(255, 0, 0)) << ratio;
        EXPECT_EQ(at(5.1, 1.1), qRgb(0, 0, 255)) << ratio;
        EXPECT_EQ(at(4.9, 4.9), qRgb(0, 0, 0)) << ratio;
        EXPECT_EQ(at(9.9, 2.1), qRgb(255, 0, 0)) << ratio;
        EXPECT_EQ(at(5, 5.2), qRgb(0, 255, 0)) << ratio;
    }
}

} // namespace
} // namespace orva
