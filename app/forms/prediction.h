#pragma once

#include "engine/area_figures.h"
#include "engine/spectrum.h"
#include "optimize/evenness.h"

#include <deque>
#include <memory>

namespace orva {

/// What is heard at a place.
struct Heard {
    Point at;        ///< room frame, metres
    float levelDb;   ///< minus infinity where nothing radiates
    float overFohDb; ///< less the level at the FOH
    std::optional<NearestBox> box;
    double delayMs; ///< that the sound of that box takes
};

/// The levels of one array with one kernel. Powers of places that were asked for are kept, so that
/// another weighting, field or figure of the same places costs next to nothing.
class Prediction {
public:
    /// The array must have no fault().
    Prediction(std::shared_ptr<const LevelKernel> kernel, const PerBand<BandReference>& levels,
               const LineArray& array, double speedOfSound);
    /// Whether that is what it is made of.
    bool isOf(const std::shared_ptr<const LevelKernel>& kernel,
              const PerBand<BandReference>& levels, const LineArray& array) const
    {
        return kernel == m_kernel && array == m_array && levels == m_levels;
    }

    /// To the bit as orva::levelsAlong() gives them.
    std::vector<float> levelsAlong(const Segment& line, int points, const LevelChoice& choice);
    float levelAt(const Point& point, const LevelChoice& choice) const;
    /// The figures of an area.
    std::optional<AreaFigures> figuresOf(const Segment& area, const LevelChoice& choice);
    /// Of all areas of a room together.
    std::optional<Evenness> evennessOf(const Room& room, const LevelChoice& choice);
    Heard heardAt(const Point& point, const Point& foh, const LevelChoice& choice) const;
    /// The level of each band alone at a place.
    PerBand<float> spectrumAt(const Point& point, const LevelChoice& choice) const;
    /// Of each band along a line, as it is among all bands.
    BandLevels bandsAlong(const Segment& line, int points, const LevelChoice& choice);
    std::optional<NearestBox> nearestTo(const Point& point) const;
    double delayMs(const NearestBox& box) const { return box.distanceM / m_speedOfSound * 1000; }

private:
    /// At the receivers along a line.
    struct Known {
        Segment line;
        BandPowers powers;
    };
    const BandPowers& powersAlong(const Segment& line, int points, BandSpan bands);

    std::shared_ptr<const LevelKernel> m_kernel;
    PerBand<BandReference> m_levels;
    LineArray m_array;
    PlacedSources m_placed;
    double m_speedOfSound;
    std::deque<Known> m_known; ///< the latest first
};

} // namespace orva
