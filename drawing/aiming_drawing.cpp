#include "drawing/aiming_drawing.h"

#include "lang/number_text.h"
#include "lang/string_table.h"

#include <algorithm>
#include <string>
#include <vector>

namespace orva {

namespace {

Point drawn(Point room)
{
    return {room.x, -room.y};
}

std::string labelOf(const AimingLine& line, const BassBoxView& bassBox, double speedOfSound,
                    const DrawingOptions& options)
{
    constexpr int kMilliseconds = 12;
    const std::string ms(MlGetString(options.text.language, kMilliseconds));
    if (bassBox.used && bassBox.showDelay)
        return fixedText(bassBoxDelayMs(line, bassBox.place, speedOfSound), 0) + ms;
    return fixedText(line.lengthM * options.text.lengthFactor(), 0) +
           (options.text.Units_Meters ? "m   " : "ft  ") +
           fixedText(travelTimeMs(line.lengthM, speedOfSound), 0) + ms;
}

struct Box {
    Point corner;
    Point size;

    bool touches(const Box& other) const
    {
        return corner.x < other.corner.x + other.size.x && other.corner.x < corner.x + size.x &&
               corner.y < other.corner.y + other.size.y && other.corner.y < corner.y + size.y;
    }
};

/// A free place for a text at `at`: there, or as many lines further down as it takes.
Box freePlace(const DrawingSurface& surface, Point at, Point size, const std::vector<Box>& taken)
{
    Box place = {at, size};
    place.corner.x = std::min(place.corner.x, surface.right() - size.x);
    const auto touches = [&](const Box& box) { return place.touches(box); };
    while (std::any_of(taken.begin(), taken.end(), touches) &&
           place.corner.y + 2 * size.y < surface.bottom())
        place.corner.y += size.y;
    return place;
}

} // namespace

void DrawAimingLines(DrawingSurface& surface, std::span<const AimingLine> lines,
                     const BassBoxView& bassBox, FloatPair foh, double speedOfSound,
                     const DrawingOptions& options)
{
    std::vector<Box> taken = {{drawn({foh[0], foh[1]}), surface.textSize("-100.0 dB(A)")}};
    for (const AimingLine& line : lines) {
        const Point from = drawn(line.from);
        const Point to = drawn(line.to);
        if (!line.meetsArea) {
            surface.line(from, to, kBlack);
            continue;
        }
        if (line.lengthM <= kAimingReachM) {
            surface.line(from, to, kBlue);
        } else {
            const double part = kAimingReachM / line.lengthM;
            surface.line(from, to, kBlack);
            surface.lineBy(from, {(to.x - from.x) * part, (to.y - from.y) * part}, kBlue);
        }
        const std::string label = labelOf(line, bassBox, speedOfSound, options);
        taken.push_back(freePlace(surface, to, surface.textSize(label), taken));
        surface.print(taken.back().corner, label);
    }
    if (bassBox.used) {
        const Point foot = drawn({bassBox.place[0], bassBox.place[1]});
        surface.rectangle({foot.x - 0.4, foot.y - 1.1}, foot, kBlack);
    }
}

} // namespace orva
