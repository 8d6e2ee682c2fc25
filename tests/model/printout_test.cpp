#include "model/line_array.h"
#include "model/project.h"

#include <algorithm>
#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

struct Rig {
    std::int16_t system = kStandardSystem;
    std::vector<std::int16_t> types;
    bool flown = true;
    std::int16_t angle = 20;               // tenths of a degree
    std::vector<std::int16_t> splays = {}; // indices, top joint first; the rest 0
    bool pin = false;                      ///< `angle` is a pin, from 0
};

LineArray arrayOf(const Rig& rig)
{
    LineArray array;
    array.GBSetArrayType(rig.system);
    array.GBSetMounting(rig.flown);
    array.GBSetAngleOrPin(rig.pin);
    LineArray::Positions types{};
    LineArray::Positions angles{};
    std::copy(rig.splays.begin(), rig.splays.end(), angles.begin() + 1);
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

std::vector<std::int16_t> boxes(std::size_t bass, std::int16_t bassCode, std::size_t straight,
                                std::size_t others = 0, std::int16_t otherCode = 1)
{
    std::vector<std::int16_t> types(bass, bassCode);
    types.resize(bass + straight, 0);
    types.resize(bass + straight + others, otherCode);
    return types;
}

/// One line for each text, each ended by CR LF.
std::string lines(std::initializer_list<const char*> texts)
{
    std::string sheet;
    for (const char* text : texts)
        sheet += std::string(text) + "\r\n";
    return sheet;
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
        // 5 * 41 + 14 * 30.2 + 6 * 29.7 + 33 + 5 + 12 * 0.5; one straight box for one trapezoidal
        {"850 kg, allowed", {0, boxes(5, 2, 14, 6)}, "Total Weight          : 850kg \r\n", false},
        {"850.5 kg", {0, boxes(5, 2, 15, 5)}, "Total Weight          : 850.5kg \r\n", true},
        // 5 * 48 + 4 * 18.3 + 12 + 7 = 332.2; 18 * 18.3 + 12 + 14 = 350.9
        {"compact, heavy", {1, boxes(5, 1, 4)}, "Total Weight          : 332.2kg \r\n", false},
        {"compact, too heavy", {1, boxes(0, 1, 18)}, "Total Weight          : 350.9kg \r\n", true},
        // 6 * 48 + 3 * 18.3 + 5 + 2; a tenth box, of no known kind, adds half a kilogram of cable
        {"compact stack, heavy",
         {1, boxes(6, 1, 3), false},
         "Total Weight          : 349.9kg \r\n\r\n",
         false},
        {"compact stack, too heavy",
         {1, boxes(6, 1, 3, 1, 9), false},
         "Total Weight          : 350.4kg \r\n\r\n",
         true}};
    for (const auto& [what, rig, total, warns] : cases) {
        SCOPED_TRACE(what);
        const std::string sheet = arrayOf(rig).GSGetPrintout({});
        EXPECT_NE(sheet.find(total), std::string::npos) << sheet;
        const std::string limit = rig.system == kStandardSystem ? "850" : "350";
        EXPECT_EQ(
            sheet.find("!! -Warning- !!  This arrangement exceeds design specifications.  Max "
                       "allowable weight is: " +
                       limit + "kg \r\n") != std::string::npos,
            warns);
        EXPECT_EQ(sheet.find('\n' + std::string(67, '!') + "\r\n") != std::string::npos, warns)
            << sheet;
    }
}

TEST(Printout, WholeSheets)
{
    // Weights and height by hand from the dimensions; the pin is the one whose angle comes closest.
    const char* const strap =
        "This will require a strap or chainhoist between the upper and lower Rigging Frame "
        "if you want to pick the cluster on the lower Rigging Frame with a second motor!";
    EXPECT_EQ(arrayOf({0, {2, 0, 1, 1}, true, -25, {1, 2, 4}}).GSGetPrintout({}),
              lines({"Note: You are using the cluster in an uptilt arrangement!",
                     strap,
                     "",
                     "Pick Point position : x:1   y: 7.5m\tPin Point : 3",
                     "Cradle Angle              : 2.5°",
                     "Straight Weight          : 30.2kg ",
                     "Trapezoidal Weight : 59.4kg ",
                     "Bass Weight               : 41kg ",
                     "Cable Weight              : 6kg ",
                     "Rigging Frame Weight : 33kg",
                     "Total Weight          : 169.6kg ",
                     "Height : 1.37m",
                     "",
                     " Box 1\tVM 415 F Bass",
                     "\t\t            Angle : 1.5°",
                     " Box 2\tVM 412 S Straight",
                     "\t\t            Angle : 3°",
                     " Box 3\tVM 412 T Trapezoidal",
                     "\t\t            Angle : 6°",
                     " Box 4\tVM 412 T Trapezoidal"}));
    EXPECT_EQ(arrayOf({1, {1, 0, 0}, true, 6, {0, 5}, true}).GSGetPrintout({}),
              lines({"Pick Point position : x:1   y: 7.5m\tPin Point : 7",
                     "Cradle Angle             : -10.84°", "Compact Weight : 36.6kg ",
                     "Bass Weight         : 48kg ", "Cable Weight       : 5.5kg ",
                     "Rigging Frame Weight : 12kg", "Total Weight          : 102.1kg ",
                     "Height : 1.22m", "", " Box 1\tVM 415 C Bass", "\t\t            Angle : 0°",
                     " Box 2\tVM 306 C", "\t\t            Angle : 7.5°", " Box 3\tVM 306 C"}));
    // A code of the compact system that only a file can hold: a box without a line of its weight.
    EXPECT_EQ(arrayOf({1, {0, -2}, false, 30, {4}}).GSGetPrintout({}),
              lines({"Pick Point position : x:1   y: 7.5m\tPin Point : 3",
                     "Cradle Angle             : 3°", "Compact Weight : 18.3kg ",
                     "Bass Weight         : 0kg ", "Cable Weight       : 5.5kg ",
                     "Total Weight          : 42.1kg ", "", "Height : 0.59m", "",
                     " Box 2\tVM 306 C", "\t\t            Angle : 6°", " Box 1\tVM 306 C"}));
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
    const std::string flown = arrayOf({0, {0, 9, 1}, true, 20, {1, 2}}).GSGetPrintout({});
    EXPECT_EQ(flown.substr(flown.find(" Box")), " Box 1\tVM 412 S Straight\r\n"
                                                "\t\t            Angle : 1.5°\r\n"
                                                "\t\t            Angle : 3°\r\n"
                                                " Box 3\tVM 412 T Trapezoidal\r\n");
    const std::string stacked = arrayOf({1, {0, 0, 1}, false, 20, {6, 3}}).GSGetPrintout({});
    EXPECT_EQ(stacked.substr(stacked.find(" Box")), " Box 3\tVM 415 C Bass\r\n"
                                                    "\t\t            Angle : 4.5°\r\n"
                                                    " Box 2\tVM 306 C\r\n"
                                                    "\t\t            Angle : 9°\r\n"
                                                    " Box 1\tVM 306 C\r\n");
}

} // namespace
} // namespace orva
