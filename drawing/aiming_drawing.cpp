#include "drawing/aiming_drawing.h"

#include "drawing/scale.h"
#include "lang/number_text.h"
#include "lang/string_table.h"

#include <algorithm>
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

/// What the colours of the lines say, in the lower left corner, `taken` pixels above the edge.
void drawLegend(DrawingSurface& surface, std::span<const AimingLine> lines,
                const DrawingOptions& options, LabelPlaces& labels, double taken)
{
    const Point size = surface.textSize(MlGetString(options.text.language, Text::AimToNone));
    const Point corner = {surface.scale().left,
                          surface.bottom() - 2.5 * size.y - taken * surface.pixelY()};
    labels.occupy(corner, {corner.x + size.x + 40 * surface.pixelX(), surface.bottom()});
    const ScaleKeeper keeper(surface);
    ResetScale(surface);
    const double height = surface.textSize("0").y;
    double y = surface.pixelHeight() - taken - height - 4;
    const auto entry = [&](bool meets, Role role, Text id) {
        const bool drawn = std::any_of(lines.begin(), lines.end(), [&](const AimingLine& line) {
            return line.meetsArea == meets;
        });
        if (!drawn)
            return;
        surface.line({6, y + height / 2}, {26, y + height / 2}, role, 2);
        surface.print({32, y}, MlGetString(options.text.language, id), role);
        y -= height;
    };
    entry(false, Role::Miss, Text::AimToNone);
    entry(true, Role::Aim, Text::AimToArea);
}

} // namespace

void DrawAimingLines(DrawingSurface& surface, std::span<const AimingLine> lines,
                     const BassBoxView& bassBox, double speedOfSound, const DrawingOptions& options,
                     LabelPlaces& labels, double taken)
{
    drawLegend(surface, lines, options, labels, taken);
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
