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

/// Points that a curve picture so many pixels wide shows: one for every two pixels.
int curvePoints(double pictureWidth);

/// The dB scale of a curve picture: whole tens round the finite levels, 10 dB at least.
struct CurveScale {
    double bottomDb;
    double topDb;

    static CurveScale of(std::span<const float> levels);
};

/// A curve of the picture, its points two pixels apart; minus infinity is a gap.
struct Curve {
    std::vector<float> levels;
    Role colour = Role::Curve;
    double width = 1;
    int dash = 0; ///< points that are drawn, then as many that are not; 0: all are
    int area = 0; ///< that it is named after where areas are told apart
};

/// A place in the curve picture: metres along the area from its start, dB.
struct CurvePoint {
    double alongM = 0;
    double levelDb = 0;
};

/// The user's fit line.
struct FitLine {
    CurvePoint first;
    CurvePoint second;
};

/// Least and largest levels at the points of a curve.
struct LevelRange {
    std::vector<float> least;
    std::vector<float> largest;

    void add(std::span<const float> levels);
};

/// What the curve picture of an audience area shows.
struct CurvePicture {
    int area = 1;
    double lengthM = 0;
    std::vector<Curve> curves; ///< the last one on top
    std::optional<FitLine> fitLine;
    bool baseline = false; ///< the fit line runs along the bottom, whatever level that is
    /// Distances, every level and the figures of `area` are written into it.
    bool detailed = false;
    std::optional<LevelRange> range{}; ///< of `area`, where it may vary

    CurveScale scale() const;
    /// The place at a point in the user coordinates of a picture so many pixels wide.
    CurvePoint placeAt(Point point, double pictureWidth) const;
    Point pointAt(CurvePoint place, double pictureWidth) const;
};

/// Draws dB grid, ticks every grid unit of length, title, curves, fit line. Leaves the picture's
/// scale set: x in pixels from -50, y the level above the bottom line in dB, negated.
void DrawCurves(DrawingSurface& surface, const CurvePicture& picture,
                const DrawingOptions& options);

/// Points along an area's profile in the room view, whose pixels are so many metres wide: one for
/// every two pixels of its length.
int profilePoints(double metresPerPixel, const Segment& area);

/// Draws the level profiles of audience areas 1, 2, ... beside them in the room view, left of their
/// direction: 2 pixels off for the smallest level of all, 22 for the largest.
void DrawProfiles(DrawingSurface& surface, const Room& room,
                  std::span<const std::vector<float>> profiles);

} // namespace orva
