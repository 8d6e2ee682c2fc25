#include "model/project.h"
#include "model/room.h"

#include <limits>

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(Room, SettersRefuseAndThenChangeNothing)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    Room room = newProject(kStandardSystem).room;
    const Room before = room;
    EXPECT_FALSE(room.GBSetNumAreas(0));
    EXPECT_FALSE(room.GBSetNumAreas(4));
    for (const std::vector<float>& dims :
         {std::vector<float>{0, 8}, {30, -1}, {30}, {30, 8, 1}, {kNan, 8}, {30, kInfinity}})
        EXPECT_FALSE(room.GBSetRoomDims(dims));
    for (const std::vector<float>& point :
         {std::vector<float>{-0.1F, 0}, {0, -0.1F}, {0}, {0, kNan}}) {
        EXPECT_FALSE(room.GBSetPointOfRef(point));
        EXPECT_FALSE(room.GBSetFOH(point));
    }
    for (const std::vector<float>& area :
         {std::vector<float>(5), {0, 0, 1, 1, 0, -1}, {0, 0, 1, 1, kNan, 1}})
        EXPECT_FALSE(room.GBSetAudienceArea2(area));
    EXPECT_FALSE(room.GBSetProjectName(std::string(51, 'x')));
    EXPECT_FALSE(room.GBSetComment(std::string(201, 'x')));
    EXPECT_EQ(room, before);

    EXPECT_TRUE(room.GBSetPointOfRef(FloatPair{0, 0}));
    EXPECT_TRUE(room.GBSetAudienceArea2(SegmentFigures{-3, -1, 4, 2, 10, 0}));
    EXPECT_EQ(room.GFAGetAudienceAreaSelect(2), (SegmentFigures{-3, -1, 4, 2, 10, 0}));
    EXPECT_EQ(room.GFAGetAudienceAreaSelect(0), std::nullopt);
    EXPECT_EQ(room.GFAGetAudienceAreaSelect(4), std::nullopt);
}

TEST(Room, TextsArePaddedAndCountedInCharacters)
{
    Room room;
    EXPECT_TRUE(room.GBSetProjectName("Köln"));
    EXPECT_EQ(room.GSGetProjectName(), "Köln" + std::string(46, ' '));
    std::string umlauts;
    for (int i = 0; i < 50; ++i)
        umlauts += "ß";
    EXPECT_TRUE(room.GBSetAuthorName(umlauts));
    EXPECT_EQ(room.GSGetAuthorName(), umlauts);
    EXPECT_TRUE(room.GBSetComment("5 Ω"));
    EXPECT_EQ(room.GSGetComment().substr(0, 4), "5 ? ");
    EXPECT_EQ(room.GSGetComment().size(), 200U);
}

TEST(Room, WallsFollowThePointOfReference)
{
    Room room;
    ASSERT_TRUE(room.GBSetRoomDims(FloatPair{30, 8}) && room.GBSetPointOfRef(FloatPair{2, 1}));
    const SegmentFigures walls[] = {{},
                                    {-2, 7, 28, 7, 0, 30},
                                    {28, 7, 28, -1, -180, 8},
                                    {-2, -1, 28, -1, 0, 30},
                                    {-2, 7, -2, -1, -180, 8},
                                    {}};
    for (int number = 0; number <= 5; ++number)
        EXPECT_EQ(room.GFAGetRoomWalls(number), walls[number]) << number;
}

} // namespace
} // namespace orva
