#pragma once

#include "lang/text_ids.h"
#include "model/vector_math.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace orva {

enum class BoxKind { Straight, Trapezoidal, Bass };

/// One kind of box in its own frame: origin at the top front corner, the hinge by which it hangs
/// from the box above; x forward along its axis, y down the front; metres.
struct BoxShape {
    FloatPair hinge; ///< bottom front corner: the top front corner of the next box
    FloatPair bottomRear;
    FloatPair topRear;
    float weightKg;
    FloatPair centerOfGravity;
    FloatPair source; ///< acoustic source point
};

/// Dimensions and weights of a system's boxes.
struct BoxGeometry {
    FloatPair topFront;
    BoxShape straight;
    BoxShape trapezoidal;
    BoxShape bass;
    std::array<FloatPair, 3> marks; ///< triangle of the horn, drawn in each mid/high box
    std::array<float, 3> drawing;   ///< further drawing constants

    const BoxShape& shape(BoxKind kind) const;
    /// The corners of a box from the side: down its front, up its rear.
    std::array<FloatPair, 4> outline(const BoxShape& shape) const
    {
        return {topFront, shape.hinge, shape.bottomRear, shape.topRear};
    }
};

/// The cradle (rigging frame) in the array frame: origin at the top front corner of the top box,
/// x forward, y down, before any tilt; metres.
struct CradleGeometry {
    std::array<FloatPair, 4> outline;
    float pinRadius;
    std::vector<float> PinX; ///< pin 0 nearest the front
    std::vector<float> PinY;

    std::int16_t pinCount() const { return static_cast<std::int16_t>(PinX.size()); }
};

/// Lowest and highest splay-angle index that a joint allows, inclusive.
using AngleBounds = std::array<std::int16_t, 2>;

/// How the rigging sheet names a kind of box; None for what it has not.
struct RiggingText {
    std::string_view model; ///< product name, the same in every language
    Text kind;              ///< follows the product name
    Text weightLabel;
};

/// The longest array of any system, in mid/high boxes of one kind and in bass boxes.
constexpr std::int16_t kMostMidHigh = 24;
constexpr std::int16_t kMostBass = 20;

/// The array of a new project: its codes and angles, top box first, and how many boxes of each kind
/// they are.
struct NewArray {
    std::array<std::int16_t, 32> types;
    std::array<std::int16_t, 32> angles;
    std::int16_t straight;
    std::int16_t trapezoidal;
};

/// Everything in which systems differ; immutable.
struct SystemRecord {
    std::string_view name;     ///< for scripts: "standard"
    std::string_view dataFile; ///< of its loudspeaker data: "system.dat"
    std::string_view suffix;   ///< of the names of its menu command: "S"
    Text newCommand;           ///< the menu's text for a new project
    Text title;                ///< what it is called where systems are chosen
    /// Straight and trapezoidal boxes are counted apart: there are both.
    bool countsKinds;
    Text midHighLabel; ///< of the count; None: the box's product name
    Text bassLabel;
    /// A project without any mid/high box gets one when it is read.
    bool needsMidHigh;
    /// Level of one box on its axis at 1 m, dB, per third-octave band from 100 Hz.
    std::array<double, 22> continuousDb;
    NewArray newArray;
    std::int16_t mostMidHigh; ///< mid/high boxes that a user may choose
    std::int16_t mostBass;    ///< the same for bass boxes
    BoxGeometry boxes;
    CradleGeometry cradle;
    std::int16_t TypeCodeGerade;
    std::int16_t TypeCodeSchräg;
    std::int16_t TypeCodeBass;
    AngleBounds bassBass;
    AngleBounds bassTrapezoidal;
    AngleBounds bassStraight;
    AngleBounds straightStraight;
    AngleBounds straightTrapezoidal;
    AngleBounds trapezoidalTrapezoidal;
    float frameWeightKg; ///< rigging frame, when flown
    float maxWeightKg;   ///< of the whole flown or stacked array, allowed
    RiggingText straightText;
    RiggingText trapezoidalText;
    RiggingText bassText;
    Text cradleAngleLabel;
    Text cableWeightLabel;
    Text frameWeightLine;

    /// None for a code that is no box of this system.
    std::optional<BoxKind> kindOf(std::int16_t typeCode) const
    {
        return typeCode == TypeCodeGerade   ? std::optional(BoxKind::Straight)
               : typeCode == TypeCodeSchräg ? std::optional(BoxKind::Trapezoidal)
               : typeCode == TypeCodeBass   ? std::optional(BoxKind::Bass)
                                            : std::nullopt;
    }
    std::int16_t codeOf(BoxKind kind) const
    {
        return kind == BoxKind::Straight      ? TypeCodeGerade
               : kind == BoxKind::Trapezoidal ? TypeCodeSchräg
                                              : TypeCodeBass;
    }
    const RiggingText& riggingText(BoxKind kind) const;
    /// What a joint between the two boxes allows, in either order; none where one is of unknown
    /// kind.
    std::optional<AngleBounds> jointBounds(std::optional<BoxKind> a,
                                           std::optional<BoxKind> b) const;
};

const SystemRecord& standardSystem();
const SystemRecord& compactSystem();

} // namespace orva
