#include "model/line_array.h"
#include "model/project.h"

#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

struct Rig {
    std::int16_t system = kStandardSystem;
    std::vector<std::int16_t> types;
    bool flown = true;
    std::int16_t angle = 20; // tenths of a degree
    std::int16_t splay = 0;
};

LineArray arrayOf(const Rig& rig)
{
    LineArray array;
    array.GBSetArrayType(rig.system);
    array.GBSetMounting(rig.flown);
    LineArray::Positions types{};
    LineArray::Positions angles{};
    angles.fill(rig.splay);
    angles[0] = rig.angle;
    const SystemRecord& system = systemRecord(rig.system);
    std::int16_t bass = 0;
    for (std::size_t i = 0; i < rig.types.size(); ++i) {
        types[i] = rig.types[i];
        bass = static_cast<std::int16_t>(bass + (types[i] == system.TypeCodeBass ? 1 : 0));
    }
    array.GBSetAllType(types);
    array.GBSetAllAngle(angles);
    array.GBSetNumBass(bass);
    array.GBSetNumSpeakers(static_cast<std::int16_t>(static_cast<int>(rig.types.size()) - bass));
    array.GBSetNumGerade(array.GIGetNumSpeakers());
    array.GBSetCradleCoord({1, 7.5F});
    array.GFACalcCOM();
    return array;
}

std::vector<std::int16_t> boxes(std::size_t bass, std::int16_t bassCode, std::size_t straight)
{
    std::vector<std::int16_t> types(bass, bassCode);
    types.resize(bass + straight, 0);
    return types;
}

TEST(Printout, TellsTheWeightAgainstTheLimit)
{
    const std::tuple<const char*, Rig, const char*, bool> cases[] = {
        {"12 boxes", {0, boxes(0, 2, 12)}, "Total Weight          : 403.4kg \r\n", false},
        {"851.3 kg", {0, boxes(2, 2, 24)}, "Total Weight          : 851.3kg \r\n", true},
        {"the same, stacked",
         {0, boxes(2, 2, 24), false},
         "Total Weight          : 818.3kg \r\n\r\n",
         false},
        {"compact", {1, boxes(0, 1, 8)}, "Total Weight          : 165.4kg \r\n", false},
        // 5 * 48 + 4 * 18.3 + 12 + 7 = 332.2; one bass box more is 380.7
        {"compact, heavy", {1, boxes(5, 1, 4)}, "Total Weight          : 332.2kg \r\n", false},
        {"compact, too heavy", {1, boxes(6, 1, 4)}, "Total Weight          : 380.7kg \r\n", true}};
    for (const auto& [what, rig, total, warns] : cases) {
        SCOPED_TRACE(what);
        const std::string sheet = arrayOf(rig).GSGetPrintout({});
        EXPECT_NE(sheet.find(total), std::string::npos) << sheet;
        EXPECT_EQ(sheet.find("!! -Warning- !!") != std::string::npos, warns);
        EXPECT_EQ(sheet.find('\n' + std::string(67, '!') + "\r\n") != std::string::npos, warns)
            << sheet;
    }
}

TEST(Printout, WarnsOfUptiltOnlyWhenFlown)
{
    const std::tuple<std::int16_t, bool, bool, const char*> cases[] = {
        {-20, true, true, ": 2°\r\n"},
        {20, true, false, ": -2°\r\n"},
        {20, false, false, ": 2°\r\n"},
        {0, true, false, ": 0°\r\n"}};
    for (const auto& [angle, flown, notes, cradle] : cases) {
        const std::string sheet = arrayOf({0, {0}, flown, angle}).GSGetPrintout({});
        EXPECT_EQ(sheet.rfind("Note: ", 0) == 0, notes) << sheet;
        EXPECT_NE(sheet.find(cradle), std::string::npos) << sheet;
    }
}

TEST(Printout, ListsTheTopBoxFirst)
{
    const std::string flown = arrayOf({0, {0, 9, 1}, true, 20, 1}).GSGetPrintout({});
    EXPECT_EQ(flown.substr(flown.find(" Box")), " Box 1\tVM 412 S Straight\r\n"
                                                "\t\t            Angle : 1.5°\r\n"
                                                "\t\t            Angle : 1.5°\r\n"
                                                " Box 3\tVM 412 T Trapezoidal\r\n");
    const std::string stacked = arrayOf({1, {0, 1}, false, 20, 3}).GSGetPrintout({});
    EXPECT_EQ(stacked.substr(stacked.find(" Box")), " Box 2\tVM 415 C Bass\r\n"
                                                    "\t\t            Angle : 4.5°\r\n"
                                                    " Box 1\tVM 306 C\r\n");
}

TEST(Printout, SpeaksTheUsersLanguageAndUnits)
{
    const std::string sheet =
        newProject(kStandardSystem).array.GSGetPrintout({Language::German, false});
    for (const char* part :
         {"x:3.28   y: 24.61ft\tPin : 5\r\n", "Gewicht gerade         : 181.2kg \r\n",
          "Höhe : 10.32ft\r\n\r\n", " Box 4\tVM 412 T trapezförmig\r\n"})
        EXPECT_NE(sheet.find(part), std::string::npos) << part;
}

} // namespace
} // namespace orva
