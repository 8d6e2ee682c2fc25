#include "drawing/scale.h"

#include "lang/string_table.h"

#include <cmath>

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
    // the first line strictly inside: none on the left or top edge itself
    const auto first = [spacing](double through, double edge) {
        return through + (std::floor((edge - through) / spacing) + 1) * spacing;
    };
    for (double y = first(origin.y, scale.top); y <= surface.bottom(); y += spacing)
        surface.line({scale.left, y}, {surface.right(), y}, kGridGrey);
    for (double x = first(origin.x, scale.left); x <= surface.right(); x += spacing)
        surface.line({x, scale.top}, {x, surface.bottom()}, kGridGrey);
}

std::string lengthUnit(const TextOptions& options)
{
    constexpr int kMetres = 14;
    constexpr int kFeet = 1004;
    return std::string(MlGetString(options.language, options.Units_Meters ? kMetres : kFeet));
}

} // namespace orva
