#include "model/vector_math.h"

#include <cmath>
#include <numbers>

namespace orva {

namespace {
constexpr double kDegreesPerRadian = 57.29578F;
} // namespace

std::int16_t MinInt(std::int16_t a, std::int16_t b)
{
    return a <= b ? a : b;
}

std::int16_t MaxInt(std::int16_t a, std::int16_t b)
{
    return a >= b ? a : b;
}

float MaxFloat(float a, float b)
{
    return a < b ? b : a;
}

double VectorAngle180(double x, double y)
{
    if (x == 0)
        return y == 0 ? 0 : y > 0 ? 90 : -90;
    if (x > 0)
        return std::atan(y / x) * 180.0 / static_cast<double>(std::numbers::pi_v<float>);
    return std::atan(y / x) * kDegreesPerRadian + (y < 0 ? -180 : 180);
}

double VectorAngle360(double x, double y)
{
    if (x == 0)
        return y == 0 ? 0 : y > 0 ? 90 : 270;
    const double angle = std::atan(y / x) * kDegreesPerRadian;
    return x < 0 ? angle + 180 : y < 0 ? angle + 360 : angle;
}

double ArcCos(float x)
{
    if (x >= 1)
        return 0;
    if (x <= -1)
        return std::numbers::pi;
    const double cosine = x;
    return std::atan(-cosine / std::sqrt(1 - cosine * cosine)) + 2 * std::atan(1.0);
}

FloatPair RotatePoint(FloatPair v, float degrees)
{
    return Rotation(degrees)(v);
}

Rotation::Rotation(float degrees)
{
    const double radians = static_cast<double>(degrees) * kRadiansPerDegree;
    m_sine = std::sin(radians);
    m_cosine = std::cos(radians);
}

} // namespace orva
