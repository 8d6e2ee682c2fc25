#pragma once

#include "document/history.h"

#include <optional>
#include <vector>

namespace orva {

/// What can be taken hold of in the side section.
enum class HandleKind { PickPoint, BassBox, Foh, Reference, AreaStart, AreaEnd, Area };

struct Handle {
    HandleKind kind;
    int area = 0; ///< 1..3 of the kinds that have one

    /// Whether it belongs to what the lock holds.
    bool ofArray() const { return kind == HandleKind::PickPoint || kind == HandleKind::BassBox; }
    StepName step() const;
    friend bool operator==(const Handle&, const Handle&) = default;
};

/// Where it is, room frame in metres; of a whole area its start, of the point of reference its
/// place in the room.
Point placeOf(const DocumentState& state, const Handle& handle);

/// The handle at a point of the room frame, `reachM` metres or less away: a point before a whole
/// area, the nearest of several. Without the array only those of the room.
std::optional<Handle> handleAt(const DocumentState& state, const Point& point, double reachM,
                               bool withArray);

/// How far a handle was dragged or is nudged, and how that is read.
struct Shift {
    Size byM;
    bool inMetres = true;      ///< the unit of the user
    bool onRaster = true;      ///< to tenths of that unit, else to hundredths
    bool alongOneAxis = false; ///< the one along which it went farther
};

/// Moves a handle as typing the same figures would: the start of an area alone, its end alone, a
/// whole area with its end. `start` is the state where the drag began. False when refused.
bool moveHandle(DocumentState& state, const DocumentState& start, const Handle& handle,
                const Shift& shift, bool autoCorrect);

} // namespace orva
