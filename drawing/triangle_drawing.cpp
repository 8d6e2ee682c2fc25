#include "drawing/triangle_drawing.h"

#include "drawing/scale.h"
#include "engine/triangle.h"
#include "lang/number_text.h"
#include "lang/string_table.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace orva {

namespace {

// Shares of the picture's width: radius of the arc, and how far the angle's figure begins left of
// the corner.
constexpr double kArc = 0.15;
constexpr double kFigureLeft = 0.035;

/// The scale in which the whole triangle, its arc and its labels lie in the middle of the surface.
void fitTriangle(DrawingSurface& surface, double side2, Point tip, const std::string& figure)
{
    ResetScale(surface);
    const Point letter = surface.textSize("1");
    const double figureShare = surface.textSize(figure).x / surface.pixelWidth();
    double left = std::min(0.0, tip.x);
    double right = std::max(side2, tip.x);
    double width = right - left;
    double top = 0;
    double bottom = 0;
    // Arc and labels grow with the picture; a few rounds come close enough.
    for (int round = 0; round < 12; ++round) {
        const double pixel = width / surface.pixelWidth();
        left = std::min(0.0, tip.x) - 3 * letter.x * pixel;
        right = std::max({side2 + kArc * width, tip.x + 3 * letter.x * pixel,
                          side2 + (figureShare - kFigureLeft) * width});
        top = std::max(-tip.y + letter.y * pixel, kArc * width);
        bottom = 1.5 * letter.y * pixel + (tip.x < side2 ? 0.05 * width : 0);
        width = std::max(right - left, (top + bottom) * surface.pixelAspect());
    }
    Scale scale = fittedScale(surface.pixelWidth(), surface.pixelHeight(), width * 1.05,
                              (top + bottom) * 1.05);
    scale.left = (left + right - scale.width) / 2;
    scale.top = (bottom - top - scale.height) / 2;
    surface.setScale(scale);
}

} // namespace

void DrawTriangle(DrawingSurface& surface, double side1, double side2, double side3,
                  const DrawingOptions& options)
{
    surface.clear();
    const auto solved = SolveTriangle(side1, side2, side3);
    if (const auto* fault = std::get_if<TriangleFault>(&solved)) {
        ResetScale(surface);
        const std::string text(MlGetString(
            options.text.language,
            *fault == TriangleFault::Side1TooLong ? Text::Side1TooLong : Text::Side1TooShort));
        const Point size = surface.textSize(text);
        surface.print({(surface.pixelWidth() - size.x) / 2, size.y}, text);
        return;
    }
    if (side2 == 0 || side3 == 0)
        return;
    const double angle = std::get<float>(solved);
    const double radians = angle * 0.017453292;
    const Point tip = {side2 + side3 * std::cos(radians), -side3 * std::sin(radians)};

    const std::string figure = plainText(angle, 2) + "°";
    fitTriangle(surface, side2, tip, figure);
    const Scale& scale = surface.scale();
    surface.line({0, 0}, {side2, 0}, Role::Side2, 2);
    surface.line({0, 0}, tip, Role::Side1, 2);
    surface.lineBy({side2, 0}, {tip.x - side2, tip.y}, Role::Side3, 2);
    surface.arc({side2, 0}, kArc * scale.width, 0, angle, Role::Ink);
    const Point line = surface.textSize("1");
    surface.print({side2 - kFigureLeft * scale.width, line.y * 0.2}, figure);
    surface.print({tip.x / 2 - line.x * 1.5, tip.y / 2 - line.y}, "1");
    surface.print({side2 / 2, line.y * 0.2}, "2");
    const double aside = angle <= 90 ? line.x : 0.05 * scale.width;
    surface.print(
        {side2 + (tip.x - side2) / 2 + aside, tip.y / 2 + (angle <= 90 ? 0 : 0.05 * scale.width)},
        "3");
}

} // namespace orva
