#include "drawing/level_colours.h"

#include "drawing/diverging_colours.h"
#include "drawing/even_colours.h"
#include "drawing/spl_colour.h"

#include <algorithm>

namespace orva {

namespace {

constexpr double kBelowMeanDb = 15;
constexpr double kAboveMeanDb = 6;

/// The given hues, in the order in which they are counted: from the end of a range to its start.
const std::array<Colour, 256>& hues()
{
    static const auto kColours = [] {
        std::array<Colour, 256> colours{};
        for (std::size_t hue = 0; hue < colours.size(); ++hue)
            colours[hue] = SplColour(static_cast<int>(hue), 255, 255);
        return colours;
    }();
    return kColours;
}

/// Without the red end that is the same as the other: from violet, quiet, to red, loud.
const std::array<Colour, 256>& risingHues()
{
    static const auto kColours = [] {
        constexpr int kQuietest = 212;
        std::array<Colour, 256> colours{};
        for (std::size_t i = 0; i < colours.size(); ++i)
            colours[i] = hues()[(255 - i) * kQuietest / 255];
        return colours;
    }();
    return kColours;
}

} // namespace

LevelColours::LevelColours(const MapStyle& style, float largestDb,
                           std::optional<double> audienceMeanDb)
    : m_ownRange(style.range == MapRange::Audience && audienceMeanDb.has_value())
{
    const HueRange given = HueRange::of(largestDb);
    m_startDb = m_ownRange ? *audienceMeanDb - kBelowMeanDb : given.startDb;
    m_spanDb = m_ownRange ? kBelowMeanDb + kAboveMeanDb : given.spanDb;
    m_repeats = style.colours == MapColours::Classic && !m_ownRange;
    m_colours = m_repeats                              ? &hues()
                : style.colours == MapColours::Classic ? &risingHues()
                                                       : &evenColours();
    m_stepsPerDb = (m_repeats ? -256.0F : 256.0F) / m_spanDb;
}

LevelColours LevelColours::ofDifference(float smallestDb, float largestDb)
{
    static const auto kColours = [] {
        std::array<Colour, 256> colours{};
        for (std::size_t i = 0; i < colours.size(); ++i)
            colours[i] = divergingColour((static_cast<double>(i) + 0.5) / 128 - 1);
        return colours;
    }();
    constexpr double kMostDb = 12;
    double most = 1;
    for (const float level : {smallestDb, largestDb})
        if (std::isfinite(level))
            most = std::clamp(std::ceil(std::abs(static_cast<double>(level))), most, kMostDb);
    return {Range{-most, 2 * most}, kColours};
}

LevelColours LevelColours::ofEvenness(float smallestDb)
{
    static const auto kColours = [] {
        std::array<Colour, 256> colours = evenColours();
        std::reverse(colours.begin(), colours.end());
        return colours;
    }();
    constexpr double kSpanDb = 6;
    const double start = std::isfinite(smallestDb) ? static_cast<double>(smallestDb) : 0;
    return {Range{std::floor(start), kSpanDb}, kColours};
}

Colour textColourOn(Colour colour)
{
    const Colour brightness =
        299 * (colour & 0xFF) + 587 * (colour >> 8 & 0xFF) + 114 * (colour >> 16 & 0xFF);
    return brightness < 90000 ? kWhite : kBlack;
}

} // namespace orva
