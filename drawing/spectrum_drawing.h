#pragma once

#include "drawing/drawing_options.h"
#include "drawing/drawing_surface.h"
#include "engine/spectrum.h"

#include <string>

namespace orva {

/// "100", "1.6k", as under the bands of a picture.
std::string bandLabel(std::size_t band);

/// The levels of the bands at a place.
struct Spectrum {
    std::string name;
    PerBand<float> levels; ///< dB; minus infinity: no bar
    Role colour;
};

/// Bars of the bands, those of several places side by side, with a dB grid and their names.
/// Without a spectrum `hint` stands in its place. Leaves pixels as the scale.
void DrawSpectrum(DrawingSurface& surface, std::span<const Spectrum> spectra,
                  const std::string& hint);

/// What the strip of an audience area shows: the level of each band along it against its mean.
struct Strip {
    std::string title;
    double lengthM = 0;
    BandLevels levels;       ///< dB, per band along the area
    PerBand<double> means{}; ///< of those that are heard

    static Strip of(BandLevels levels, double lengthM, std::string title);
};

/// Levels this far from the mean have the colours of the ends.
constexpr double kStripRangeDb = 12;

/// Distance to the right, bands upwards, colours for the difference, with a legend.
void DrawStrip(DrawingSurface& surface, const Strip& strip, const DrawingOptions& options);

/// A place in the strip's picture, so many pixels large.
struct StripPlace {
    std::size_t band;
    std::size_t point;
};
std::optional<StripPlace> stripPlaceAt(const Strip& strip, Point pixel, double pixelWidth,
                                       double pixelHeight);

} // namespace orva
