#include "optimize/amplitude_ball.h"

#include "model/vector_math.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace orva {

namespace {

constexpr int kSamplesPerDegree = 8;
constexpr int kSamples = 360 * kSamplesPerDegree;
constexpr int kSamplesInRow = kSamplesPerDegree / AmplitudeBall::kRowsPerDegree;
constexpr double kStepDeg = 5; ///< of the data, straight between two in dB and in phase

using Amplitudes = std::vector<std::complex<double>>;

/// Of one band at every sample, and how far it may be from any of them between them.
struct Sampled {
    Amplitudes amplitudes;
    double slack = 0;
};

Sampled sampled(const Directivity& directivity, int band)
{
    Sampled result;
    const auto decibels = [&](double step) { return DirMagnitudeAt(directivity, band, step); };
    const auto phase = [&](double step) {
        return DirPhaseAt(directivity, band, step) * kRadiansPerDegree;
    };
    for (int sample = 0; sample < kSamples; ++sample) {
        const double step = sample / (kSamplesPerDegree * kStepDeg);
        result.amplitudes.push_back(std::polar(std::pow(10, -decibels(step) / 20), -phase(step)));
    }
    // Along a spiral nothing is farther away than its length.
    constexpr double kAlmost = 1 - 1e-9;
    for (int step = 0; step < kAngleSteps; ++step) {
        const double change =
            std::hypot((decibels(step + kAlmost) - decibels(step)) * std::numbers::ln10 / 20,
                       phase(step + kAlmost) - phase(step));
        const double largest =
            std::pow(10, -std::min(decibels(step), decibels(step + kAlmost)) / 20);
        result.slack =
            std::max(result.slack, 1.001 * largest * change / (kSamplesPerDegree * kStepDeg));
    }
    return result;
}

} // namespace

AmplitudeBalls::AmplitudeBalls(const Directivity& directivity)
    : m_widths{0.5, 1, 1.5, 2, 3, 4, 5, 6, 8, 10, 12, 15, 18, 22, 26, 30, 36, 45}
{
    m_balls.resize(m_widths.size());
    for (AmplitudeBall& ball : m_balls)
        ball.m_rows.resize(kSamples / kSamplesInRow, {});
    for (int band = 0; band < kBands; ++band) {
        const auto lane = static_cast<std::size_t>(band);
        const Sampled samples = sampled(directivity, band);
        const auto at = [&](int sample) {
            return samples.amplitudes[static_cast<std::size_t>((sample + kSamples) % kSamples)];
        };
        for (std::size_t row = 0; row < m_balls.front().m_rows.size(); ++row) {
            const int first = static_cast<int>(row) * kSamplesInRow;
            const auto centre = at(first + kSamplesInRow / 2);
            double within = 0; // of the row itself
            for (int sample = first; sample <= first + kSamplesInRow; ++sample)
                within = std::max(within, std::abs(at(sample) - centre));
            double spread = 0; // squares
            double largest = 0;
            int done = first + kSamplesInRow / 2;
            int last = done - 1; // looked at so far: from `done` to `last`
            const auto look = [&](int sample) {
                spread = std::max(spread, std::norm(at(sample) - centre));
                largest = std::max(largest, std::norm(at(sample)));
            };
            for (std::size_t width = 0; width < m_widths.size(); ++width) {
                const int reach = static_cast<int>(std::ceil(m_widths[width] * kSamplesPerDegree));
                while (done > first - reach)
                    look(--done);
                while (last < first + kSamplesInRow + reach)
                    look(++last);
                AmplitudeBall::Row& kept = m_balls[width].m_rows[row];
                constexpr double kRounding = 1.00001;
                kept.spread[lane] = static_cast<float>(
                    kRounding * (std::sqrt(spread) + within + 2 * samples.slack));
                kept.largest[lane] =
                    static_cast<float>(kRounding * (std::sqrt(largest) + samples.slack));
            }
        }
    }
}

const AmplitudeBall* AmplitudeBalls::within(double degrees) const
{
    const auto width = std::lower_bound(m_widths.begin(), m_widths.end(), degrees);
    return width == m_widths.end()
               ? nullptr
               : &m_balls[static_cast<std::size_t>(std::distance(m_widths.begin(), width))];
}

} // namespace orva
