#include "drawing/contours.h"

#include "drawing/scale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string>

namespace orva {

namespace {

constexpr int kStepDb = 3;
/// Levels of finer maps are taken every so many pixels: more would only be drawn twice.
constexpr double kPixelsPerSquare = 3;
constexpr double kPixelsBetweenLabels = 260;

using Corners = std::array<float, 4>; ///< of a square, clockwise from the upper left

/// Where a level crosses the side of a square that begins at a corner.
Point crossing(const Corners& corners, std::size_t side, double level)
{
    constexpr std::array<Point, 4> kStart = {{{0, 0}, {1, 0}, {1, 1}, {0, 1}}};
    const std::size_t next = (side + 1) % 4;
    const double part =
        (level - corners[side]) / (static_cast<double>(corners[next]) - corners[side]);
    return {kStart[side].x + part * (kStart[next].x - kStart[side].x),
            kStart[side].y + part * (kStart[next].y - kStart[side].y)};
}

/// The lines of one level through a square: none, one, or two at a saddle.
void addPieces(const Corners& corners, Point origin, int level, std::vector<ContourPiece>& pieces)
{
    std::array<Point, 4> ends;
    std::size_t count = 0;
    for (std::size_t side = 0; side < 4; ++side)
        if ((corners[side] < static_cast<float>(level)) !=
            (corners[(side + 1) % 4] < static_cast<float>(level))) {
            const Point at = crossing(corners, side, level);
            ends[count++] = {origin.x + at.x, origin.y + at.y};
        }
    for (std::size_t i = 0; i + 1 < count; i += 2)
        pieces.push_back({ends[i], ends[i + 1], level});
}

/// Every so many-th column and row of the map, so that squares are no smaller than seen.
struct Thinned {
    std::vector<float> levels;
    int columns;
    int rows;
    int stride;
};

Thinned thinned(const MapGrid& grid, const SummedMap& map, double pixel)
{
    const double smallest = std::min(grid.CellW, grid.CellH);
    const int stride =
        std::max(1, static_cast<int>(std::lround(kPixelsPerSquare * pixel / smallest)));
    Thinned thin{{}, (grid.columns - 1) / stride + 1, (grid.rows - 1) / stride + 1, stride};
    thin.levels.reserve(static_cast<std::size_t>(thin.columns) *
                        static_cast<std::size_t>(thin.rows));
    for (int row = 0; row < grid.rows; row += stride)
        for (int column = 0; column < grid.columns; column += stride)
            thin.levels.push_back(
                map.levels[static_cast<std::size_t>(row) * static_cast<std::size_t>(grid.columns) +
                           static_cast<std::size_t>(column)]);
    return thin;
}

} // namespace

std::vector<ContourPiece> contourPieces(std::span<const float> levels, int columns, int rows,
                                        int stepDb)
{
    std::vector<ContourPiece> pieces;
    const auto width = static_cast<std::size_t>(columns);
    for (std::size_t row = 0; row + 1 < static_cast<std::size_t>(rows); ++row)
        for (std::size_t column = 0; column + 1 < width; ++column) {
            const float* upper = levels.data() + row * width + column;
            const Corners corners = {upper[0], upper[1], upper[width + 1], upper[width]};
            const auto [least, largest] = std::minmax_element(corners.begin(), corners.end());
            if (!std::isfinite(*least) || !std::isfinite(*largest))
                continue;
            const int first = static_cast<int>(std::floor(*least / static_cast<float>(stepDb))) + 1;
            const int last = static_cast<int>(std::floor(*largest / static_cast<float>(stepDb)));
            for (int level = first; level <= last; ++level)
                addPieces(corners, {static_cast<double>(column), static_cast<double>(row)},
                          level * stepDb, pieces);
        }
    return pieces;
}

void DrawContours(DrawingSurface& surface, const MapGrid& grid, const SummedMap& map,
                  const LevelColours& colours, LabelPlaces& labels)
{
    const Thinned thin = thinned(grid, map, surface.pixelX());
    const Point first = drawn(grid.CellCentre(0, 0));
    const Point pitch = {static_cast<double>(grid.CellW) * thin.stride,
                         static_cast<double>(grid.CellH) * thin.stride};
    const auto place = [&](Point at) {
        return Point{first.x + at.x * pitch.x, first.y + at.y * pitch.y};
    };
    std::map<int, std::vector<Point>> labelled;
    for (const ContourPiece& piece : contourPieces(thin.levels, thin.columns, thin.rows, kStepDb)) {
        const Point from = place(piece.from);
        const Colour ink = textColourOn(colours.at(static_cast<float>(piece.levelDb)));
        surface.line(from, place(piece.to), ink, 1);
        std::vector<Point>& others = labelled[piece.levelDb];
        const bool near = std::any_of(others.begin(), others.end(), [&](Point other) {
            return std::hypot(other.x - from.x, other.y - from.y) <
                   kPixelsBetweenLabels * surface.pixelX();
        });
        if (!near && labels.reserve(from, std::to_string(piece.levelDb)))
            others.push_back(from);
    }
    labels.printReserved();
}

} // namespace orva
