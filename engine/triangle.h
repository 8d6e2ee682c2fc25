#pragma once

#include <variant>

namespace orva {

/// Why three lengths make no triangle.
enum class TriangleFault { Side1TooLong, Side1TooShort };

/// Deflection in degrees (0 to 180) of side 3 from the straight continuation of side 2 at their
/// common corner; 0 when either has no length. Lengths in any one unit, not below 0.
std::variant<float, TriangleFault> SolveTriangle(double side1, double side2, double side3);

} // namespace orva
