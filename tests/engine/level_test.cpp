#include "engine/levels.h"
#include "engine/line_spl.h"
#include "engine/literal_kernel.h"
#include "model/project.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace orva {
namespace {

constexpr double kDb = 1e-4; // constants of the formulas are 32-bit floats

double levelOf(const Directivity& directivity, std::vector<Source> sources, Point receiver,
               int band)
{
    float power = 0;
    LiteralKernel(directivity, airAt(21))
        .bandPowers(sources, std::array{receiver}, {band, band}, std::array{&power});
    return levelOfPower(power);
}

TEST(LiteralKernel, OneBoxLosesByDistanceAirAndDirection)
{
    Directivity directivity;
    for (std::size_t step = 0; step < kAngleSteps; ++step)
        directivity.DirMagnitude[10][step] = static_cast<float>(step);
    const double air = bandConstants().AirAbsorption[10];
    const std::tuple<const char*, Source, Point, double> cases[] = {
        {"on axis at 10 m", {0, 0, 0}, {10, 0}, -20 + 10 * air},
        {"90° below", {0, 5, 0}, {0, 4}, air - 18},
        {"90° above", {0, 5, 0}, {0, 6}, air - 54},
        {"aimed at it", {0, 5, -45}, {1, 4}, -10 * std::log10(2.0) + std::sqrt(2.0) * air},
        {"turned round", {0, 0, 180}, {1, 0}, air - 36},
        {"nearer than 0.1 m", {0, 0, 0}, {0.01, 0}, 20 + 0.1 * air},
        {"between two steps", {0, 0, -2.5}, {1, 0}, air - 35.5}, // half-way from step 71 to 0
        {"a whole turn more",
         {0, 0, 360 - 45},
         {1, -1},
         -10 * std::log10(2.0) + std::sqrt(2.0) * air},
        {"nine turns back",
         {0, 0, -3240 - 45},
         {1, -1},
         -10 * std::log10(2.0) + std::sqrt(2.0) * air}};
    for (const auto& [what, source, receiver, level] : cases)
        EXPECT_NEAR(levelOf(directivity, {source}, receiver, 10), level, kDb) << what;
}

TEST(LiteralKernel, BoxesAddAsPressuresWithTheirPhases)
{
    const Directivity omni;
    const double wavelength = airAt(21).SpeedOfSound / bandConstants().BandCentre[7];
    const double one = levelOf(omni, {{0, 0, 0}}, {10, 0}, 7);
    EXPECT_NEAR(levelOf(omni, {{0, 0, 0}, {0, 0, 0}}, {10, 0}, 7), one + 20 * std::log10(2.0), kDb);
    // half a wavelength nearer: what is left is the difference of the distances
    const double left = 20 * std::log10(1 / (10 - wavelength / 2) - 1.0 / 10);
    EXPECT_NEAR(levelOf(omni, {{0, 0, 0}, {wavelength / 2, 0, 0}}, {10, 0}, 7), left, 0.1);

    // A box whose phase is later by a quarter turn, and nearer by a quarter wavelength, adds fully:
    // the phase is that of e^(+j omega t), a delay makes it smaller.
    Directivity late;
    late.DirPhase[7].fill(0);
    late.DirPhase[7][0] = 270;
    late.DirPhase[7][1] = 270;
    late.DirPhase[7][71] = 270;
    const double both = levelOf(late, {{wavelength / 4, 0, 0}, {0, 0, 180}}, {10, 0}, 7);
    const double full = 20 * std::log10(1.0 / 10 + 1 / (10 - wavelength / 4));
    EXPECT_NEAR(both, full + 10 * bandConstants().AirAbsorption[7], 0.01);
}

TEST(LineSPL, PlacesReceiversFromAngleAndLengthAndReportsExtremes)
{
    const Project project = newProject(kStandardSystem);
    const SpeakerData data = SelectSpeakerData({}, kStandardSystem);
    const LiteralKernel kernel(data.directivity, airAt(21));
    const LevelChoice choice{{10, 10}, LevelField::Continuous, false};
    const auto line = [&](const Segment& along, int n, int threads) {
        return LineSPL(kernel, data.BandLevel, project.array, along, choice, n, threads);
    };
    // the end point is not read; 5 m upwards in steps of length / n
    const std::vector<float> rising = line({20, 1, 99, 99, 90, 5}, 5, 1);
    ASSERT_EQ(rising.size(), 7U);
    EXPECT_NEAR(rising[3], line({20, 4, 0, 0, 0, 0}, 1, 1)[0], 1e-4);
    EXPECT_EQ(rising[5], *std::max_element(rising.begin(), rising.begin() + 5));
    EXPECT_EQ(rising[6], *std::min_element(rising.begin(), rising.begin() + 5));

    const std::vector<float> single = line(fohLine(project.room), 1, 1);
    EXPECT_EQ(single, std::vector<float>(3, single[0]));
    EXPECT_EQ(line({1, 1, 0, 0, 10, 30}, 2000, 1), line({1, 1, 0, 0, 10, 30}, 2000, 3));
}

TEST(LineSPL, BandsAddAsWeightedPowers)
{
    const Project project = newProject(kCompactSystem);
    const SpeakerData data = SelectSpeakerData({}, kCompactSystem);
    const LiteralKernel kernel(data.directivity, airAt(21));
    const auto level = [&](BandSpan bands, LevelField field, bool weighted) {
        return LineSPL(kernel, data.BandLevel, project.array, fohLine(project.room),
                       {bands, field, weighted}, 1)[0];
    };
    for (const LevelField field :
         {LevelField::Relative, LevelField::Continuous, LevelField::Peak}) {
        double power = 0;
        for (int b = 0; b < kBands; ++b)
            power += bandConstants().AWeightFactor[static_cast<std::size_t>(b)] *
                     std::pow(10, level({b, b}, field, false) / 10);
        EXPECT_NEAR(level({0, 21}, field, true), 10 * std::log10(power), 1e-3);
    }
    EXPECT_NEAR(level({4, 4}, LevelField::Peak, false),
                level({4, 4}, LevelField::Continuous, false) + 6, 1e-4);
}

TEST(LineSPL, BassBoxesDoNotRadiate)
{
    Project project = newProject(kStandardSystem);
    LineArray::Positions types = project.array.GIAGetAllType();
    types[3] = 2;
    types[4] = 77;
    project.array.GBSetAllType(types);
    EXPECT_EQ(radiatingSources(project.array).size(), 10U);
    types.fill(2);
    project.array.GBSetAllType(types);
    const SpeakerData data = SelectSpeakerData({}, kStandardSystem);
    const LiteralKernel kernel(data.directivity, airAt(21));
    const auto levels = LineSPL(kernel, data.BandLevel, project.array, project.room.area(1),
                                {{0, 21}, LevelField::Peak, true}, 4);
    EXPECT_EQ(levels, std::vector<float>(6, -std::numeric_limits<float>::infinity()));
}

} // namespace
} // namespace orva
