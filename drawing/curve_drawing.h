#pragma once

#include "drawing/drawing_options.h"
#include "drawing/drawing_surface.h"
#include "model/room.h"

#include <optional>
#include <span>
#include <vector>

namespace orva {

/// Where an area ends in the curve picture: pixels from its start, 1 at least.
double curveEnd(double pictureWidth);

/// Points that the curve picture of a surface shows: one for every two pixels.
int curvePoints(const DrawingSurface& surface);

/// The dB scale of a curve picture: whole tens round the finite levels, 10 dB at least.
struct CurveScale {
    double bottomDb;
    double topDb;

    static CurveScale of(std::span<const float> levels);
};

/// A curve of the picture, its points two pixels apart; minus infinity is a gap.
struct Curve {
    std::span<const float> levels;
    Colour colour = kBlack;
    double width = 1;
};

/// The user's fit line in the picture's user coordinates.
struct FitLine {
    Point first;
    Point second;
};

/// The curve picture of audience area `area`, `lengthM` long: dB grid, ticks every grid unit of
/// length, title, curves, fit line. Leaves the picture's scale set: x in pixels from -50, y the
/// level above the bottom line in dB, negated.
void DrawCurves(DrawingSurface& surface, int area, double lengthM, std::span<const Curve> curves,
                const std::optional<FitLine>& fitLine, const DrawingOptions& options);

/// Points along an area's profile in the room view: one for every two pixels of its length.
int profilePoints(const DrawingSurface& surface, const AreaSegment& area);

/// Draws the level profiles of audience areas 1, 2, ... beside them in the room view, left of their
/// direction: 2 pixels off for the smallest level of all, 22 for the largest.
void DrawProfiles(DrawingSurface& surface, const Room& room,
                  std::span<const std::vector<float>> profiles);

} // namespace orva
