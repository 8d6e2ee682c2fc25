#pragma once

#include "lang/text_options.h"
#include "model/byte_stream.h"
#include "model/result.h"
#include "model/segment.h"
#include "model/systems.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orva {

/// One line array: its boxes from top to bottom, their splay angles, where it hangs or stands.
/// A plain value: copies are independent. Shows no messages.
///
/// Array frame: origin at the top front corner of the top box (position 0), x forward, y down.
/// Room frame: metres from the point of reference, x towards the audience, y up.
///
/// Pin angles hang on the centre of gravity that GFACalcCOM() stored last; whoever changes boxes or
/// splay angles runs it before handing the array on.
class LineArray {
public:
    /// A trapezoidal top box is tilted so much further than the cradle.
    static constexpr float kTopTrapezoidalTiltDeg = 4.5F;

    static constexpr int kPositions = 32;
    using Positions = std::array<std::int16_t, kPositions>;

    std::int16_t GIGetNumGerade() const { return NumGerade; }
    std::int16_t GIGetNumSchräg() const { return NumSchräg; }
    std::int16_t GIGetNumBass() const { return NumBass; }
    std::int16_t GIGetNumSpeakers() const { return NumSpeakers; }
    std::int16_t GIGetArrayType() const { return ArrayType; }
    Positions GIAGetAllType() const { return AllType; }
    Positions GIAGetAllAngle() const { return AllAngle; }
    FloatPair GFAGetCradleCoord() const { return CradleCoord; }
    FloatPair GFAGetBassBoxCoord() const { return BassBoxCoord; }
    bool GBGetBassBox() const { return BassBox; }
    bool GBGetMounting() const { return Mounting; }
    bool GBGetAngleOrPin() const { return AngleOrPin; }

    /// Number of straight mid/high boxes; stored clamped to 0..24. Always true.
    bool GBSetNumGerade(std::int16_t count);
    /// Number of trapezoidal mid/high boxes; stored clamped to 0..24. Always true.
    bool GBSetNumSchräg(std::int16_t count);
    /// Number of bass boxes; stored clamped to 0..20. Always true.
    bool GBSetNumBass(std::int16_t count);
    /// Number of mid/high boxes; stored clamped to 1..24. Always true.
    bool GBSetNumSpeakers(std::int16_t count);
    /// 0 standard system, any other value compact system. Always true.
    bool GBSetArrayType(std::int16_t system);
    /// Box-type code of each position, top box first. Takes all 32 or none: false, and nothing
    /// changed, unless `types` has 32 elements.
    bool GBSetAllType(std::span<const std::int16_t> types);
    /// Entry 0: the pin (from 0) when flown in pin mode, otherwise the cradle angle in tenths of a
    /// degree. Entry i: index 0..6 of the splay angle between positions i-1 and i. Takes all 32 or
    /// none, like GBSetAllType.
    bool GBSetAllAngle(std::span<const std::int16_t> angles);
    /// Carrying pin of a flown array, base of a stacked one, room frame. Always true.
    bool GBSetCradleCoord(FloatPair point);
    /// Where the separate ground-stacked bass box stands, room frame. Always true.
    bool GBSetBassBoxCoord(FloatPair point);
    /// Whether that bass box is used. Always true.
    bool GBSetBassBox(bool used);
    /// True flown, false ground stacked. Always true.
    bool GBSetMounting(bool flown);
    /// True: entry 0 of the angles is a pin; false: an angle. Always true.
    bool GBSetAngleOrPin(bool pin);

    /// An equal array, filled through the setters (so its counts are clamped), with its own centre
    /// of gravity calculated.
    LineArray Duplicate() const;

    const SystemRecord& system() const { return systemRecord(ArrayType); }

    /// Number of positions in use: NumSpeakers + NumBass, 32 at most.
    int boxCount() const;

    /// What kind of box hangs at a position 0..31; none for a code that the system does not know.
    std::optional<BoxKind> kindAt(int position) const;

    /// A splay angle or pin in use that does not exist, in words; none when all exist.
    std::optional<Message> angleFault() const;
    /// Why nothing may be calculated for this array: an angleFault(), or more than 32 boxes.
    /// Calculations are defined only where this is empty; elsewhere they stay within bounds but
    /// mean nothing.
    std::optional<Message> fault() const;

    // Splay angles and pins

    /// The splay angles by index, "0°" to "9°".
    static const std::array<std::string, 7>& GSALookupAngles();
    /// Degrees of a splay-angle index 0..6.
    static float splayAngle(std::int16_t index);

    AngleBounds IABassBass() const { return system().bassBass; }
    AngleBounds IABassSchräg() const { return system().bassTrapezoidal; }
    AngleBounds IABassGerade() const { return system().bassStraight; }
    AngleBounds IAGeradeGerade() const { return system().straightStraight; }
    AngleBounds IAGeradeSchräg() const { return system().straightTrapezoidal; }
    AngleBounds IASchrägSchräg() const { return system().trapezoidalTrapezoidal; }

    /// Lowest and highest index of each joint, top joint first; (0, 0) at a position of unknown
    /// code, empty for a single box.
    std::vector<AngleBounds> IAGetAngleBounds() const;

