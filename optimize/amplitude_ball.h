#pragma once

#include "engine/speaker_data.h"

#include <memory>
#include <vector>

namespace orva {

/// How far a box's complex amplitude (without distance) can get from what it is in one direction
/// when the direction turns either way by up to an angle. Immutable.
class AmplitudeBall {
public:
    static constexpr std::size_t kLanes = 24; ///< bands, and two places that are 0
    static constexpr int kRowsPerDegree = 2;

    /// Whatever half a degree of the directions one starts from.
    struct Row {
        alignas(64) std::array<float, kLanes> spread;  ///< the largest distance
        alignas(64) std::array<float, kLanes> largest; ///< the largest amplitude
    };
    /// `degrees` 0..360 plus a little.
    const Row& at(double degrees) const
    {
        const auto row = static_cast<std::size_t>(degrees * kRowsPerDegree);
        return m_rows[row < m_rows.size() ? row : 0];
    }

private:
    friend class AmplitudeBalls;
    std::vector<Row> m_rows;
};

/// Those of one directivity for several angles.
class AmplitudeBalls {
public:
    explicit AmplitudeBalls(const Directivity& directivity);

    /// For turns of so many degrees either way, or of somewhat more; null beyond the widest.
    const AmplitudeBall* within(double degrees) const;

private:
    std::vector<double> m_widths;
    std::vector<AmplitudeBall> m_balls;
};

} // namespace orva
