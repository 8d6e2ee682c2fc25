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