    /// Tilt of the cradle in degrees, positive = downwards when flown.
    float GFFirstAngle() const;
    /// Tilt in degrees of an array that hangs freely from `pin` (0..pin count - 1): its centre of
    /// gravity comes to lie straight below the pin. ±90 when it is level with the pin.
    float GFAngleFromPin(std::int16_t pin) const;
    /// The pin in use, from 0: in pin mode the stored one, in angle mode the one whose angle comes
    /// closest, the lower on equal differences. Means nothing for a stacked array.
    std::int16_t GIPinPoint() const;
    /// Degrees that the pin leaves to be made up in angle mode: wanted minus pin angle; else 0.
    float GFPinPointRemainder() const;

    // Geometry

    /// A box in the array frame.
    struct HungBox {
        FloatPair corner;      ///< top front corner
        float tiltDeg;         ///< positive = downwards
        Rotation turn;         ///< by that tilt
        const BoxShape* shape; ///< null at a position of unknown code

        /// A point of the box's own frame.
        FloatPair point(FloatPair own) const;
    };
    /// The boxes in use, each hanging from the bottom front corner of the one before, under a
    /// cradle tilted by `cradleTiltDeg`. A trapezoidal top box is tilted 4.5° further. A position
    /// of unknown code has no height; its splay angle still turns what follows.
    std::vector<HungBox> hungBoxes(float cradleTiltDeg) const;
    /// Hangs the rest of them below the uppermost ones, which are there already.
    void hang(std::vector<HungBox>& boxes, float cradleTiltDeg) const;

    /// `point` moved from the carrying pin's to the array origin's position (flown); unchanged when
    /// stacked.
    FloatPair GFAArrayZero(FloatPair point) const;
    /// Acoustic source points and aiming angles: elements 0..31 x, 32..63 y, 64..95 degrees; 0
    /// where there is no box. `roomUp`: room frame, angle 0 along +x, negative = down. Otherwise y
    /// is negated.
    std::array<float, 96> GFAGetOriginPTSandAng(bool roomUp) const;
    /// The axis of a box: from its acoustic source point on, room frame.
    struct BoxAxis {
        Point from;
        double angleDeg; ///< against the horizontal, negative = aimed down
    };
    /// GFAGetOriginPTSandAng() of the positions in use, room frame.
    std::vector<BoxAxis> axes() const;
    /// The upper front corners of the boxes in use, room frame; of a position of unknown code where
    /// it hangs.
    std::vector<Point> upperFrontCorners() const;
    /// Centre of gravity in the array frame without the cradle tilt (y negated when stacked), also
    /// stored. The total weight comes from the counts, not from the positions; (0, 0) when it is 0.
    FloatPair GFACalcCOM();
    /// Centres of gravity of the boxes: 0..31 x, 32..63 y, array frame with the cradle tilt, y
    /// negated when stacked.
    std::array<float, 64> GFAGetCOMPTS() const;
    /// Largest x, largest y, smallest x, smallest y of cradle and boxes seen from the carrying pin
    /// (flown) or the array origin (stacked, y negated); that point is always inside.
    std::array<float, 4> GFAGetBounds() const;

    // Weights, kg

    /// All boxes in use, bass included.
    float GFGetSpeakerWeight() const;
    /// The boxes in use whose type code equals `code`.
    float GFGetSpeakerByType(std::int16_t code) const;
    /// 5 kg and half a kilogram for every full pair of boxes.
    float GFGetCableWeight() const;

    /// All that hangs or stands: boxes, cable, and the frame of a flown array; to 10 g.
    double totalWeightKg() const;
    /// Whether that is more than the system allows.
    bool overloaded() const { return totalWeightKg() > system().maxWeightKg; }

    /// The rigging sheet: pick point, weights against the limit, height, list of boxes with the
    /// angles between them. Lines end with CR LF.
    std::string GSGetPrintout(const TextOptions& options) const;

    // Project file

    static constexpr std::size_t kFileBytes = 160;
    /// Appends the 160-byte block.
    void GBWriteToFile(ByteWriter& out) const;
    /// Reads the block as it stands, unclamped: counts 0..32 (mid/high 1..32), booleans ±1, finite
    /// figures. After an error the object is half read.
    Result<Done> GBReadFromFile(ByteReader& in);

    /// The cached centre of gravity takes no part.
    friend bool operator==(const LineArray& a, const LineArray& b);

private:
    friend class HungArray;

    /// The sum of weight times place of a box and those above it.
    FloatPair momentWith(const HungBox& box, FloatPair above) const;
    void storeCenterOfMass(FloatPair moment);
    /// Of all boxes, from their counts; kg.
    float countedWeight() const;
    /// Room frame with y up, once CradleCoord and the centre of gravity are known.
    FloatPair originInRoom() const;
    /// Acoustic source point and aiming angle, zeros at a position of unknown code.
    std::array<float, 3> axisOf(const HungBox& box, FloatPair origin, bool roomUp) const;

    std::int16_t NumGerade = 0;
    std::int16_t NumSchräg = 0;
    std::int16_t NumBass = 0;
    std::int16_t NumSpeakers = 0;
    std::int16_t ArrayType = 0;
    Positions AllType{};
    Positions AllAngle{};
    FloatPair CradleCoord{};
    FloatPair BassBoxCoord{};
    bool BassBox = false;
    bool Mounting = false;
    bool AngleOrPin = false;
    FloatPair CenterOfMass{};
    std::int16_t MountSign = 0; ///< +1 flown, -1 stacked, 0 before either was said
};

} // namespace orva
