#pragma once

#include "model/line_array.h"
#include "model/room.h"

#include <array>
#include <optional>
#include <string_view>

namespace orva {

/// The figures of an audience area on the Room page.
enum class AreaEntry { X1, Y1, X2, Y2, Angle, Length };
inline constexpr std::array kAreaEntries = {AreaEntry::X1, AreaEntry::Y1,    AreaEntry::X2,
                                            AreaEntry::Y2, AreaEntry::Angle, AreaEntry::Length};

/// Feet as people type them.
constexpr double kMetresPerFoot = 0.3048;
constexpr double kFeetShownPerMetre = 3.2808399;

/// Longer than any venue; what is typed beyond it is a slip.
constexpr double kLongestM = 10000;

/// A length in metres as it is shown in the unit of the user. To three decimals, so what is typed
/// in feet comes back as typed.
std::string shownLength(double metres, bool inMetres);

/// A length typed whole, as a figure in the unit of the user, whatever unit was typed behind it
/// ("33ft", "10 m", "4'"). None for what is no complete number, another unit, or beyond kLongestM
/// either way.
std::optional<double> typedLength(std::string_view text, bool inMetres);
/// A figure in the unit of the user in metres.
double metresOf(double shown, bool inMetres);

/// `area` with one entry typed anew, in the unit of the user; the others follow: a new start, angle
/// or length moves the end, a new end changes angle and length. Rounded to two decimals of that
/// unit.
SegmentFigures SyncAreaEntries(const SegmentFigures& area, AreaEntry entry, double typed,
                               bool inMetres);

/// The same for a text; none where it is no complete figure.
std::optional<SegmentFigures> SyncAreaEntries(const SegmentFigures& area, AreaEntry entry,
                                              std::string_view text, bool inMetres);

/// The entries that lie outside the room.
struct OutOfRoom {
    std::array<bool, 2> cradle{};
    std::array<bool, 2> bassBox{}; ///< where one is used
    std::array<bool, 2> foh{};
    std::array<bool, 2> reference{};
    std::array<std::array<bool, 4>, Room::kAreas> areas{}; ///< of those in use: x1, y1, x2, y2

    bool any() const;
    friend bool operator==(const OutOfRoom&, const OutOfRoom&) = default;
};
OutOfRoom outOfRoom(const Room& room, const LineArray& array);

/// The number of the audience area nearest to a point (room frame), the lower on equal distances;
/// none outside the room or farther off than half of the smaller of the room's width and height in
/// whole metres (0.5 m at least).
std::optional<int> FindAreaAt(const Room& room, double x, double y);

/// Writes area `number` (1..3); false when the room refuses it.
bool setArea(Room& room, int number, const SegmentFigures& area);

} // namespace orva
