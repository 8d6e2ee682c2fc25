#pragma once

#include <optional>
#include <string_view>

namespace orva {

/// A number as a user types it, with what stands behind it.
struct TypedNumber {
    double value;
    std::string_view unit; ///< as typed, without blanks; empty for none
};

/// The number that the whole text is: blanks, a sign, digits with one "." or "," at most, blanks,
/// letters or marks of a unit. None for anything else ("-", "1.234,5", "1e3", ""), which a user has
/// not finished or must look at again.
std::optional<TypedNumber> typedNumber(std::string_view text);

/// The same for a figure without unit.
std::optional<double> typedFigure(std::string_view text);

/// An angle in degrees, "°" allowed.
std::optional<double> typedAngle(std::string_view text);

} // namespace orva
