#include "engine/acoustics.h"

#include <cmath>
#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(Acoustics, BandsAndAir)
{
    const BandConstants& constants = bandConstants();
    const std::tuple<std::size_t, double> centres[] = {
        {0, 99.21}, {1, 125}, {7, 500}, {19, 8000}, {21, 12699.21}};
    for (const auto& [band, hz] : centres)
        EXPECT_NEAR(constants.BandCentre[band], hz, 0.005) << band;
    // published figures for 20 °C, 60 %
    EXPECT_NEAR(constants.AirAbsorption[10], -0.0048, 0.0001);
    EXPECT_NEAR(constants.AirAbsorption[19], -0.089, 0.0005);
    EXPECT_NEAR(constants.AirAbsorption[21], -0.209, 0.0005);
    // ISO 9613-1, table 1: 4 kHz, 10 °C, 70 % humidity: 32.8 dB/km
    EXPECT_NEAR(AtmosphericAbsorption(3981.07, 1000, 10, 1013.25, 70), 32.8, 0.5);
    EXPECT_NEAR(10 * std::log10(constants.AWeightFactor[0]), -18.79892, 1e-5);

    EXPECT_DOUBLE_EQ(SpeedOfSoundAt(0), 331.4);
    EXPECT_NEAR(airAt(21).SpeedOfSound, 344.139, 0.001);
    EXPECT_NEAR(airAt(21).WaveFactor, 0.018258, 0.000001);
    EXPECT_EQ(weatherAt(20, 60), airAt(20)) << "the given absorption is that of 20 °C and 60 %";
    EXPECT_EQ(airAt(35).Absorption, constants.AirAbsorption) << "whatever the temperature";
    // ISO 9613-2, table 2: 15 °C, 20 %, 8 kHz: 202 dB/km; 30 °C, 70 %: 59.3
    EXPECT_NEAR(weatherAt(15, 20).Absorption[19], -0.202, 0.002);
    EXPECT_NEAR(weatherAt(30, 70).Absorption[19], -0.0593, 0.001);
}

TEST(Acoustics, RangesAreCutAtTheEnds)
{
    const std::tuple<Averaging, int, int, int> cases[] = {
        {Averaging::Third, 5, 5, 5},          {Averaging::Octave, 0, 0, 1},
        {Averaging::Octave, 21, 20, 21},      {Averaging::Octave, 10, 9, 11},
        {Averaging::ThreeOctave, 20, 16, 21}, {Averaging::ThreeOctave, 2, 0, 6},
        {Averaging::Broadband, 7, 0, 21}};
    for (const auto& [averaging, selected, from, to] : cases) {
        const BandSpan span = BandRange(averaging, selected);
        EXPECT_EQ(span.from, from) << selected;
        EXPECT_EQ(span.to, to) << selected;
    }
    const PerBand<float> weights = BandWeights({3, 5}, false);
    for (std::size_t b = 0; b < kBands; ++b)
        EXPECT_EQ(weights[b], b >= 3 && b <= 5 ? 1 : 0);
    EXPECT_EQ(BandWeights({3, 5}, true)[4], bandConstants().AWeightFactor[4]);
}

} // namespace
} // namespace orva
