#include "document/room_form.h"

#include "lang/number_text.h"
#include "lang/typed_number.h"

#include <algorithm>
#include <cmath>

namespace orva {

namespace {

/// 32-bit coordinates of large rooms are no finer.
constexpr double kSlackM = 1e-4;

bool within(double value, double low, double high)
{
    return value >= low - kSlackM && value <= high + kSlackM;
}

} // namespace

std::string shownLength(double metres, bool inMetres)
{
    return plainText(inMetres ? metres : metres * kFeetShownPerMetre, 3);
}

double metresOf(double shown, bool inMetres)
{
    return inMetres ? shown : shown * kMetresPerFoot;
}

std::optional<double> typedLength(std::string_view text, bool inMetres)
{
    const std::optional<TypedNumber> typed = typedNumber(text);
    if (!typed)
        return std::nullopt;
    const bool metres = typed->unit == "m";
    const bool feet = typed->unit == "ft" || typed->unit == "'";
    if (!metres && !feet && !typed->unit.empty())
        return std::nullopt;
    double shown = typed->value;
    if (metres && !inMetres)
        shown /= kMetresPerFoot;
    else if (feet && inMetres)
        shown *= kMetresPerFoot;
    return std::abs(metresOf(shown, inMetres)) <= kLongestM ? std::optional(shown) : std::nullopt;
}

std::optional<SegmentFigures> SyncAreaEntries(const SegmentFigures& area, AreaEntry entry,
                                              std::string_view text, bool inMetres)
{
    const std::optional<double> typed =
        entry == AreaEntry::Angle ? typedAngle(text) : typedLength(text, inMetres);
    return typed ? std::optional(SyncAreaEntries(area, entry, *typed, inMetres)) : std::nullopt;
}

SegmentFigures SyncAreaEntries(const SegmentFigures& area, AreaEntry entry, double typed,
                               bool inMetres)
{
    // All rounding happens in the unit that is shown.
    const double shown = inMetres ? 1 : kFeetShownPerMetre;
    std::array<double, 6> entries{};
    for (std::size_t i = 0; i < entries.size(); ++i)
        entries[i] = i == 4 ? area[i] : roundedTo(area[i] * shown, 3);
    entries[static_cast<std::size_t>(entry)] = typed;
    auto& [x1, y1, x2, y2, angle, length] = entries;

    if (entry == AreaEntry::X2 || entry == AreaEntry::Y2) {
        length = roundedTo(std::hypot(x2 - x1, y2 - y1), 2);
        angle = roundedTo(VectorAngle180(x2 - x1, y2 - y1), 2);
    } else {
        const double radians = angle * static_cast<double>(kRadiansPerDegree);
        x2 = roundedTo(x1 + length * std::cos(radians), 2);
        y2 = roundedTo(y1 + length * std::sin(radians), 2);
    }

    SegmentFigures synced = area;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const bool isTyped = i == static_cast<std::size_t>(entry);
        const double before = i == 4 ? area[i] : roundedTo(area[i] * shown, 3);
        if (isTyped || entries[i] != before)
            synced[i] =
                static_cast<float>(i == 4 || inMetres ? entries[i] : metresOf(entries[i], false));
    }
    return synced;
}

bool OutOfRoom::any() const
{
    return *this != OutOfRoom{};
}

OutOfRoom outOfRoom(const Room& room, const LineArray& array)
{
    const auto [width, height] = room.GFAGetRoomDims();
    const auto [refX, refY] = room.GFAGetPointOfRef();
    const auto outX = [&, w = width, r = refX](double x) { return !within(x, -r, w - r); };
    const auto outY = [&, h = height, r = refY](double y) { return !within(y, -r, h - r); };
    const auto out = [&](FloatPair point) {
        return std::array<bool, 2>{outX(point[0]), outY(point[1])};
    };

    OutOfRoom outside;
    outside.cradle = out(array.GFAGetCradleCoord());
    if (array.GBGetBassBox())
        outside.bassBox = out(array.GFAGetBassBoxCoord());
    outside.foh = out(room.GFAGetFOH());
    outside.reference = {!within(refX, 0, width), !within(refY, 0, height)};
    for (int number = 1; number <= room.GIGetNumAreas(); ++number) {
        const auto [start, end, angle, length] = room.area(number);
        outside.areas[static_cast<std::size_t>(number - 1)] = {outX(start.x), outY(start.y),
                                                               outX(end.x), outY(end.y)};
    }
    return outside;
}

std::optional<int> FindAreaAt(const Room& room, double x, double y)
{
    const auto [width, height] = room.GFAGetRoomDims();
    const auto [refX, refY] = room.GFAGetPointOfRef();
    if (x < -refX || x > width - refX || y < -refY || y > height - refY)
        return std::nullopt;

    std::optional<int> nearest;
    double smallest = std::max(0.5, std::trunc(std::min<double>(width, height)) / 2);
    for (int number = 1; number <= room.GIGetNumAreas(); ++number) {
        const double distance = room.area(number).distanceTo({x, y});
        if (distance < smallest) {
            smallest = distance;
            nearest = number;
        }
    }
    return nearest;
}

bool setArea(Room& room, int number, const SegmentFigures& area)
{
    switch (number) {
    case 1:
        return room.GBSetAudienceArea1(area);
    case 2:
        return room.GBSetAudienceArea2(area);
    case 3:
        return room.GBSetAudienceArea3(area);
    default:
        return false;
    }
}

} // namespace orva
