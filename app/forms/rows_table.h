#pragma once

#include "app/forms/prediction.h"
#include "lang/text_options.h"

#include <string>
#include <vector>

namespace orva {

/// A row of seats.
struct SeatRow {
    int number; ///< from 1
    double alongM;
    Point at;
    float levelDb;
    double overMeanDb; ///< the mean of the area's receivers
    std::optional<NearestBox> box;
    double delayMs;
};

/// From row to row at least.
constexpr double kLeastPitchM = 0.1;
/// More rows than any venue has are not listed.
constexpr std::size_t kMostRows = 2000;

/// The rows of an area every `pitchM` (above 0) from `offsetM` on, up to its end.
std::vector<SeatRow> seatRows(Prediction& prediction, const Segment& area,
                              const LevelChoice& choice, double pitchM, double offsetM);

/// A row's figures as they are shown: number, distance, x, y, level, to mean, box, arrival.
std::vector<std::string> rowTexts(const SeatRow& row, const TextOptions& options);

} // namespace orva
