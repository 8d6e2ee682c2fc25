#include "app/forms/status_form.h"

#include <cmath>

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(AreaFigures, SilentReceiversDoNotCount)
{
    constexpr float kSilence = -INFINITY;
    const auto some = areaFigures(std::vector<float>{90, kSilence, 96, 93});
    ASSERT_TRUE(some);
    EXPECT_DOUBLE_EQ(some->mean, 93);
    EXPECT_DOUBLE_EQ(some->spread, 6);
    EXPECT_FALSE(areaFigures(std::vector<float>{kSilence}));
    const std::optional<AreaFigures> areas[] = {AreaFigures{90, 1}, std::nullopt,
                                                AreaFigures{96, 2}};
    EXPECT_EQ(audienceMean(areas), 93);
    EXPECT_FALSE(audienceMean(std::span(areas).subspan(1, 1)));
}

TEST(StatusTexts, SayHowTheArrayHangsAndWhatIsWrong)
{
    struct Case {
        const char* what;
        std::int16_t system;
        std::int16_t boxes;
        std::int16_t bass;
        bool flown;
        std::int16_t tenths; ///< of the frame, positive = down
        float height;
        const char* tilt;
        const char* edge;
        bool wrong;
        bool overloaded;
    };
    const Case cases[] = {
        {"down", 0, 1, 0, true, 14, 7.5F, "top box 1.4° down", "above", false, false},
        {"up", 0, 1, 0, true, -14, 7.5F, "top box 1.4° up", "above", false, false},
        {"level", 0, 1, 0, true, 0, 7.5F, "top box level", "above", false, false},
        {"into the floor", 0, 12, 0, true, 0, 1, "top box level", "below", true, false},
        {"a stack", 0, 2, 0, false, 30, 0, "lowest box 3° down", "0.00 m above", false, false},
        {"16 and 6 of the compact system", 1, 16, 6, true, 0, 12, "top box level", "above", true,
         true}};
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        Project project = newProject(test.system);
        LineArray& array = project.array;
        LineArray::Positions types{};
        for (std::size_t i = 0; i < static_cast<std::size_t>(test.bass); ++i)
            types[i] = array.system().TypeCodeBass;
        LineArray::Positions angles{};
        angles[0] = test.tenths;
        array.GBSetNumSpeakers(test.boxes);
        array.GBSetNumBass(test.bass);
        array.GBSetAllType(types);
        array.GBSetAllAngle(angles);
        array.GBSetAngleOrPin(false);
        array.GBSetMounting(test.flown);
        array.GBSetCradleCoord({1, test.height});
        array.GFACalcCOM();
        const StatusTexts texts = statusTexts({project,
                                               true,
                                               98.26F,
                                               true,
                                               {AreaFigures{101.2, 3.4}, std::nullopt},
                                               21,
                                               60,
                                               true,
                                               {},
                                               ""});
        EXPECT_EQ(texts.foh, "FOH: 98.3 dB(A)");
        EXPECT_EQ(texts.spread, "Mean (spread): 101.2 (3.4)  silent dB");
        EXPECT_EQ(texts.tilt, test.tilt);
        EXPECT_NE(texts.weight.find(test.edge), std::string::npos) << texts.weight;
        EXPECT_EQ(texts.wrong, test.wrong) << texts.weight;
        EXPECT_EQ(texts.overload.has_value(), test.overloaded);
        EXPECT_EQ(texts.data, "21 °C, 60 %, data modelled");
    }
    const Project project = newProject(kStandardSystem);
    const StatusTexts other = statusTexts(
        {project, false, {}, false, {}, 21, 60, false, {Language::German, false}, "other.xhn"});
    EXPECT_EQ(other.data, "69.8 °F, 60 %, Daten: other.xhn");
    EXPECT_EQ(other.weight, "Setup ungültig");
    EXPECT_TRUE(other.wrong && other.foh.empty() && other.tilt.empty() && !other.overload);
}

} // namespace
} // namespace orva
