#include "engine/auto_aim.h"

#include "engine/level_kernel.h"
#include "model/vector_math.h"

#include <algorithm>
#include <cmath>

namespace orva {

namespace {

struct Sight {
    Point from;
    Point to;
};

/// Feet, stored as metres in 32 bits, do not meet to the last digit.
constexpr double kSameM = 0.0005;

std::optional<Sight> flownSight(const Room& room, const LineArray& array)
{
    const auto [x, y] = array.GFAGetCradleCoord();
    std::optional<Sight> nearest;
    for (int number = 1; number <= room.GIGetNumAreas(); ++number) {
        const Point start = room.area(number).start;
        if (start.x > x + kSameM && (!nearest || start.x < nearest->to.x))
            nearest = {{x, y}, start};
    }
    return nearest;
}

/// The first position that holds no bass box; boxCount() where all do.
int firstAimedPosition(const LineArray& array)
{
    int position = 0;
    while (position < array.boxCount() && array.kindAt(position) == BoxKind::Bass)
        ++position;
    return position;
}

std::optional<Sight> stackedSight(const Room& room, const LineArray& array)
{
    const int position = firstAimedPosition(array);
    if (position == array.boxCount())
        return std::nullopt;
    const Point source = array.axes()[static_cast<std::size_t>(position)].from;
    const Point end = room.area(room.GIGetNumAreas()).end;
    return Sight{source, {end.x, end.y - 0.1}};
}

} // namespace

std::optional<double> autoAim(const Room& room, const LineArray& array)
{
    const std::optional<Sight> sight =
        array.GBGetMounting() ? flownSight(room, array) : stackedSight(room, array);
    if (!sight)
        return std::nullopt;
    double angle = VectorAngle180(sight->to.x - sight->from.x, sight->to.y - sight->from.y);
    if (array.kindAt(0) == BoxKind::Trapezoidal)
        angle += LineArray::kTopTrapezoidalTiltDeg;
    // Bass boxes on top: the first mid/high box hangs below them, turned by their joints.
    const LineArray::Positions angles = array.GIAGetAllAngle();
    const int last = std::min(firstAimedPosition(array), array.boxCount() - 1);
    for (int position = 1; position <= last; ++position)
        angle += LineArray::splayAngle(angles[static_cast<std::size_t>(position)]);
    return angle;
}

} // namespace orva
