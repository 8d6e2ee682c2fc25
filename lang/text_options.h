#pragma once

#include "lang/language.h"

namespace orva {

constexpr double kFeetPerMetre = 3.28084;

/// How texts are written for the user.
struct TextOptions {
    Language language = Language::English;
    bool Units_Meters = true; ///< lengths in metres, else in feet

    double lengthFactor() const { return Units_Meters ? 1.0 : kFeetPerMetre; }
};

} // namespace orva
