#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace orva {

/// One-third-octave bands 100 Hz to 12.5 kHz.
constexpr int kBands = 22;

template<typename T>
using PerBand = std::array<T, kBands>;

/// Nominal frequencies in Hz, for labels and files.
/// Relative humidity at which air absorbs.
constexpr double kHumidityPercent = 60;

constexpr PerBand<int> kNominalHz = {100,  125,  160,  200,  250,   315,  400,  500,
                                     630,  800,  1000, 1250, 1600,  2000, 2500, 3150,
                                     4000, 5000, 6300, 8000, 10000, 12500};

/// What never changes of the bands.
struct BandConstants {
    PerBand<float> BandCentre;    ///< Hz, exact: 62.5 * 2^((b + 2) / 3)
    PerBand<float> AWeightFactor; ///< A-weighting as a factor of power
    PerBand<float> AirAbsorption; ///< dB per metre, negative, at 20 °C and 60 % humidity
};
const BandConstants& bandConstants();

/// What the weather sets.
struct Air {
    float SpeedOfSound = 0;      ///< m/s
    float WaveFactor = 0;        ///< 2 pi / SpeedOfSound, rad per (Hz m)
    PerBand<float> Absorption{}; ///< dB per metre, negative

    friend bool operator==(const Air&, const Air&) = default;
};
/// Air as it is meant here, °C.
constexpr float kColdestC = -20;
constexpr float kHottestC = 50;

/// As people read temperatures elsewhere.
constexpr double fahrenheit(double celsius)
{
    return celsius * 1.8 + 32;
}
constexpr double celsiusOfFahrenheit(double degrees)
{
    return (degrees - 32) / 1.8;
}

constexpr float kDriestPercent = 1;
constexpr float kWettestPercent = 100;

/// The air at `t` °C; it absorbs as at 20 °C and 60 % humidity.
Air airAt(float t);
/// The air at `t` °C and that relative humidity in percent, which absorbs as such.
Air weatherAt(float t, float humidityPercent);

/// Speed of sound in m/s at `t` °C.
double SpeedOfSoundAt(float t);

/// Attenuation of a pure tone by the air, dB, positive, after ISO 9613-1 at 101300 Pa.
/// `f` Hz, above 0; `d` m; `t` °C; `hr` relative humidity in percent. `p` (hPa) is not used.
double AtmosphericAbsorption(double f, double d, double t, double p, double hr);

/// A range of bands, both ends included: 0 <= from <= to < kBands.
struct BandSpan {
    int from = 0;
    int to = 0;

    int count() const { return to - from + 1; }
    friend bool operator==(const BandSpan&, const BandSpan&) = default;
};

enum class Averaging { Third, Octave, ThreeOctave, Broadband };

/// The bands that an averaging takes round the selected band, cut at the ends.
BandSpan BandRange(Averaging averaging, int selected);

/// Weight of each band's power: 1, or the A-weighting; 0 outside `bands`.
PerBand<float> BandWeights(BandSpan bands, bool aWeighted);

} // namespace orva
