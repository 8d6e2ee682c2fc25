#include "engine/aiming_lines.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace orva {

namespace {

bool inside(const Room& room, Point point)
{
    const Point lower = room.wall(3).start;
    const Point upper = room.wall(1).end;
    return point.x >= lower.x && point.x <= upper.x && point.y >= lower.y && point.y <= upper.y;
}

void keepNearest(std::optional<double>& nearest, std::optional<double> distance)
{
    if (distance && (!nearest || *distance < *nearest))
        nearest = distance;
}

} // namespace

std::vector<AimingLine> aimingLines(const Room& room, const LineArray& array)
{
    std::vector<AimingLine> lines;
    int position = 0;
    for (const LineArray::BoxAxis& axis : array.axes()) {
        if (!array.kindAt(position++))
            continue;
        const Ray ray(axis.from, axis.angleDeg);
        std::optional<double> nearest;
        for (int number = 1; number <= room.GIGetNumAreas(); ++number)
            keepNearest(nearest, ray.meets(room.area(number)));
        const bool meetsArea = nearest.has_value();
        if (!meetsArea && inside(room, ray.from()))
            for (int wall = 1; wall <= 4; ++wall)
                keepNearest(nearest, ray.meets(room.wall(wall)));
        const double length = nearest.value_or(2);
        lines.push_back({ray.from(), ray.at(length), length, meetsArea});
    }
    return lines;
}

double travelTimeMs(double metres, double speedOfSound)
{
    return metres * 1000 / speedOfSound;
}

double bassBoxDelayMs(const AimingLine& line, FloatPair bassBox, double speedOfSound)
{
    const double distance = std::hypot(line.to.x - bassBox[0], line.to.y - bassBox[1]);
    return travelTimeMs(distance - line.lengthM, speedOfSound);
}

} // namespace orva
