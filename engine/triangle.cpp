#include "engine/triangle.h"

#include "model/vector_math.h"

#include <algorithm>
#include <cmath>

namespace orva {

std::variant<float, TriangleFault> SolveTriangle(double side1, double side2, double side3)
{
    // When both hold, the second is told.
    if (std::abs(side2 - side3) > side1)
        return TriangleFault::Side1TooShort;
    if (side2 + side3 < side1)
        return TriangleFault::Side1TooLong;
    if (side2 == 0 || side3 == 0)
        return 0.0F;
    // As shares of the longest one, so that no square leaves the numbers' range.
    const double longest = std::max({side1, side2, side3});
    const double a = side1 / longest;
    const double b = side2 / longest;
    const double c = side3 / longest;
    if (b * c == 0)
        return 0.0F;
    const double cosine = std::clamp((b * b + c * c - a * a) / (2 * b * c), -1.0, 1.0);
    return static_cast<float>(180 - 180 / 3.1415927 * ArcCos(static_cast<float>(cosine)));
}

} // namespace orva
