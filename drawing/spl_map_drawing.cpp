#include "drawing/spl_map_drawing.h"

#include "drawing/scale.h"
#include "lang/number_text.h"
#include "lang/string_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace orva {

namespace {

/// Edges of the columns or rows; the outer cells reach to the room's walls.
std::vector<double> cellEdges(double start, double length, double margin, double cell, int count)
{
    std::vector<double> edges(static_cast<std::size_t>(count) + 1);
    for (std::size_t i = 0; i < edges.size(); ++i)
        edges[i] = start + margin + static_cast<double>(i) * cell;
    edges.front() = start;
    edges.back() = start + length;
    return edges;
}

std::string decibels(float level)
{
    return std::isfinite(level) ? fixedText(level, 1) + "dB" : "-";
}

/// In pixels.
struct Legend {
    std::array<std::string, 4> lines;
    Point corner;
    Point opposite;
    double pitch;
};

Legend legendOf(DrawingSurface& surface, const SummedMap& map, const DrawingOptions& options)
{
    const ScaleKeeper keeper(surface);
    ResetScale(surface);
    const auto text = [&](Text id) { return std::string(MlGetString(options.text.language, id)); };
    const double height = surface.textSize("0").y;
    Legend legend{
        {text(Text::MapMax), decibels(map.max), text(Text::MapMin), decibels(map.min)}, {}, {}, 0};
    legend.pitch = std::max(0.018 * surface.pixelHeight(), height);
    // below the grid unit that stands in the corner
    const double first = std::max(1.2 * legend.pitch, 3 + 1.2 * height);
    const double left = std::max(4.0, 0.01 * surface.pixelWidth());
    double width = 0;
    for (const std::string& line : legend.lines)
        width = std::max(width, surface.textSize(line).x);
    legend.corner = {left - 2, first};
    legend.opposite = {left + width + 2, first + 4 * legend.pitch};
    return legend;
}

void drawColourBar(DrawingSurface& surface, const SummedMap& map, const LevelColours& colours)
{
    if (!std::isfinite(map.max))
        return;
    const ScaleKeeper keeper(surface);
    ResetScale(surface);
    // As many whole dB as both ends need, at most a hundred steps.
    const bool own = colours.ownRange();
    const double lowest =
        !own && std::isfinite(map.min) ? static_cast<double>(map.min) : colours.startDb();
    const int low = static_cast<int>(std::floor(lowest));
    const int high =
        std::max(static_cast<int>(std::ceil(own ? colours.endDb() : map.max)), low + 1);
    const double height = colourBarHeight(surface);
    double narrowest = 20;
    for (const int level : {low, high})
        narrowest = std::max(narrowest, surface.textSize(std::to_string(level) + "   ").x);

    int span = high - low;
    int step = 1;
    const auto boxWidth = [&] {
        const int boxes = span / step + 1;
        return std::floor(surface.pixelWidth() / boxes);
    };
    while (boxWidth() < narrowest && step < 100) {
        ++step;
        span = (high - low + step - 1) / step * step;
    }
    const double width = boxWidth();
    const double bottom = surface.pixelHeight();
    const int boxes = static_cast<int>(std::nearbyint(surface.pixelWidth() / width));
    for (int i = 0; i <= boxes; ++i) {
        const int level = low + i * step;
        const Colour colour = colours.at(static_cast<float>(level));
        surface.fillRectangle({i * width, bottom - height}, {(i + 1) * width, bottom}, colour);
        const std::string label = std::to_string(level);
        const Point size = surface.textSize(label);
        // A last box that the picture cuts keeps its number, where that does not meet the one
        // before.
        const double left =
            std::min(i * width + (width - size.x) / 2, surface.pixelWidth() - size.x - 1);
        if (left >= i * width)
            surface.print({left, bottom - (height + size.y) / 2}, label, textColourOn(colour));
    }
}

} // namespace

void RenderSPLMap(DrawingSurface& surface, const Room& room, const MapGrid& grid,
                  const SummedMap& map, const LevelColours& colours)
{
    const Colour silent = surface.colour(Role::Canvas);
    const auto rowColours = [&](std::size_t row, std::span<Colour> cells) {
        const float* levels = map.levels.data() + row * cells.size();
        std::transform(levels, levels + cells.size(), cells.begin(), [&](float level) {
            return std::isfinite(level) ? colours.at(level) : silent;
        });
    };
    const auto [width, height] = room.GFAGetRoomDims();
    surface.cells(cellEdges(grid.left, width, grid.OffX, grid.CellW, grid.columns),
                  cellEdges(-grid.top, height, grid.OffY, grid.CellH, grid.rows), rowColours);
    drawColourBar(surface, map, colours);
}

double colourBarHeight(DrawingSurface& surface)
{
    const ScaleKeeper keeper(surface);
    ResetScale(surface);
    return std::max(23.0, 1.5 * surface.textSize("0").y);
}

void occupyMapLegend(LabelPlaces& labels, DrawingSurface& surface, const SummedMap& map,
                     const DrawingOptions& options)
{
    const Scale shown = surface.scale();
    const Point pixel = {surface.pixelX(), surface.pixelY()};
    const Legend legend = legendOf(surface, map, options);
    labels.occupy({shown.left, shown.top}, {shown.left + legend.opposite.x * pixel.x,
                                            shown.top + legend.opposite.y * pixel.y});
}

void DrawMapLegend(DrawingSurface& surface, const SummedMap& map, const DrawingOptions& options)
{
    const Legend legend = legendOf(surface, map, options);
    const ScaleKeeper keeper(surface);
    ResetScale(surface);
    surface.fillRectangle(legend.corner, legend.opposite, Role::Canvas);
    for (std::size_t i = 0; i < legend.lines.size(); ++i)
        surface.print(
            {legend.corner.x + 2, legend.corner.y + static_cast<double>(i) * legend.pitch},
            legend.lines[i]);
}

} // namespace orva
