#include "drawing/sub_array_drawing.h"
#include "recording_surface.h"

#include <cmath>

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(SubArrayDrawing, EveryBoxStandsInItsPlace)
{
    struct Case {
        const char* what;
        std::array<float, 10> positions;
        float openingDeg;
        double width; ///< of the picture, metres
        double height;
    };
    const Case cases[] = {
        {"close together", {-5, -4, -3, -2, -1, 1, 2, 3, 4, 5}, 60, 11.5, 7},
        {"wide", {-9, -7, -5, -3, -1, 1, 3, 5, 7, 9}, 90, 2.1 * 9 + 1, 9 + 2},
        {"to the right", {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8}, 0, 2.1 * 8 + 1, 8 + 2},
        {"to the left, in any order", {2, 0, -9, -7, -5, -4, 1, -3, -2, -6}, 120, 2.1 * 9 + 1, 7},
        {"all on one side", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 45, 2.1 * 10 + 1, 10 + 2}};
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        SubArray subArray;
        subArray.SubPos = test.positions;
        subArray.openingAngleDeg = test.openingDeg;
        RecordingSurface surface(600, 300);
        DrawSubArray(surface, subArray, subArrayFigures(subArray, 344));
        EXPECT_NEAR(surface.scale().width, test.width, 1e-9);
        EXPECT_NEAR(surface.scale().height, test.height, 1e-9);
        EXPECT_NEAR(surface.scale().left, -test.width / 2, 1e-9); // its middle in the middle
        EXPECT_NEAR(surface.bottom(), 1, 1e-9);                   // the row a metre above the edge

        const auto real = surface.all("fill", kBlack);
        const auto seeming = surface.all("fill", kBlue);
        const auto numbers = surface.all("text", kWhite);
        ASSERT_EQ(real.size(), 10U);
        ASSERT_EQ(seeming.size(), 10U);
        ASSERT_EQ(numbers.size(), 20U);
        for (std::size_t i = 0; i < 10; ++i) {
            const double x = test.positions[i];
            const double behind = std::abs(x) * std::tan(test.openingDeg * 3.14159265 / 360);
            const auto expectBox = [&](const RecordingSurface::Call& box, double y) {
                EXPECT_NEAR(box.points[0].x, x - 0.55, 1e-6) << i; // boxes 1.1 m wide, 0.4 m deep
                EXPECT_NEAR(box.points[1].x, x + 0.55, 1e-6) << i;
                EXPECT_NEAR(box.points[0].y, y - 0.2, 0.006) << i; // figures to 1 cm
                EXPECT_NEAR(box.points[1].y, y + 0.2, 0.006) << i;
            };
            expectBox(real[i], 0);
            expectBox(seeming[i], -behind);
            for (const std::size_t text : {2 * i, 2 * i + 1}) {
                const Point size = surface.textSize(numbers[text].text);
                const RecordingSurface::Call& box = text == 2 * i ? real[i] : seeming[i];
                EXPECT_EQ(numbers[text].text, std::to_string(i + 1));
                EXPECT_NEAR(numbers[text].points[0].x + size.x / 2, x, 1e-6);
                EXPECT_NEAR(numbers[text].points[0].y + size.y / 2, box.points[0].y + 0.2, 1e-6);
            }
        }
    }
}

} // namespace
} // namespace orva
