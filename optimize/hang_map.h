#pragma once

#include "engine/spl_map.h"
#include "model/project.h"
#include "optimize/evenness.h"

#include <functional>

namespace orva {

/// How even the audience areas would be with the array's pick point anywhere in the room.
struct HangMap {
    /// Places stand in the middle of cells; the evenness of each, dB, minus infinity where the
    /// array does not fit between walls, floor and ceiling.
    MapGrid grid;
    SummedMap rms;
    std::vector<float> spread; ///< of each cell, dB
    /// The cell of a point in the room frame; none outside the room.
    std::optional<std::size_t> cellAt(const Point& point) const;
    /// Its middle, to the centimetre: the place that its figures are of.
    Point placeOf(std::size_t cell) const;
};

/// A place for the pick point, and what it comes to.
struct HangPlace {
    Point place;
    Evenness evenness;
};

/// Places a raster (metres) apart; `progress` counts rows. None when it stopped.
std::optional<HangMap> hangMap(const Hearing& hearing, const Project& project, double rasterM,
                               int threads, const Progress& progress);

/// The most even place of a map, looked at more closely: down to a centimetre round it. None where
/// the array fits nowhere, or when `stop`, asked before each place, says so.
std::optional<HangPlace> bestPlace(const Hearing& hearing, const Project& project,
                                   const HangMap& map, const std::function<bool()>& stop = {});

} // namespace orva
