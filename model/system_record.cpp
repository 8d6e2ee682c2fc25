#include "model/systems.h"

#include <algorithm>
#include <bit>
#include <initializer_list>

namespace orva {

namespace {

/// The list's entries first, `rest` at the remaining positions.
std::array<std::int16_t, 32> positions(std::initializer_list<std::int16_t> first, std::int16_t rest)
{
    std::array<std::int16_t, 32> list;
    list.fill(rest);
    std::copy(first.begin(), first.end(), list.begin());
    return list;
}

CradleGeometry cradle(std::array<FloatPair, 4> outline, int pins, double pitch, double firstPin,
                      float pinY)
{
    CradleGeometry result{outline, 0.0125F, {}, {}};
    for (int i = 0; i < pins; ++i) {
        result.PinX.push_back(static_cast<float>(pitch * i + firstPin));
        result.PinY.push_back(pinY);
    }
    return result;
}

BoxGeometry standardBoxes()
{
    return {.topFront = {0, 0},
            .straight = {.hinge = {0, 0.26F},
                         .bottomRear = {-0.5975F, 0.26F},
                         .topRear = {-0.5975F, 0},
                         .weightKg = 30.2F,
                         .centerOfGravity = {-0.25F, 0.13F},
                         .source = {-0.25F, 0.13F}},
            .trapezoidal = {.hinge = {0, 0.26F},
                            .bottomRear = {-0.59656F, 0.21312F},
                            .topRear = {-0.59565F, 0.0468793F},
                            .weightKg = 29.7F,
                            .centerOfGravity = {-0.24F, 0.13F},
                            .source = {-0.24F, 0.13F}},
            .bass = {.hinge = {0, 0.485355F},
                     .bottomRear = {-0.58453F, 0.46002F},
                     .topRear = {-0.58453F, 0.02395F},
                     .weightKg = 41.0F,
                     .centerOfGravity = {-0.197F, 0.24268F},
                     .source = {-0.25F, 0.235F}},
            .marks = {{{-0.11F, 0.06F}, {-0.11F, 0.2F}, {-0.153F, 0.13F}}},
            .drawing = {5.358161F, 0.9250245F, 0.072F}};
}

SystemRecord makeStandard()
{
    const float rear = std::bit_cast<float>(0xBF74F80EU); // -0.95691
    return {
        .name = "standard",
        .dataFile = "system.dat",
        .suffix = "S",
        .newCommand = Text::MenuNewStandard,
        .title = Text::StandardSystem,
        .countsKinds = true,
        .midHighLabel = Text::MidHighCount,
        .bassLabel = Text::BassCount,
        .needsMidHigh = false,
        .continuousDb = {108.0,  108.0,  108.0,  107.91, 108.25, 108.21, 106.61, 106.59,
                         105.02, 104.71, 104.19, 105.04, 105.42, 104.39, 102.95, 104.66,
                         105.6,  106.14, 107.67, 108.02, 104.86, 99.98},
        .newArray = {positions({0, 0, 0, 1, 0, 1, 0, 1, 0, 1, 1, 1, 0, 1, 0, 1,
                                0, 1, 0, 1, 0, 1, 0, 1, 0, 1, 0, 1, 0, 1, 0, 1},
                               0),
                     positions({4, 0, 0, 1, 1, 1, 2, 2, 2, 3, 4, 5}, 3), 6, 6},
        .mostMidHigh = kMostMidHigh,
        .mostBass = kMostBass,
        .boxes = standardBoxes(),
        .cradle =
            cradle({{{0.04309F, -0.103F}, {0.04309F, -0.023F}, {rear, -0.023F}, {rear, -0.103F}}},
                   11, -0.08, -0.06882, -0.083F),
        .TypeCodeGerade = 0,
        .TypeCodeSchräg = 1,
        .TypeCodeBass = 2,
        .bassBass = {0, 0},
        .bassTrapezoidal = {3, 4},
        .bassStraight = {0, 1},
        .straightStraight = {0, 0},
        .straightTrapezoidal = {0, 3},
        .trapezoidalTrapezoidal = {3, 6},
        .frameWeightKg = 33,
        .maxWeightKg = 850,
        .straightText = {"VM 412 S", Text::SheetStraight, Text::SheetStraightWeight},
        .trapezoidalText = {"VM 412 T", Text::SheetTrapezoidal, Text::SheetTrapezoidalWeight},
        .bassText = {"VM 415 F", Text::SheetBass, Text::SheetBassWeight},
        .cradleAngleLabel = Text::CompactCradleAngle,
        .cableWeightLabel = Text::SheetCableWeight,
        .frameWeightLine = Text::SheetFrameWeight,
    };
}

SystemRecord makeCompact()
{
    const BoxShape midHigh = {.hinge = {0, 0.266F},
                              .bottomRear = {-0.28F, 0.229F},
                              .topRear = {-0.28F, 0.037F},
                              .weightKg = 18.3F,
                              .centerOfGravity = {-0.119F, 0.147F},
                              .source = {-0.119F, 0.147F}};
    return {
        .name = "compact",
        .dataFile = "systemsm.dat",
        .suffix = "C",
        .newCommand = Text::MenuNewCompact,
        .title = Text::CompactSystem,
        .countsKinds = false,
        .midHighLabel = Text::None,
        .bassLabel = Text::None,
        .needsMidHigh = true,
        .continuousDb = {96.3,   96.3,   96.3,   101.1,  101.8,  101.8, 100.55, 99.69,
                         102.34, 102.79, 105.25, 107.61, 103.99, 101.8, 102.41, 102.04,
                         102.22, 102.97, 103.4,  103.28, 100.2,  94.8},
        .newArray = {positions({}, 0), positions({5, 0, 1, 2, 3, 3, 5, 6}, 3), 8, 0},
        .mostMidHigh = 16,
        .mostBass = 6,
        .boxes = {.topFront = {0, 0},
                  .straight = midHigh,
                  .trapezoidal = midHigh,
                  .bass = {.hinge = {0, 0.538F},
                           .bottomRear = {-0.61F, 0.538F},
                           .topRear = {-0.61F, 0},
                           .weightKg = 48.0F,
                           .centerOfGravity = {-0.218F, 0.269F},
                           .source = {-0.218F, 0.269F}},
                  .marks = {{{-0.08F, 0.06F}, {-0.08F, 0.2F}, {-0.13F, 0.13F}}},
                  .drawing = {5.358161F, 0.9250245F, 0.072F}},
        .cradle = cradle({{{0.013F, -0.061F}, {0.013F, 0}, {-0.61F, 0}, {-0.61F, -0.061F}}}, 14,
                         -0.04, -0.04, -0.024F),
        .TypeCodeGerade = 0,
        .TypeCodeSchräg = -2, // no box of this system: a code that projects do not hold
        .TypeCodeBass = 1,
        .bassBass = {0, 0},
        .bassTrapezoidal = {0, 6},
        .bassStraight = {0, 0},
        .straightStraight = {0, 6},
        .straightTrapezoidal = {0, 3},
        .trapezoidalTrapezoidal = {3, 6},
        .frameWeightKg = 12,
        .maxWeightKg = 350,
        .straightText = {"VM 306 C", Text::None, Text::CompactWeight},
        .trapezoidalText = {"VM 306 C", Text::None, Text::None},
        .bassText = {"VM 415 C", Text::SheetBass, Text::CompactBassWeight},
        .cradleAngleLabel = Text::SheetCradleAngle,
        .cableWeightLabel = Text::CompactCableWeight,
        .frameWeightLine = Text::CompactFrameWeight,
    };
}

} // namespace

const BoxShape& BoxGeometry::shape(BoxKind kind) const
{
    return kind == BoxKind::Straight ? straight : kind == BoxKind::Trapezoidal ? trapezoidal : bass;
}

std::optional<AngleBounds> SystemRecord::jointBounds(std::optional<BoxKind> a,
                                                     std::optional<BoxKind> b) const
{
    const auto joins = [&](BoxKind first, BoxKind second) {
        return (a == first && b == second) || (a == second && b == first);
    };
    if (joins(BoxKind::Straight, BoxKind::Straight))
        return straightStraight;
    if (joins(BoxKind::Straight, BoxKind::Trapezoidal))
        return straightTrapezoidal;
    if (joins(BoxKind::Trapezoidal, BoxKind::Trapezoidal))
        return trapezoidalTrapezoidal;
    if (joins(BoxKind::Bass, BoxKind::Bass))
        return bassBass;
    if (joins(BoxKind::Bass, BoxKind::Straight))
        return bassStraight;
    if (joins(BoxKind::Bass, BoxKind::Trapezoidal))
        return bassTrapezoidal;
    return std::nullopt;
}

const RiggingText& SystemRecord::riggingText(BoxKind kind) const
{
    return kind == BoxKind::Straight      ? straightText
           : kind == BoxKind::Trapezoidal ? trapezoidalText
                                          : bassText;
}

const SystemRecord& standardSystem()
{
    static const SystemRecord record = makeStandard();
    return record;
}

const SystemRecord& compactSystem()
{
    static const SystemRecord record = makeCompact();
    return record;
}

bool isSystem(std::int16_t arrayType)
{
    return arrayType >= 0 && static_cast<std::size_t>(arrayType) < allSystems().size();
}

const SystemRecord& systemRecord(std::int16_t arrayType)
{
    const auto number = static_cast<std::size_t>(isSystem(arrayType) ? arrayType : kCompactSystem);
    return *allSystems()[number];
}

} // namespace orva
