#include "engine/acoustics.h"

#include "model/vector_math.h"

#include <cmath>

namespace orva {

namespace {

constexpr PerBand<double> kAWeightingDb = {
    -18.79892, -15.73524, -13.11982, -10.87145, -8.54747, -6.56915, -4.80184, -3.17618,
    -1.87296,  -0.82247,  0.00797,   0.59961,   0.98311,  1.19831,  1.26505,  1.18825,
    0.95075,   0.51746,   -0.16364,  -1.17028,  -2.56892, -4.40606};

/// dB per metre, negative.
float absorption(double f, double t, double humidityPercent)
{
    return static_cast<float>(-AtmosphericAbsorption(f, 1.0, t, 1013.0, humidityPercent));
}

BandConstants makeBandConstants()
{
    BandConstants constants{};
    for (std::size_t b = 0; b < kBands; ++b) {
        constants.BandCentre[b] =
            static_cast<float>(62.5 * std::exp2((static_cast<double>(b) + 2) / 3));
        constants.AirAbsorption[b] = absorption(constants.BandCentre[b], 20.0, kHumidityPercent);
        constants.AWeightFactor[b] = static_cast<float>(std::pow(10, kAWeightingDb[b] / 10));
    }
    return constants;
}

} // namespace

const BandConstants& bandConstants()
{
    static const BandConstants constants = makeBandConstants();
    return constants;
}

double SpeedOfSoundAt(float t)
{
    return (t / 546.3 + 1) * 331.4;
}

Air airAt(float t)
{
    const auto speed = static_cast<float>(SpeedOfSoundAt(t));
    return {speed, static_cast<float>(6.2831854820251465 / speed), bandConstants().AirAbsorption};
}

Air weatherAt(float t, float humidityPercent)
{
    Air air = airAt(t);
    for (std::size_t b = 0; b < kBands; ++b)
        air.Absorption[b] = absorption(bandConstants().BandCentre[b], t, humidityPercent);
    return air;
}

double AtmosphericAbsorption(double f, double d, double t, [[maybe_unused]] double p, double hr)
{
    const double kelvin = t + 273.15;
    const double triplePoint = 273.16;
    const double relative = kelvin / 293.15;
    const double pressure = 101300.0 / 101325.0;
    const double humidityExponent = -6.8346 * std::pow(triplePoint / kelvin, 1.261) + 4.6151;
    const double h = hr * std::pow(10, humidityExponent) / pressure;
    const double oxygen = pressure * (24 + 4.04e4 * h * (0.02 + h) / (0.391 + h));
    const double nitrogen = pressure * std::pow(relative, -0.5) *
                            (9 + 280 * h * std::exp(-4.170 * (std::pow(relative, -1.0 / 3) - 1)));
    const double classical = 1.84e-11 / pressure * std::sqrt(relative);
    const double relaxation = std::pow(relative, -2.5) *
                              (0.01275 * std::exp(-2239.1 / kelvin) / (oxygen + f * f / oxygen) +
                               0.1068 * std::exp(-3352.0 / kelvin) / (nitrogen + f * f / nitrogen));
    return 8.686 * f * f * (classical + relaxation) * d;
}

BandSpan BandRange(Averaging averaging, int selected)
{
    if (averaging == Averaging::Broadband)
        return {0, kBands - 1};
    const int reach = averaging == Averaging::Third ? 0 : averaging == Averaging::Octave ? 1 : 4;
    return {MaxInt(static_cast<std::int16_t>(selected - reach), 0),
            MinInt(static_cast<std::int16_t>(selected + reach), kBands - 1)};
}

PerBand<float> BandWeights(BandSpan bands, bool aWeighted)
{
    PerBand<float> weights{};
    for (int b = bands.from; b <= bands.to; ++b) {
        const auto band = static_cast<std::size_t>(b);
        weights[band] = aWeighted ? bandConstants().AWeightFactor[band] : 1.0F;
    }
    return weights;
}

} // namespace orva
