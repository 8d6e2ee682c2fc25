#pragma once

#include <array>
#include <optional>

namespace orva {

/// A place in metres, or in the user units of a drawing.
struct Point {
    double x = 0;
    double y = 0;

    friend bool operator==(const Point&, const Point&) = default;
};

/// Metres.
struct Size {
    double width = 0;
    double height = 0;
};

/// A straight part of the side section, metres in the room frame. Angle (degrees against the
/// horizontal) and length are those that were given, not computed from the ends.
struct Segment {
    Point start;
    Point end;
    double angleDeg = 0;
    double lengthM = 0;

    /// The place so many metres from the start, in the direction of the angle.
    Point at(double metres) const;
    /// Metres from the nearest place between both ends.
    double distanceTo(const Point& point) const;
    friend bool operator==(const Segment&, const Segment&) = default;
};

/// Start x, y, end x, y, angle, length: the order of files and entries.
using SegmentFigures = std::array<float, 6>;
Segment segmentOf(const SegmentFigures& figures);

/// Half a line: from a place on, in a direction.
class Ray {
public:
    Ray(Point from, double angleDeg);

    Point from() const { return m_from; }
    Point at(double metres) const { return {m_from.x + metres * m_dx, m_from.y + metres * m_dy}; }

    /// Metres to where it meets a segment ahead of it, ends included; none where it does not or
    /// runs along it.
    std::optional<double> meets(const Segment& segment) const;

private:
    Point m_from;
    double m_dx;
    double m_dy;
};

} // namespace orva
