#include "drawing/sub_array_drawing.h"

#include <algorithm>
#include <string>

namespace orva {

void DrawSubArray(DrawingSurface& surface, const SubArray& subArray, const SubArrayFigures& figures)
{
    const auto& positions = subArray.SubPos;
    const double most = std::max(0.0F, *std::max_element(positions.begin(), positions.end()));
    const double least = std::min(0.0F, *std::min_element(positions.begin(), positions.end()));
    const double reach = std::max(most, -least);
    const double width = reach <= 5 ? 11.5 : 2.1 * reach + 1;
    const double height = most <= 5 ? 7 : most + 2;
    surface.clear();
    surface.setScale({-width / 2, -(height - 1), width, height});
    for (std::size_t i = 0; i < positions.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        const auto box = [&](double y, Role colour) {
            const Point corner = {positions[i] - 0.55, y - 0.2};
            surface.fillRectangle(corner, {corner.x + 1.1, corner.y + 0.4}, colour);
            const Point size = surface.textSize(number);
            surface.print({positions[i] - size.x / 2, y - size.y / 2}, number, Role::Canvas);
        };
        box(0, Role::SubBox);
        box(-figures.virtualDistance[i], Role::SubVirtual);
    }
}

} // namespace orva
