#pragma once

#include "engine/acoustics.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace orva {

/// Directivity steps round the vertical plane, 5° each; step 0 on axis, 18 straight down from a
/// level box, 36 behind.
constexpr int kAngleSteps = 72;

/// What a system's mid/high box does in each direction, per band.
struct Directivity {
    using Table = PerBand<std::array<float, kAngleSteps>>;

    Table DirMagnitude{}; ///< attenuation against the on-axis level, dB; larger is quieter
    Table DirPhase{};     ///< degrees, of the response for e^(+j omega t) at the source point

    friend bool operator==(const Directivity&, const Directivity&) = default;
};

/// Attenuation in dB of `band` (0..21) at `step` (direction / 5°, 0 to 72), interpolated.
inline double DirMagnitudeAt(const Directivity& data, int band, double step)
{
    const auto i = static_cast<std::size_t>(step);
    const double f = step - static_cast<double>(i);
    const auto& row = data.DirMagnitude[static_cast<std::size_t>(band)];
    return (1 - f) * row[i % kAngleSteps] + f * row[(i + 1) % kAngleSteps];
}

/// Phases in degrees at two neighbouring directions; the lower one is a turn higher where that is
/// the shorter way from one to the other.
struct PhaseStep {
    double from;
    double to;
};
inline PhaseStep shortWay(double from, double to)
{
    if (std::abs(from - to) > 180)
        (from < to ? from : to) += 360;
    return {from, to};
}

/// Phase in degrees, interpolated the short way round; may exceed 360.
inline double DirPhaseAt(const Directivity& data, int band, double step)
{
    const auto i = static_cast<std::size_t>(step);
    const double f = step - static_cast<double>(i);
    const auto& row = data.DirPhase[static_cast<std::size_t>(band)];
    const PhaseStep phase = shortWay(row[i % kAngleSteps], row[(i + 1) % kAngleSteps]);
    return (1 - f) * phase.from + f * phase.to;
}

enum class LevelField { Relative = 0, Continuous = 1, Peak = 2 };

/// On-axis level of one box in one band, dB.
struct BandReference {
    double Relative;   ///< Continuous minus the system's mean over the bands
    double Continuous; ///< at 1 m
    double Peak;       ///< Continuous + 6

    double field(LevelField which) const
    {
        return which == LevelField::Relative     ? Relative
               : which == LevelField::Continuous ? Continuous
                                                 : Peak;
    }

    friend bool operator==(const BandReference&, const BandReference&) = default;
};

/// What predictions read: the current directivity and levels of one system.
struct SpeakerData {
    Directivity directivity;
    PerBand<BandReference> BandLevel{};
};

/// The directivity of each system as read at start-up, at the place of its number.
using SystemData = std::vector<Directivity>;

/// The data of a system, without any import; silent tables before they were read.
SpeakerData SelectSpeakerData(const SystemData& data, std::int16_t system);

} // namespace orva
