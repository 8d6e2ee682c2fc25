#include "drawing/triangle_drawing.h"

#include "drawing/scale.h"
#include "engine/triangle.h"
#include "lang/number_text.h"
#include "lang/string_table.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace orva {

void DrawTriangle(DrawingSurface& surface, double side1, double side2, double side3,
                  const DrawingOptions& options)
{
    constexpr int kSide1TooLong = 192;
    constexpr int kSide1TooShort = 193;
    constexpr Colour kSide1 = 0xFF00FF;
    surface.clear();
    const auto solved = SolveTriangle(side1, side2, side3);
    if (const auto* fault = std::get_if<TriangleFault>(&solved)) {
        ResetScale(surface);
        const std::string text(
            MlGetString(options.text.language,
                        *fault == TriangleFault::Side1TooLong ? kSide1TooLong : kSide1TooShort));
        const Point size = surface.textSize(text);
        surface.print({(surface.pixelWidth() - size.x) / 2, size.y}, text);
        return;
    }
    if (side2 == 0 || side3 == 0)
        return;
    const double angle = std::get<float>(solved);
    const double radians = angle * 0.017453292;
    const Point tip = {side2 + side3 * std::cos(radians), -side3 * std::sin(radians)};

    // The whole triangle with a margin for its labels, in the middle of the surface.
    const double left = std::min(0.0, tip.x);
    const double right = std::max(side2, tip.x);
    FitScale(surface, (right - left) * 1.35, std::max(-tip.y * 1.6, (right - left) * 0.2));
    Scale scale = surface.scale();
    scale.left = (left + right - scale.width) / 2;
    scale.top = (tip.y - scale.height) / 2;
    surface.setScale(scale);

    surface.line({0, 0}, {side2, 0}, kRed, 2);
    surface.line({0, 0}, tip, kSide1, 2);
    surface.lineBy({side2, 0}, {tip.x - side2, tip.y}, kBlue, 2);
    surface.arc({side2, 0}, 0.15 * scale.width, 0, angle, kBlack);
    const Point line = surface.textSize("1");
    surface.print({side2 - 0.035 * scale.width, line.y * 0.2}, plainText(angle, 2) + "°");
    surface.print({tip.x / 2 - line.x * 1.5, tip.y / 2 - line.y}, "1");
    surface.print({side2 / 2, line.y * 0.2}, "2");
    const double aside = angle <= 90 ? line.x : 0.05 * scale.width;
    surface.print(
        {side2 + (tip.x - side2) / 2 + aside, tip.y / 2 + (angle <= 90 ? 0 : 0.05 * scale.width)},
        "3");
}

} // namespace orva
