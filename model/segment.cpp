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
