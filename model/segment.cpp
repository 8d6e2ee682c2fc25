#include "model/segment.h"

#include "model/vector_math.h"

#include <algorithm>
#include <cmath>

namespace orva {

Point Segment::at(double metres) const
{
    const double radians = angleDeg * kRadiansPerDegree;
    return {start.x + metres * std::cos(radians), start.y + metres * std::sin(radians)};
}

double Segment::distanceTo(const Point& point) const
{
    const double dx = end.x - start.x;
    const double dy = end.y - start.y;
    const double square = dx * dx + dy * dy;
    const double along =
        square > 0
            ? std::clamp(((point.x - start.x) * dx + (point.y - start.y) * dy) / square, 0.0, 1.0)
            : 0.0;
    return std::hypot(point.x - (start.x + along * dx), point.y - (start.y + along * dy));
}

Segment segmentOf(const SegmentFigures& figures)
{
    const auto [x1, y1, x2, y2, angle, length] = figures;
    return {{x1, y1}, {x2, y2}, angle, length};
}

Ray::Ray(Point from, double angleDeg)
    : m_from(from),
      m_dx(std::cos(angleDeg * kRadiansPerDegree)),
      m_dy(std::sin(angleDeg * kRadiansPerDegree))
{
}

std::optional<double> Ray::meets(const Segment& segment) const
{
    const auto& [start, end, angle, length] = segment;
    const double ex = end.x - start.x;
    const double ey = end.y - start.y;
    const double cross = m_dx * ey - m_dy * ex;
    if (cross == 0)
        return std::nullopt;
    const double distance = ((start.x - m_from.x) * ey - (start.y - m_from.y) * ex) / cross;
    const Point point = at(distance);
    // Within the ends in x; in y where the segment stands upright.
    const bool upright = ex == 0;
    const double place = upright ? point.y : point.x;
    const auto [low, high] = std::minmax(upright ? start.y : start.x, upright ? end.y : end.x);
    if (distance <= 0 || place < low || place > high)
        return std::nullopt;
    return distance;
}

} // namespace orva
