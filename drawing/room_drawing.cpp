#include "drawing/room_drawing.h"

#include "drawing/scale.h"
#include "lang/number_text.h"
#include "lang/string_table.h"

#include <cmath>

namespace orva {

namespace {

constexpr double kMarginPixels = 30;

std::string text(const DrawingOptions& options, Text id)
{
    return std::string(MlGetString(options.text.language, id));
}

} // namespace

Scale roomViewScale(const Room& room, double pixelWidth, double pixelHeight)
{
    const auto [width, height] = room.GFAGetRoomDims();
    const auto [refX, refY] = room.GFAGetPointOfRef();
    Scale scale = fittedScale(pixelWidth, pixelHeight, width * (1 + kMarginPixels / pixelWidth),
                              height * (1 + kMarginPixels / pixelHeight));
    scale.left = -((scale.width - width) / 2 + refX);
    scale.top = -(static_cast<double>(height) - refY + (scale.height - height) / 2);
    return scale;
}

Size devicePixel(const Room& room, double pixelWidth, double pixelHeight, double ratio)
{
    const Scale shown = roomViewScale(room, pixelWidth, pixelHeight);
    return {shown.width / (pixelWidth * ratio), shown.height / (pixelHeight * ratio)};
}

Point GRoomSetup(DrawingSurface& surface, const Room& room)
{
    surface.setScale(
        surface.zoom().of(roomViewScale(room, surface.pixelWidth(), surface.pixelHeight())));
    return {-surface.scale().left, -surface.scale().top};
}

void DrawRoomGrid(DrawingSurface& surface, const DrawingOptions& options)
{
    DrawGrid(surface, {0, 0}, options.GridUnit_Room, options.text);
}

void GDrawRoomOutline(DrawingSurface& surface, const Room& room)
{
    surface.rectangle(drawn(room.wall(3).start), drawn(room.wall(1).end), Role::Wall, 3);
}

void GDrawCoord(DrawingSurface& surface, const Room& room, const DrawingOptions& options)
{
    const Scale user = surface.scale();
    const auto [refX, refY] = room.GFAGetPointOfRef();
    const Point corner = {(-refX - user.left) / surface.pixelX(),
                          (refY - user.top) / surface.pixelY()};

    const bool gridShown = gridFits(surface, options.GridUnit_Room, options.text);
    const ScaleKeeper keeper(surface);
    ResetScale(surface);
    surface.lineBy(corner, {30, 0}, Role::AxisX);
    surface.lineBy(corner, {0, -30}, Role::AxisY);
    surface.print({corner.x - 13, corner.y - 28}, "Y", Role::AxisY);
    surface.print({corner.x + 20, corner.y + 2}, "X", Role::AxisX);
    if (gridShown)
        surface.print({4, 3}, text(options, Text::RoomScale) + plainText(options.GridUnit_Room, 3) +
                                  ' ' + std::string(lengthUnit(options.text)));
}

void GDrawAreas(DrawingSurface& surface, const Room& room, const DrawingOptions& options)
{
    for (int number = 1; number <= room.GIGetNumAreas(); ++number) {
        const Segment area = room.area(number);
        surface.line(drawn(area.start), drawn(area.end), Role::Area, 2);
    }
    const Scale& scale = surface.scale();
    surface.print({0, -0.01 * scale.height}, text(options, Text::ReferenceMark));
    surface.circle({0, 0}, 0.005 * scale.width, Role::AxisX);
    surface.circle({0, 0}, 0.0005 * scale.width, Role::Ink);

    const Point foh = drawn(room.foh());
    const Point top = {foh.x, foh.y - 0.3};
    surface.line(foh, top, Role::Foh);
    surface.line(top, {foh.x + 0.5, foh.y}, Role::Foh);
}

void GDrawRoomBasic(DrawingSurface& surface, const Room& room, const DrawingOptions& options,
                    bool clear)
{
    if (clear)
        surface.clear();
    GRoomSetup(surface, room);
    DrawRoomGrid(surface, options);
    GDrawRoomOutline(surface, room);
    GDrawCoord(surface, room, options);
    GDrawAreas(surface, room, options);
}

void drawFohLevel(LabelPlaces& labels, const Room& room, float levelDb, bool aWeighted)
{
    labels.print(drawn(room.foh()), levelText(levelDb) + (aWeighted ? " dB(A)" : " dB"));
}

} // namespace orva
