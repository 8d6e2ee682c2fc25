#pragma once

#include "lang/text_options.h"

#include <cstdint>

namespace orva {

/// Colours of the map: the given hues, or steps that are even to the eye.
enum class MapColours : std::int16_t { Classic, Even };
/// Levels that they span: the given ones, or those round the audience's mean.
enum class MapRange : std::int16_t { Given, Audience };

/// What a map looks like.
struct MapStyle {
    MapColours colours = MapColours::Classic;
    MapRange range = MapRange::Given;
    bool contours = false; ///< lines of equal level every 3 dB

    friend bool operator==(const MapStyle&, const MapStyle&) = default;
};

/// How drawings are made for the user: the grids in the unit of `text`. The values are those of a
/// first start, in metres.
struct DrawingOptions {
    TextOptions text;
    float GridUnit_Room = 5;
    float GridUnit_Rigging = 0.5F;
    float GridUnit_Area = 1;
    MapStyle map{};
};

} // namespace orva
