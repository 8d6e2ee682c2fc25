#include "scene.h"

#include <cmath>

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(Candidates, CountInTheOrderOfAnOdometer)
{
    LineArray array = newProject(kCompactSystem).array; // seven joints of 0..6
    CandidateSet all(array, {1, 2}, false);
    EXPECT_EQ(all.NumConfigs(), 49U);
    for (std::uint64_t number = 0; number < 49; ++number) {
        const LineArray::Positions angles = all.anglesOf(number);
        EXPECT_EQ(angles[2], static_cast<int>(number % 7));
        EXPECT_EQ(angles[3], static_cast<int>(number / 7));
        EXPECT_EQ(all.numberOf(angles), number);
        EXPECT_EQ(angles[1], array.GIAGetAllAngle()[1]) << "outside the range";
    }
    const float height = array.GFAGetCradleCoord()[1];
    const CandidateSet free(array, {1, 2}, false, {true, {height - 1, height + 0.4F, height + 2}});
    EXPECT_EQ(free.numberOf(array.GIAGetAllAngle()) / (*free.NumConfigs() / 3), 1U)
        << "the height nearest to the present one";
    LineArray outside = array;
    LineArray::Positions angles = outside.GIAGetAllAngle();
    angles[1] = 9;
    angles[2] = -4;
    outside.GBSetAllAngle(angles);
    const CandidateSet nearest(outside, {0, 1}, true);
    EXPECT_EQ(nearest.boundsOf(0), (AngleBounds{6, 6})) << "none next to it: the nearest allowed";
    EXPECT_EQ(nearest.boundsOf(1), (AngleBounds{0, 0}));
    const CandidateSet near(array, {0, 6}, true); // present: 0 1 2 3 3 5 6
    EXPECT_EQ(near.NumConfigs(), 2U * 3 * 3 * 3 * 3 * 3 * 2);

    array.GBSetNumSpeakers(24);
    EXPECT_FALSE(CandidateSet(array, allJoints(array), false).NumConfigs()) << "7^23 > 2^64";
}

TEST(Measures, ByHand)
{
    const std::vector<float> levels = {100, 102, 101, 105};
    EXPECT_DOUBLE_EQ(RmsSmooth(levels, 0), std::sqrt((4.0 + 1 + 16) / 3));
    EXPECT_DOUBLE_EQ(RmsSmooth(levels, 1), std::sqrt((1.0 + 4 + 9) / 3));
    const FitLineTarget target = {2, 6, -0.5, 100};
    EXPECT_EQ(fitReference(target, 4), (std::vector<double>{100, 99, 98, 97}));
    EXPECT_DOUBLE_EQ(RmsToFitLine(levels, fitReference(target, 4)),
                     std::sqrt((0.0 + 9 + 9 + 64) / 4));
    const Segment segment = measuredSegment({{1, 2}, {}, 90, 10}, target);
    EXPECT_NEAR(segment.start.x, 1, 1e-6);
    EXPECT_NEAR(segment.start.y, 4, 1e-6);
    EXPECT_NEAR(segment.lengthM, 6, 1e-6);
}

TEST(AreaSpeakers, FromTheFirstBoxThatAimsToTheLast)
{
    Project project = newProject(kStandardSystem);
    const auto aiming = [&](const SegmentFigures& area) {
        EXPECT_TRUE(project.room.GBSetAudienceArea1(area));
        return GetAreaSpeakers(project.room, project.array, 1);
    };
    const SegmentFigures floor = {3, 0, 200, 0, 0, 197};
    const std::optional<JointRange> all = aiming(floor);
    ASSERT_TRUE(all);
    EXPECT_EQ(all->last, 10) << "the lowest box aims there";
    EXPECT_EQ(aiming({200, 0, 3, 0, 180, 197}), all) << "drawn from right to left";
    EXPECT_FALSE(aiming({-50, 0, -3, 0, 0, 47})) << "behind the array";
    EXPECT_EQ(aiming({10, 0, 10, 8, 90, 8})->first, 0) << "upright";
    EXPECT_FALSE(GetAreaSpeakers(project.room, project.array, 4));
    project.array.GBSetNumSpeakers(1);
    EXPECT_EQ(aiming({10, 0, 10, 8, 90, 8}), (JointRange{0, -1})) << "no joint";
}

} // namespace
} // namespace orva
