#pragma once

#include <array>
#include <cstdint>

namespace orva {

/// x, y in metres.
using FloatPair = std::array<float, 2>;

/// Degrees to radians, the one factor of all geometry and levels.
constexpr float kRadiansPerDegree = 0.017453292F;

std::int16_t MinInt(std::int16_t a, std::int16_t b);
std::int16_t MaxInt(std::int16_t a, std::int16_t b);
float MaxFloat(float a, float b);

/// Direction of the vector (x, y) in degrees, counter-clockwise from +x: -180 (exclusive) to 180.
/// The zero vector has the direction 0.
double VectorAngle180(double x, double y);

/// Direction of the vector (x, y) in degrees, 0 to 360. The zero vector has the direction 0.
double VectorAngle360(double x, double y);

/// Arc cosine in radians of x in -1 to 1.
double ArcCos(float x);

/// `v` turned by `degrees`: x' = x cos + y sin, y' = -x sin + y cos. Where y points down, this
/// turns counter-clockwise as seen.
FloatPair RotatePoint(FloatPair v, float degrees);

/// RotatePoint() of several vectors by the same angle.
class Rotation {
public:
    explicit Rotation(float degrees);

    FloatPair operator()(FloatPair v) const
    {
        return {static_cast<float>(v[0] * m_cosine + v[1] * m_sine),
                static_cast<float>(-v[0] * m_sine + v[1] * m_cosine)};
    }

private:
    double m_sine;
    double m_cosine;
};

} // namespace orva
