#pragma once

#include "engine/level_kernel.h"
#include "model/line_array.h"
#include "model/room.h"

#include <vector>

namespace orva {

/// Longest part of an aiming line that is drawn as reached.
constexpr double kAimingReachM = 120;

/// The axis of a box up to what it meets first, room frame.
struct AimingLine {
    Point from;
    Point to;
    double lengthM;
    bool meetsArea; ///< else it ends at a wall, or 2 m long where the box hangs outside the room
};

/// One line per box of known kind, top box first, bass boxes included.
std::vector<AimingLine> aimingLines(const Room& room, const LineArray& array);

/// Time in ms that sound takes for a distance.
double travelTimeMs(double metres, double speedOfSound);

/// Delay in ms of a bass box at `bassBox` against the array at the end of an aiming line.
double bassBoxDelayMs(const AimingLine& line, FloatPair bassBox, double speedOfSound);

} // namespace orva
