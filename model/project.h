#pragma once

#include "model/line_array.h"
#include "model/room.h"
#include "model/sub_array.h"
#include "model/variants.h"

namespace orva {

/// All that a project file holds.
struct Project {
    Room room;
    LineArray array;
    SubArray subArray;
    Variants variants{};

    friend bool operator==(const Project&, const Project&) = default;
};

/// What an array takes up, in metres from the left wall and from the floor. A stack begins where it
/// stands.
struct Extent {
    double left;
    double right;
    double lowest;
    double highest;
};
Extent extentOf(const Room& room, const LineArray& array);
/// Whether it lies between walls, floor and ceiling.
bool fitsIn(const Room& room, const Extent& extent);

/// A new project's defaults for the system: 0 standard, 1 compact.
Project newProject(std::int16_t arrayType);

} // namespace orva
