#include "drawing/aiming_drawing.h"

#include "drawing/scale.h"
#include "lang/number_text.h"
#include "lang/string_table.h"

#include <string>

namespace orva {

namespace {

std::string labelOf(const AimingLine& line, const BassBoxView& bassBox, double speedOfSound,
                    const DrawingOptions& options)
{
    const std::string ms(MlGetString(options.text.language, Text::Milliseconds));
    if (bassBox.used && bassBox.showDelay)
        return fixedText(bassBoxDelayMs(line, bassBox.place, speedOfSound), 0) + ms;
    return fixedText(line.lengthM * options.text.lengthFactor(), 0) +
           (options.text.Units_Meters ? "m   " : "ft  ") +
           fixedText(travelTimeMs(line.lengthM, speedOfSound), 0) + ms;
}

} // namespace

void DrawAimingLines(DrawingSurface& surface, std::span<const AimingLine> lines,
                     const BassBoxView& bassBox, double speedOfSound, const DrawingOptions& options,
                     LabelPlaces& labels)
{
    for (const AimingLine& line : lines) {
        const Point from = drawn(line.from);
        const Point to = drawn(line.to);
        if (!line.meetsArea) {
            surface.line(from, to, Role::Miss);
            continue;
        }
        if (line.lengthM <= kAimingReachM) {
            surface.line(from, to, Role::Aim);
        } else {
            const double part = kAimingReachM / line.lengthM;
            surface.line(from, to, Role::Miss);
            surface.lineBy(from, {(to.x - from.x) * part, (to.y - from.y) * part}, Role::Aim);
        }
    }
    // Over all lines, so that none runs through a figure.
    for (const AimingLine& line : lines)
        if (line.meetsArea)
            labels.print(drawn(line.to), labelOf(line, bassBox, speedOfSound, options));
    if (bassBox.used) {
        const Point foot = drawn({bassBox.place[0], bassBox.place[1]});
        surface.rectangle({foot.x - 0.4, foot.y - 1.1}, foot, Role::Array);
    }
}

} // namespace orva
