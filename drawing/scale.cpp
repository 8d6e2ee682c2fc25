#include "drawing/scale.h"

#include <cmath>
#include <vector>

namespace orva {

void ResetScale(DrawingSurface& surface)
{
    surface.setScale({0, 0, surface.pixelWidth(), surface.pixelHeight()});
}

void FitScale(DrawingSurface& surface, double width, double height)
{
    const double aspect = surface.pixelAspect();
    if (height / surface.pixelHeight() >= width / surface.pixelWidth())
        surface.setScale({0, 0, height * aspect, height});
    else
        surface.setScale({0, 0, width, width / aspect});
}

void DrawGrid(DrawingSurface& surface, Point origin, double unit, const TextOptions& options)
{
    const double spacing = options.Units_Meters ? unit : unit * 0.3048;
    const Scale& scale = surface.scale();
    if (!(spacing >= 2 * surface.pixelX()) || !(spacing >= 2 * surface.pixelY()))
        return;
    // From the first line strictly inside (none on the left or top edge itself) to the last edge.
    const auto places = [spacing](double through, double edge, double length) {
        const double first = through + (std::floor((edge - through) / spacing) + 1) * spacing;
        std::vector<double> lines;
        for (int i = 0; first + i * spacing <= edge + length && i * spacing <= length; ++i)
            lines.push_back(first + i * spacing);
        return lines;
    };
    for (const double y : places(origin.y, scale.top, scale.height))
        surface.line({scale.left, y}, {surface.right(), y}, kGridGrey);
    for (const double x : places(origin.x, scale.left, scale.width))
        surface.line({x, scale.top}, {x, surface.bottom()}, kGridGrey);
}

} // namespace orva
