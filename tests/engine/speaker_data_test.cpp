#include "engine/speaker_data_text.h"

#include <functional>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

std::string header()
{
    std::string lines;
    for (int i = 0; i < 10; ++i)
        lines += "\"Frequency\",125\r\n"; // passed over whatever it holds
    return lines;
}

/// One band whose four angle lines hold the given values.
std::string band(int b, const std::string& values)
{
    const std::string above = "\"90\xB0\"," + values + "\r\n";
    const std::string below = "\"270\xB0\"," + values + "\r\n";
    return "\"Frequency\"," + std::to_string(kNominalHz[static_cast<std::size_t>(b)]) + "\r\n" +
           above + below + "\"PhaseData\"\r\n" + above + below;
}

std::string bands(int count, const std::string& values)
{
    std::string text = header();
    for (int b = 0; b < count; ++b)
        text += band(b, values);
    return text;
}

SpeakerDataReading read(const std::string& text, const Directivity& before = {})
{
    const auto reading = ReadSpeakerDataText(text, before, "x.xhn");
    EXPECT_TRUE(reading) << reading.error().text();
    return *reading;
}

TEST(SpeakerData, FillsEveryStepOfBothSides)
{
    std::string values = "0";
    for (int i = 1; i <= 36; ++i)
        values += "," + std::to_string(i);
    const SpeakerDataReading reading = read(bands(22, values));
    EXPECT_FALSE(reading.failed());
    for (const auto& table : {reading.directivity.DirMagnitude, reading.directivity.DirPhase})
        for (const auto& row : table)
            for (std::size_t step = 0; step < kAngleSteps; ++step)
                EXPECT_EQ(row[step], step <= 36 ? step : 72 - step);
}

TEST(SpeakerData, ReadsValuesAsTheyStand)
{
    const std::tuple<const char*, std::size_t, float, float> cases[] = {
        // values of each line, step, magnitude and phase stored there
        {"1,2,3", 0, 1, 1},  // the line below comes last
        {"1,2,3", 71, 2, 2}, // the line above
        {"1,2,3", 70, 0, 0}, // its last value is not stored
        {"1,2,3", 2, 3, 3},  // below it is
        {"0,-10,0", 1, -10, 350},
        {"0,-290", 1, -290, 70},
        {"0, 1.5dB,x", 1, 1.5F, 1.5F},
        {"7", 0, 7, 7}};
    for (const auto& [values, step, magnitude, phase] : cases) {
        const SpeakerDataReading reading = read(bands(22, values));
        EXPECT_EQ(reading.directivity.DirMagnitude[4][step], magnitude) << values << ' ' << step;
        EXPECT_EQ(reading.directivity.DirPhase[4][step], phase) << values << ' ' << step;
    }
    const std::string turned = header() + "\"Frequency\",100\n\"90\xB0\",0\n\"270\xB0\",0\n"
                                          "\"PhaseData\"\n\"90\xB0\",0\n\"270\xB0\",0,-370\n";
    EXPECT_EQ(read(turned).directivity.DirPhase[0][1], -10); // 360 is added once
    std::string many = "1";
    for (int i = 0; i < 200; ++i)
        many += ",2";
    const SpeakerDataReading reading = read(bands(22, many));
    EXPECT_EQ(reading.directivity.DirMagnitude[0][0], 1); // values beyond the steps are dropped
    EXPECT_EQ(reading.directivity.DirMagnitude[0][36], 2);
}

TEST(SpeakerData, PassesOverWhatIsNotExpectedNext)
{
    const std::string sound = band(0, "5,6,7");
    const std::string noise =
        "comment\r\n\r\n\"45\xB0\",9,9\r\n\"frequency\",7\r\n\"Frequency\" ,7\r\n\"90\",9\r\n";
    std::string text = header() + noise;
    for (std::size_t at = 0; at < sound.size();) { // noise between all lines
        const std::size_t end = sound.find('\n', at) + 1;
        text += sound.substr(at, end - at) + noise;
        at = end;
    }
    const SpeakerDataReading noisy = read(text);
    EXPECT_EQ(noisy.bands, 1);
    EXPECT_EQ(noisy.directivity, read(header() + sound).directivity);

    // 190° holds the text 90° and is taken where it stands first
    const SpeakerDataReading early =
        read(header() + "\"Frequency\",100\n\"190\xB0\",8,9\n" + sound);
    EXPECT_EQ(early.directivity.DirMagnitude[0][0], 5);
    EXPECT_EQ(early.directivity.DirMagnitude[0][71], 0);
}

TEST(SpeakerData, StopsAndKeepsWhatItHas)
{
    Directivity before;
    before.DirMagnitude[21][3] = 42;
    const std::string whole = bands(22, "1,2,3,4,5");
    const std::string lastLine = whole.substr(whole.rfind("\"270"));
    const std::tuple<const char*, std::string, int> cases[] = {
        {"empty", "", 0},
        {"header only", header(), 0},
        {"first frequency wrong", header() + band(1, "1,2"), 0},
        {"21 bands", bands(21, "1,2,3,4,5"), 21},
        {"last line missing", whole.substr(0, whole.size() - lastLine.size()), 22},
        {"frequency with text", bands(0, "") + "\"Frequency\", 100 Hz,x\r\n", 1},
        {"frequency 100,5", header() + "\"Frequency\",100,5\r\n", 1},
        {"frequency 100.5", header() + "\"Frequency\",100.5\r\n", 0}};
    for (const auto& [what, text, found] : cases) {
        SCOPED_TRACE(what);
        const SpeakerDataReading reading = read(text, before);
        EXPECT_EQ(reading.bands, found);
        EXPECT_EQ(reading.failed(), found < 22);
        if (found == 0) {
            EXPECT_EQ(reading.directivity, before);
        }
        if (found == 21) {
            EXPECT_EQ(reading.directivity.DirMagnitude[20][3], 4);
            EXPECT_EQ(reading.directivity.DirMagnitude[21][3], 42);
        }
    }
    // nothing is read behind the last band
    EXPECT_EQ(read(whole + band(0, "9,9,9")).directivity, read(whole).directivity);
}

