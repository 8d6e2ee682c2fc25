#pragma once

#include "model/line_array.h"
#include "model/room.h"
#include "model/sub_array.h"

namespace orva {

/// All that a project file holds.
struct Project {
    Room room;
    LineArray array;
    SubArray subArray;

    friend bool operator==(const Project&, const Project&) = default;
};

/// A new project's defaults for the system: 0 standard, 1 compact.
Project newProject(std::int16_t arrayType);

} // namespace orva
