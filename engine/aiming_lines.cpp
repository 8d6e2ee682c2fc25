#include "engine/aiming_lines.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace orva {

namespace {

struct Ray {
    Point from;
    double dx;
    double dy;

    Point at(double distance) const { return {from.x + distance * dx, from.y + distance * dy}; }
};

/// Distance along the ray to a segment ahead of it.
std::optional<double> meets(const Ray& ray, const AreaSegment& segment)
{
    const double ex = static_cast<double>(segment[2]) - segment[0];
    const double ey = static_cast<double>(segment[3]) - segment[1];
    const double cross = ray.dx * ey - ray.dy * ex;
    if (cross == 0)
        return std::nullopt;
    const double distance =
        ((segment[0] - ray.from.x) * ey - (segment[1] - ray.from.y) * ex) / cross;
    const Point point = ray.at(distance);
    // Within the ends in x; in y where the segment stands upright.
    const std::size_t axis = ex == 0 ? 1 : 0;
    const double place = axis == 0 ? point.x : point.y;
    const auto [low, high] = std::minmax(segment[axis], segment[axis + 2]);
    if (distance <= 0 || place < low || place > high)
        return std::nullopt;
    return distance;
}

bool inside(const Room& room, Point point)
{
    const AreaSegment ceiling = room.GFAGetRoomWalls(1);
    const AreaSegment floor = room.GFAGetRoomWalls(3);
    return point.x >= floor[0] && point.x <= floor[2] && point.y >= floor[1] &&
           point.y <= ceiling[1];
}

void keepNearest(std::optional<double>& nearest, std::optional<double> distance)
{
    if (distance && (!nearest || *distance < *nearest))
        nearest = distance;
}

} // namespace

std::vector<AimingLine> aimingLines(const Room& room, const LineArray& array)
{
    const std::array<float, 96> origins = array.GFAGetOriginPTSandAng(true);
    std::vector<AimingLine> lines;
    for (int i = 0; i < array.boxCount(); ++i) {
        if (!array.kindAt(i))
            continue;
        const auto at = static_cast<std::size_t>(i);
        const double angle = static_cast<double>(origins[64 + at]) * kRadiansPerDegree;
        const Ray ray = {{origins[at], origins[32 + at]}, std::cos(angle), std::sin(angle)};

        std::optional<double> nearest;
        for (int number = 1; number <= room.GIGetNumAreas(); ++number)
            keepNearest(nearest, meets(ray, *room.GFAGetAudienceAreaSelect(number)));
        const bool meetsArea = nearest.has_value();
        if (!meetsArea && inside(room, ray.from))
            for (int wall = 1; wall <= 4; ++wall)
                keepNearest(nearest, meets(ray, room.GFAGetRoomWalls(wall)));
        const double length = nearest.value_or(2);
        lines.push_back({ray.from, ray.at(length), length, meetsArea});
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