TEST(SpeakerData, CountsWhatItReads)
{
    std::string all = "1";
    for (int i = 1; i < 37; ++i)
        all += "," + std::to_string(i);
    std::string half = bands(22, all); // phases of the last band below the axis are no numbers
    half.replace(half.rfind(all), all.size(), "x");
    const std::tuple<const char*, std::string, int, bool, std::string> cases[] = {
        {"all", bands(22, all), 1606, false, ""},
        {"more than are stored", bands(22, all + ",1,2,3"), 1606, false, ""},
        {"one in a line", bands(22, "3"), 22, false, "22 of 1,606 values were read"},
        {"four", bands(22, "3,4,5,6"), 154, false, "154 of 1,606 values were read"},
        {"some phases", half, 1569, false, "1,569 of 1,606 values were read"},
        {"no number", bands(22, "abc,,-"), 0, true, "0 of 1,606 values were read"},
        {"21 bands", bands(21, all), 1533, true, "21 of 22 bands found"}};
    for (const auto& [what, text, values, failed, shortfall] : cases) {
        SCOPED_TRACE(what);
        const SpeakerDataReading reading = read(text);
        EXPECT_EQ(reading.values, values);
        EXPECT_EQ(reading.failed(), failed);
        EXPECT_EQ(reading.shortfall().value_or("").text(), shortfall);
    }
}

TEST(SpeakerData, KnowsItsEncodings)
{
    const std::string windows = bands(22, "1,2,3");
    std::string utf8;
    for (const char c : windows)
        utf8 += c == '\xB0' ? std::string("\xC2\xB0") : std::string(1, c);
    for (const std::string& text : {utf8, "\xEF\xBB\xBF" + utf8, "\xEF\xBB\xBF" + windows})
        EXPECT_EQ(read(text).directivity, read(windows).directivity);
    for (const char* mark : {"\xFF\xFE", "\xFE\xFF"}) {
        const auto refused = ReadSpeakerDataText(mark + windows, {}, "x.xhn");
        ASSERT_FALSE(refused);
        EXPECT_NE(refused.error().what.text().find("UTF-16"), std::string::npos);
    }
}

TEST(SpeakerData, RefusesWhatIsTooLarge)
{
    const std::string texts[] = {header() + std::string((1U << 20) + 1, 'x'),
                                 std::string((64U << 20) + 1, '\n'), bands(1, "1e39,2"),
                                 bands(1, "1,-1e400,2"), bands(1, "1,-301,2")};
    for (const std::string& text : texts)
        EXPECT_FALSE(ReadSpeakerDataText(text, {}, "x.xhn"));
    EXPECT_EQ(ReadSpeakerDataText(bands(1, "1e39,2"), {}, "x.xhn").error().text(),
              "x.xhn: line 12: a value is too large");
}

TEST(SpeakerData, LookupsInterpolateRoundTheCircle)
{
    Directivity data;
    data.DirMagnitude[2][71] = 4;
    data.DirMagnitude[2][0] = 2;
    EXPECT_DOUBLE_EQ(DirMagnitudeAt(data, 2, 71.5), 3);
    EXPECT_DOUBLE_EQ(DirMagnitudeAt(data, 2, 72), 2);
    const std::tuple<float, float, double> phases[] = {
        {350, 10, 360}, {10, 350, 360}, {0, 180, 90}, {0, 181, 270.5}, {40, 80, 60}};
    for (const auto& [p0, p1, middle] : phases) {
        data.DirPhase[3][7] = p0;
        data.DirPhase[3][8] = p1;
        EXPECT_DOUBLE_EQ(DirPhaseAt(data, 3, 7.5), middle) << p0 << ' ' << p1;
    }
}

TEST(SpeakerData, SelectingASystemRestoresItsTablesAndLevels)
{
    SystemData data(2);
    data[0].DirMagnitude[0][0] = 1;
    data[1].DirMagnitude[0][0] = 2;
    const std::tuple<std::int16_t, float, double> cases[] = {
        {0, 1, 108.0}, {1, 2, 96.3}, {-1, 2, 96.3}};
    for (const auto& [system, magnitude, lowest] : cases) {
        const SpeakerData selected = SelectSpeakerData(data, system);
        EXPECT_EQ(selected.directivity.DirMagnitude[0][0], magnitude);
        EXPECT_EQ(selected.BandLevel[0].Continuous, lowest);
        EXPECT_EQ(selected.BandLevel[0].field(LevelField::Peak), lowest + 6);
        double mean = 0;
        for (const BandReference& level : selected.BandLevel)
            mean += level.Relative / kBands;
        EXPECT_NEAR(mean, 0, 1e-5); // the mean is rounded to 32 bits
    }
}

} // namespace
} // namespace orva
