#include "engine/triangle.h"

#include "model/vector_math.h"

#include <cmath>

namespace orva {

std::variant<float, TriangleFault> SolveTriangle(double side1, double side2, double side3)
{
    // When both hold, the second is told.
    if (std::abs(side2 - side3) > side1)
        return TriangleFault::Side1TooShort;
    if (side2 + side3 < side1)
        return TriangleFault::Side1TooLong;
    if (side2 * side3 == 0)
        return 0.0F;
    const double cosine = (side2 * side2 + side3 * side3 - side1 * side1) / (2 * side2 * side3);
    return static_cast<float>(180 - 180 / 3.1415927 * ArcCos(static_cast<float>(cosine)));
}

} // namespace orva
