#pragma once

#include "model/line_array.h"
#include "model/room.h"

#include <optional>

namespace orva {

/// The angle in degrees (as people see it: room frame, positive = up) that aims the top of the
/// array. Flown: at the start of the nearest audience area that begins in front of the cradle, the
/// lower number on equal distances. Stacked: just below the end of the last area, from the first
/// box that is no bass box. None when there is nothing to aim at or with.
std::optional<double> autoAim(const Room& room, const LineArray& array);

} // namespace orva
