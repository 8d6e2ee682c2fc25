#include "engine/literal_kernel.h"

#include "model/vector_math.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <complex>

namespace orva {

namespace {

/// Brings any angle into 0 to 360 by whole turns.
double withinOneTurn(double degrees)
{
    const double rest = std::fmod(degrees, 360.0);
    return rest < 0 ? rest + 360 : rest;
}

} // namespace

void LiteralKernel::bandPowers(std::span<const Source> sources, std::span<const Point> receivers,
                               BandSpan bands, std::span<float* const> powers) const
{
    const auto bandCount = static_cast<std::size_t>(bands.count());
    assert(powers.size() == bandCount);
    const BandConstants& constants = bandConstants();

    PerBand<std::complex<double>> sums;
    for (std::size_t k = 0; k < receivers.size(); ++k) {
        sums.fill(0);
        for (const Source& source : sources) {
            const double dx = receivers[k].x - source.x;
            const double dy = receivers[k].y - source.y;
            const double distance = std::sqrt(dx * dx + dy * dy);
            if (!std::isfinite(distance))
                continue; // a file may hold places that overflow: nothing is heard from there
            const double direction = withinOneTurn(VectorAngle360(dx, -dy) + source.angleDeg);
            const double r = std::max(distance, kNearestM);
            const double spread = std::log(r) * -8.68588924407959;
            const double kr = r * m_air.WaveFactor;
            for (int b = bands.from; b <= bands.to; ++b) {
                const auto band = static_cast<std::size_t>(b);
                const double level = spread + r * m_air.Absorption[band] -
                                     DirMagnitudeAt(m_directivity, b, direction / 5);
                const double amplitude = std::pow(10.0, level / 20);
                const double phase =
                    kr * constants.BandCentre[band] -
                    DirPhaseAt(m_directivity, b, direction / 5) * kRadiansPerDegree;
                sums[band] +=
                    std::complex(amplitude * std::cos(phase), amplitude * std::sin(phase));
            }
        }
        for (std::size_t b = 0; b < bandCount; ++b)
            powers[b][k] =
                static_cast<float>(std::norm(sums[static_cast<std::size_t>(bands.from) + b]));
    }
}

} // namespace orva
