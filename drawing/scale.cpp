#include "drawing/scale.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace orva {

Zoom Zoom::at(double partX, double partY, double times) const
{
    const double wanted = std::clamp(factor * times, 1.0, kMost);
    Zoom zoomed{wanted, x + partX * (1 / factor - 1 / wanted),
                y + partY * (1 / factor - 1 / wanted)};
    return zoomed.panned(0, 0);
}

Zoom Zoom::panned(double partX, double partY) const
{
    const double most = 1 - 1 / factor;
    return {factor, std::clamp(x + partX / factor, 0.0, most),
            std::clamp(y + partY / factor, 0.0, most)};
}

void ResetScale(DrawingSurface& surface)
{
    surface.setScale({0, 0, surface.pixelWidth(), surface.pixelHeight()});
}

Scale fittedScale(double pixelWidth, double pixelHeight, double width, double height)
{
    const double aspect = pixelWidth / pixelHeight;
    if (height / pixelHeight >= width / pixelWidth)
        return {0, 0, height * aspect, height};
    return {0, 0, width, width / aspect};
}

void FitScale(DrawingSurface& surface, double width, double height)
{
    surface.setScale(fittedScale(surface.pixelWidth(), surface.pixelHeight(), width, height));
}

namespace {

double gridSpacing(double unit, const TextOptions& options)
{
    return options.Units_Meters ? unit : unit * 0.3048;
}

} // namespace

bool gridFits(const DrawingSurface& surface, double unit, const TextOptions& options)
{
    const double spacing = gridSpacing(unit, options);
    return spacing >= 2 * surface.pixelX() && spacing >= 2 * surface.pixelY();
}

void DrawGrid(DrawingSurface& surface, Point origin, double unit, const TextOptions& options)
{
    if (!gridFits(surface, unit, options))
        return;
    const double spacing = gridSpacing(unit, options);
    const Scale& scale = surface.scale();
    // From the first line strictly inside (none on the left or top edge itself) to the last edge.
    const auto places = [spacing](double through, double edge, double length) {
        const double first = through + (std::floor((edge - through) / spacing) + 1) * spacing;
        std::vector<double> lines;
        for (int i = 0; first + i * spacing <= edge + length && i * spacing <= length; ++i)
            lines.push_back(first + i * spacing);
        return lines;
    };
    for (const double y : places(origin.y, scale.top, scale.height))
        surface.line({scale.left, y}, {surface.right(), y}, Role::Grid);
    for (const double x : places(origin.x, scale.left, scale.width))
        surface.line({x, scale.top}, {x, surface.bottom()}, Role::Grid);
}

std::vector<double> labelledDistances(const DrawingSurface& surface, double length, double pixels,
                                      const DrawingOptions& options)
{
    double step = options.GridUnit_Area;
    while (length > 0 && step / length * pixels < surface.textSize("0000").x)
        step *= 2;
    std::vector<double> distances;
    for (int tick = 0; tick * step <= length; ++tick)
        distances.push_back(tick * step);
    return distances;
}

} // namespace orva
