#pragma once

#include "engine/line_spl.h"
#include "model/room.h"

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace orva {

/// How even all audience areas are together, each with its 200 receivers: root of the mean square
/// of the levels' distances from their common mean, and largest less smallest level, dB.
struct Evenness {
    double rms;
    double spread;

    friend bool operator==(const Evenness&, const Evenness&) = default;
};

/// What levels come from, and where they are heard.
struct Hearing {
    const LevelKernel& kernel;
    const PerBand<BandReference>& levels;
    std::vector<Point> receivers; ///< of all areas
    LevelChoice choice;
};
std::vector<Point> areaReceivers(const Room& room);

/// Of the levels at those receivers; none where one of them hears nothing.
std::optional<Evenness> evennessOf(std::span<const float> levels);
/// The array must have no fault().
std::optional<Evenness> evennessOf(const Hearing& hearing, const LineArray& array);

/// What a step of a joint would come to: to the splay angle below or above in its list. None where
/// there is no such angle.
struct JointSteps {
    std::optional<Evenness> down;
    std::optional<Evenness> up;
};
/// Of each joint, the top one first; the array's centre of gravity is calculated anew.
std::vector<JointSteps> jointSteps(const Hearing& hearing, const LineArray& array, int threads);

} // namespace orva
