#pragma once

#include "app/forms/prediction.h"
#include "app/forms/search_run.h"
#include "lang/text_options.h"

#include <string>
#include <vector>

namespace orva {

/// What an arrangement of the array comes to.
struct ResultFigures {
    std::vector<std::optional<AreaFigures>> areas; ///< all of the room, in their order
    float fohDb;
    double heightM;         ///< of the pick point
    std::optional<int> pin; ///< from 1; none for a stack
    double weightKg;
    bool allowed; ///< neither too heavy nor outside the room
};
ResultFigures resultFigures(Prediction& prediction, const Room& room, const LineArray& array,
                            const LevelChoice& choice);

/// Measure, mean (spread) of each area, FOH, height, pin, weight: as a row of a table.
std::vector<std::string> resultTexts(double rms, const ResultFigures& figures,
                                     const TextOptions& options);
/// The same of an array in a room, with how even all areas are as the measure.
std::vector<std::string> arrayTexts(Prediction& prediction, const Room& room,
                                    const LineArray& array, const LevelChoice& choice,
                                    const TextOptions& options);
/// What stands above them; `measure` above the first.
std::vector<std::string> resultHeads(Text measure, int areas, const TextOptions& options);

} // namespace orva
