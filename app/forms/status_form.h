#pragma once

#include "app/forms/prediction.h"
#include "lang/language.h"
#include "model/project.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace orva {

/// What the status bar is told.
struct StatusFacts {
    const Project& project;
    bool calculable; ///< else levels, weights and tilt mean nothing
    std::optional<float> fohDb;
    bool aWeighted;
    std::vector<std::optional<AreaFigures>> areas; ///< those in use, in their order
    float temperatureC;
    float humidityPercent; ///< at which the air absorbs
    bool celsius;
    TextOptions text;
    std::string importedData; ///< the file's name; empty for the program's own data
};

/// What the status bar says, each part a text; and what is wrong with the rig.
struct StatusTexts {
    std::string foh;
    std::string spread;
    std::string weight; ///< and the height of the lowest edge
    std::string tilt;
    std::string data;                    ///< air and loudspeaker data
    bool wrong = false;                  ///< too heavy, or below the floor
    std::optional<std::string> overload; ///< a sentence
};

StatusTexts statusTexts(const StatusFacts& facts);

/// What is heard at a place, in one line.
std::string heardText(const Heard& heard, bool aWeighted, const TextOptions& options);

} // namespace orva
