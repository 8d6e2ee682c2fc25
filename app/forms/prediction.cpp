#include "app/forms/prediction.h"

#include "engine/levels.h"

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

const Prediction::Powers& Prediction::powersAlong(const Segment& line, int points, BandSpan bands)
{
    const auto known = std::find_if(m_powers.begin(), m_powers.end(), [&](const Powers& powers) {
        return powers.line == line && powers.points == points && powers.bands == bands;
    });
    if (known != m_powers.end())
        return *known;
    const auto size = static_cast<std::size_t>(points);
    Powers powers{line, points, bands,
                  std::vector<float>(static_cast<std::size_t>(bands.count()) * size)};
    std::vector<float*> planes;
    for (std::size_t at = 0; at < powers.planes.size(); at += size)
        planes.push_back(powers.planes.data() + at);
    m_kernel->bandPowers(m_placed.sources, lineReceivers(line, points), bands, planes);
    m_powers.push_front(std::move(powers));
    if (m_powers.size() > kMostKept)
        m_powers.pop_back();
    return m_powers.front();
}

std::vector<float> Prediction::levelsAlong(const Segment& line, int points,
                                           const LevelChoice& choice)
{
    const Powers& powers = powersAlong(line, points, choice.bands);
    const auto size = static_cast<std::size_t>(points);
    std::vector<const float*> planes;
    for (std::size_t at = 0; at < powers.planes.size(); at += size)
        planes.push_back(powers.planes.data() + at);
    std::vector<float> levels(size);
    weightedLevels(planes, bandFactors(m_levels, choice), levels);
    return levels;
}

float Prediction::levelAt(const Point& point, const LevelChoice& choice) const
{
    return levelsAt(*m_kernel, m_levels, m_placed.sources, {&point, 1}, choice).front();
}

std::optional<AreaFigures> Prediction::figuresOf(const Segment& area, const LevelChoice& choice)
{
    return areaFigures(levelsAlong(area, kAreaReceivers, choice));
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
    const Powers& powers = powersAlong(line, points, {0, kBands - 1});
    const std::vector<float> factors =
        bandFactors(m_levels, {{0, kBands - 1}, choice.field, choice.aWeighted});
    const auto size = static_cast<std::size_t>(points);
    BandLevels levels;
    for (std::size_t band = 0; band < kBands; ++band) {
        levels[band].resize(size);
        const float* const plane = powers.planes.data() + band * size;
        weightedLevels({&plane, 1}, {&factors[band], 1}, levels[band]);
    }
    return levels;
}

} // namespace orva
