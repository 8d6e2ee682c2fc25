#include "drawing/array_drawing.h"
#include "model/project.h"
#include "recording_surface.h"

#include <algorithm>
#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

constexpr double kMetres = 1e-5; // sums of 32-bit floats

/// `types` from the bottom up, all angles 0°, in angle mode.
LineArray stack(std::int16_t system, std::vector<std::int16_t> types)
{
    LineArray array = newProject(system).array;
    const auto bass = static_cast<std::int16_t>(
        std::count(types.begin(), types.end(), array.system().TypeCodeBass));
    array.GBSetNumBass(bass);
    array.GBSetNumSpeakers(static_cast<std::int16_t>(static_cast<int>(types.size()) - bass));
    types.resize(32);
    array.GBSetAllType(types);
    array.GBSetAllAngle(LineArray::Positions{});
    array.GBSetMounting(false);
    array.GBSetAngleOrPin(false);
    array.GFACalcCOM();
    return array;
}

/// A closed line through `corners` of a stack that stands at (1, 7.5), heights upwards.
void expectClosed(const RecordingSurface::Call& call, const std::vector<Point>& corners)
{
    ASSERT_EQ(call.points.size(), corners.size() + 1);
    for (std::size_t i = 0; i < call.points.size(); ++i) {
        const Point& corner = corners[i % corners.size()];
        EXPECT_NEAR(call.points[i].x, 1 + corner.x, kMetres) << i;
        EXPECT_NEAR(call.points[i].y, -7.5 - corner.y, kMetres) << i;
    }
}

TEST(ArrayDrawing, EveryCornerOfBoxesAndFrames)
{
    struct Case {
        const char* what;
        std::int16_t system;
        std::int16_t type;
        std::vector<Point> second; ///< the second box's corners: it stands on a mid/high box
        std::vector<Point> marks;
    };
    const std::vector<Point> horn = {{-0.11, 0.32}, {-0.11, 0.46}, {-0.153, 0.39}};
    const Case cases[] = {
        {"straight", 0, 0, {{0, 0.26}, {0, 0.52}, {-0.5975, 0.52}, {-0.5975, 0.26}}, horn},
        {"trapezoidal",
         0,
         1,
         {{0, 0.26}, {0, 0.52}, {-0.59656, 0.47312}, {-0.59565, 0.30688}},
         horn},
        {"bass", 0, 2, {{0, 0.26}, {0, 0.745355}, {-0.58453, 0.72002}, {-0.58453, 0.28395}}, {}},
        {"compact",
         1,
         0,
         {{0, 0.266}, {0, 0.532}, {-0.28, 0.495}, {-0.28, 0.303}},
         {{-0.08, 0.326}, {-0.08, 0.466}, {-0.13, 0.396}}},
        {"compact bass", 1, 1, {{0, 0.266}, {0, 0.804}, {-0.61, 0.804}, {-0.61, 0.266}}, {}}};
    const std::vector<Point> frames[] = {
        {{0.04309, -0.103}, {0.04309, -0.023}, {-0.95691, -0.023}, {-0.95691, -0.103}},
        {{0.013, -0.061}, {0.013, 0}, {-0.61, 0}, {-0.61, -0.061}}};
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        RecordingSurface surface(600, 300);
        surface.setScale({0, -10, 20, 10});
        DrawLineArray(surface, stack(test.system, {0, test.type}), {1, -7.5}, false, {});
        const auto closed = surface.all("polyline", kBlack);
        ASSERT_EQ(closed.size(), test.marks.empty() ? 4U : 5U); // frame; box and horn, twice
        expectClosed(closed[0], frames[test.system]);
        expectClosed(closed[3], test.second);
        if (!test.marks.empty())
            expectClosed(closed[4], test.marks);
        EXPECT_TRUE(surface.texts().empty());
        EXPECT_EQ(surface.all("circle", kBlack).size(), 1U) << "the centre of gravity alone";
    }
}

TEST(ArrayDrawing, EveryPinOfTheFrame)
{
    const std::tuple<std::int16_t, std::size_t, double, double, double> frames[] = {
        // system, pins, first pin, pitch, height
        {0, 11, -0.06882, -0.08, -0.083},
        {1, 14, -0.04, -0.04, -0.024}};
    for (const auto& [system, count, first, pitch, height] : frames) {
        RecordingSurface surface(600, 300);
        surface.setScale({0, -10, 20, 10});
        DrawLineArray(surface, stack(system, {0}), {1, -7.5}, true, {});
        const auto circles = surface.all("circle", kBlack);
        ASSERT_EQ(circles.size(), 1 + count);
        EXPECT_NEAR(circles[0].size, 0.05, 1e-6);
        for (std::size_t pin = 0; pin < count; ++pin) {
            const RecordingSurface::Call& circle = circles[1 + pin];
            EXPECT_NEAR(circle.size, 0.0125, 1e-6);
            EXPECT_NEAR(circle.points[0].x, 1 + first + pitch * static_cast<double>(pin), kMetres);
            EXPECT_NEAR(circle.points[0].y, -7.5 - height, kMetres);
        }
    }
}

TEST(ArrayDrawing, ABoxOfUnknownCodeIsLeftOut)
{
    RecordingSurface surface(600, 300);
    surface.setScale({0, -10, 20, 10});
    LineArray array = stack(kStandardSystem, {0, 9, 2});
    LineArray::Positions angles{};
    angles[1] = 2;
    angles[2] = 1;
    array.GBSetAllAngle(angles);
    DrawLineArray(surface, array, {1, -7.5}, true, {});
    auto texts = surface.texts();
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ(texts, (std::vector<std::string>{"Box 1", "Box 3   1.5°"}));
    EXPECT_EQ(surface.all("fill", kRed).size(), 2U);
    EXPECT_EQ(surface.all("polyline", kBlack).size(), 4U); // frame, box, horn, bass box

    surface.calls.clear();
    DrawLineArray(surface, stack(kStandardSystem, {9}), {1, -7.5}, true, {});
    EXPECT_TRUE(surface.texts().empty());
    EXPECT_EQ(surface.all("polyline", kBlack).size(), 1U);
}

TEST(ArrayDrawing, LabelsStayOnThePicture)
{
    const std::tuple<const char*, Point, bool> cases[] = {
        // what, where the array hangs, whether there is room for lines to the labels
        {"inside", {10, -7.5}, true},
        {"at the right edge", {19.95, -7.5}, false},
        {"beyond the right edge", {25, -7.5}, false},
        {"above the picture", {10, -15}, true},
        {"below the picture", {10, 3}, true}};
    LineArray array = newProject(kStandardSystem).array;
    array.GFACalcCOM();
    for (const auto& [what, origin, lines] : cases) {
        SCOPED_TRACE(what);
        RecordingSurface surface(600, 300);
        surface.setScale({0, -10, 20, 10});
        DrawLineArray(surface, array, origin, true, {});
        std::size_t labels = 0;
        for (const RecordingSurface::Call& call : surface.calls) {
            if (call.what != "text")
                continue;
            ++labels;
            const Point size = surface.textSize(call.text);
            EXPECT_GE(call.points[0].x, 0);
            EXPECT_LE(call.points[0].x + size.x, 20);
            EXPECT_GE(call.points[0].y, -10 - 1e-9);
            EXPECT_LE(call.points[0].y + size.y, 1e-9);
        }
        EXPECT_EQ(labels, 12U);
        EXPECT_EQ(surface.all("line", classicScheme()[Role::Leader]).size(), lines ? 12U : 0U);
        EXPECT_EQ(surface.textHeight(), 10) << "as before";
    }
}

} // namespace
} // namespace orva
