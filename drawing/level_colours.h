#pragma once

#include "drawing/drawing_options.h"
#include "drawing/drawing_surface.h"

#include <array>
#include <cmath>
#include <optional>

namespace orva {

/// How a map turns levels into colours.
class LevelColours {
public:
    /// For a map with that largest level. Round the audience's mean (dB) they span 15 dB below to
    /// 6 dB above; without one, or where the style says so, the given range: 50 to 120 dB for
    /// absolute maps (largest level 50 dB or more), else -75 to 5 dB.
    LevelColours(const MapStyle& style, float largestDb, std::optional<double> audienceMeanDb);
    /// For a map of differences: blue below 0, orange above it, the same whole dB to either side, 1
    /// to 12.
    static LevelColours ofDifference(float smallestDb, float largestDb);
    /// For a map of distances from a mean: bright where they are smallest, over 6 dB.
    static LevelColours ofEvenness(float smallestDb);

    /// Of a finite level. The given colours of the given range repeat outside it; all others end
    /// with their first and last colour.
    Colour at(float levelDb) const // inline: a map asks for millions
    {
        const double steps = (static_cast<double>(levelDb) - m_startDb) * m_stepsPerDb;
        if (!(std::abs(steps) <= 1e9))
            return (*m_colours)[0]; // no level that can be told from another
        const int step = static_cast<int>(steps);
        const int index = m_repeats ? step & 0xFF : step < 0 ? 0 : step > 255 ? 255 : step;
        return (*m_colours)[static_cast<std::size_t>(index)];
    }

    double startDb() const { return m_startDb; }
    double endDb() const { return m_startDb + m_spanDb; }
    /// Whether the range is that of the figures, not one of those given.
    bool ownRange() const { return m_ownRange; }

private:
    struct Range {
        double startDb;
        double spanDb;
    };
    LevelColours(Range range, const std::array<Colour, 256>& colours)
        : m_colours(&colours),
          m_startDb(range.startDb),
          m_spanDb(range.spanDb),
          m_stepsPerDb(256 / range.spanDb),
          m_repeats(false),
          m_ownRange(true)
    {
    }

    const std::array<Colour, 256>* m_colours;
    double m_startDb;
    double m_spanDb;
    double m_stepsPerDb;
    bool m_repeats;
    bool m_ownRange;
};

/// Black or white, whichever can be read on a colour.
Colour textColourOn(Colour colour);

} // namespace orva
