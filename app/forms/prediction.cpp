#include "app/forms/prediction.h"

#include <algorithm>
#include <utility>

namespace orva {

namespace {

/// Lines that one picture of the window asks for, twice.
constexpr std::size_t kMostKept = 24;

} // namespace

Prediction::Prediction(std::shared_ptr<const LevelKernel> kernel,
                       const PerBand<BandReference>& levels, const LineArray& array,
                       double speedOfSound)
    : m_kernel(std::move(kernel)),
      m_levels(levels),
      m_array(array),
      m_placed(placedSources(array)),
      m_speedOfSound(speedOfSound)
{
}

const BandPowers& Prediction::powersAlong(const Segment& line, int points, BandSpan bands)
{
    const auto known = std::find_if(m_known.begin(), m_known.end(), [&](const Known& kept) {
        return kept.line == line && kept.powers.bands == bands &&
               kept.powers.points() == static_cast<std::size_t>(points);
    });
    if (known != m_known.end())
        return known->powers;
    m_known.push_front(
        {line, bandPowersAt(*m_kernel, m_placed.sources, lineReceivers(line, points), bands)});
    if (m_known.size() > kMostKept)
        m_known.pop_back();
    return m_known.front().powers;
}

std::vector<float> Prediction::levelsAlong(const Segment& line, int points,
                                           const LevelChoice& choice)
{
    return levelsOf(powersAlong(line, points, choice.bands), m_levels, choice);
}

float Prediction::levelAt(const Point& point, const LevelChoice& choice) const
{
    return levelsOf(bandPowersAt(*m_kernel, m_placed.sources, {&point, 1}, choice.bands), m_levels,
                    choice)
        .front();
}

std::optional<AreaFigures> Prediction::figuresOf(const Segment& area, const LevelChoice& choice)
{
    return areaFigures(levelsAlong(area, kAreaReceivers, choice));
}

std::optional<Evenness> Prediction::evennessOf(const Room& room, const LevelChoice& choice)
{
    std::vector<float> all;
    for (int number = 1; number <= room.GIGetNumAreas(); ++number) {
        const std::vector<float> own = levelsAlong(room.area(number), kAreaReceivers, choice);
        all.insert(all.end(), own.begin(), own.end());
    }
    return orva::evennessOf(all);
}

std::optional<NearestBox> Prediction::nearestTo(const Point& point) const
{
    return nearestBox(m_placed, point);
}

Heard Prediction::heardAt(const Point& point, const Point& foh, const LevelChoice& choice) const
{
    const float level = levelAt(point, choice);
    const std::optional<NearestBox> box = nearestTo(point);
    return {point, level, level - levelAt(foh, choice), box, box ? delayMs(*box) : 0};
}

PerBand<float> Prediction::spectrumAt(const Point& point, const LevelChoice& choice) const
{
    const BandLevels alone =
        singleBandLevels(*m_kernel, m_levels, m_placed.sources, {&point, 1}, choice);
    PerBand<float> levels;
    std::transform(alone.begin(), alone.end(), levels.begin(),
                   [](const std::vector<float>& band) { return band.front(); });
    return levels;
}

BandLevels Prediction::bandsAlong(const Segment& line, int points, const LevelChoice& choice)
{
    BandLevels levels;
    addBandLevels(powersAlong(line, points, {0, kBands - 1}), m_levels, choice, levels);
    return levels;
}

} // namespace orva
