#include "model/line_array.h"

#include "model/line_array_file.h"

#include <algorithm>
#include <tuple>

namespace orva {

namespace {

bool copyAll(std::span<const std::int16_t> from, LineArray::Positions& to)
{
    if (from.size() != to.size())
        return false;
    std::copy(from.begin(), from.end(), to.begin());
    return true;
}

bool storeClamped(std::int16_t value, std::int16_t low, std::int16_t high, std::int16_t& to)
{
    to = std::clamp(value, low, high);
    return true;
}

} // namespace

bool LineArray::GBSetNumGerade(std::int16_t count)
{
    return storeClamped(count, 0, kMostMidHigh, NumGerade);
}

bool LineArray::GBSetNumSchräg(std::int16_t count)
{
    return storeClamped(count, 0, kMostMidHigh, NumSchräg);
}

bool LineArray::GBSetNumBass(std::int16_t count)
{
    return storeClamped(count, 0, kMostBass, NumBass);
}

bool LineArray::GBSetNumSpeakers(std::int16_t count)
{
    return storeClamped(count, 1, kMostMidHigh, NumSpeakers);
}

bool LineArray::GBSetArrayType(std::int16_t system)
{
    ArrayType = system;
    return true;
}

bool LineArray::GBSetAllType(std::span<const std::int16_t> types)
{
    return copyAll(types, AllType);
}

bool LineArray::GBSetAllAngle(std::span<const std::int16_t> angles)
{
    return copyAll(angles, AllAngle);
}

bool LineArray::GBSetCradleCoord(FloatPair point)
{
    CradleCoord = point;
    return true;
}

bool LineArray::GBSetBassBoxCoord(FloatPair point)
{
    BassBoxCoord = point;
    return true;
}

bool LineArray::GBSetBassBox(bool used)
{
    BassBox = used;
    return true;
}

bool LineArray::GBSetMounting(bool flown)
{
    Mounting = flown;
    MountSign = flown ? 1 : -1;
    return true;
}

bool LineArray::GBSetAngleOrPin(bool pin)
{
    AngleOrPin = pin;
    return true;
}

LineArray LineArray::Duplicate() const
{
    LineArray copy;
    copy.GBSetMounting(Mounting);
    copy.GBSetAngleOrPin(AngleOrPin);
    copy.GBSetBassBox(BassBox);
    copy.GBSetNumSpeakers(NumSpeakers);
    copy.GBSetNumSchräg(NumSchräg);
    copy.GBSetNumGerade(NumGerade);
    copy.GBSetNumBass(NumBass);
    copy.GBSetArrayType(ArrayType);
    copy.GBSetAllType(AllType);
    copy.GBSetAllAngle(AllAngle);
    copy.GBSetCradleCoord(CradleCoord);
    copy.GBSetBassBoxCoord(BassBoxCoord);
    copy.GFACalcCOM();
    return copy;
}

int LineArray::boxCount() const
{
    return std::clamp(NumSpeakers + NumBass, 0, kPositions);
}

std::optional<BoxKind> LineArray::kindAt(int position) const
{
    return system().kindOf(AllType[static_cast<std::size_t>(position)]);
}

std::optional<Message> LineArray::angleFault() const
{
    const int angles = static_cast<int>(GSALookupAngles().size());
    for (int i = 1; i < boxCount(); ++i) {
        const std::int16_t index = AllAngle[static_cast<std::size_t>(i)];
        if (index < 0 || index >= angles)
            return Message(Text::UnknownSplay, {number(i + 1), number(index), number(angles - 1)});
    }
    const std::int16_t pins = system().cradle.pinCount();
    if (Mounting && AngleOrPin && (AllAngle[0] < 0 || AllAngle[0] >= pins))
        return Message(Text::UnknownPin, {number(AllAngle[0] + 1), number(pins)});
    return std::nullopt;
}

std::optional<Message> LineArray::fault() const
{
    if (NumSpeakers + NumBass > kPositions)
        return Message(Text::TooManyBoxes, {number(NumSpeakers + NumBass), number(kPositions)});
    return angleFault();
}

void LineArray::GBWriteToFile(ByteWriter& out) const
{
    for (const std::int16_t count : {NumGerade, NumSchräg, NumSpeakers, NumBass})
        out.i16(count);
    for (const Positions* list : {&AllType, &AllAngle})
        for (const std::int16_t entry : *list)
            out.i16(entry);
    out.i16(ArrayType);
    out.f32(CradleCoord);
    out.f32(BassBoxCoord);
    for (const bool value : {BassBox, Mounting, AngleOrPin})
        out.i16(value ? 1 : -1);
}

Result<Done> LineArray::GBReadFromFile(ByteReader& in)
{
    if (auto there = in.need(kFileBytes, Text::BlockArray); !there)
        return there;
    for (const auto& [count, what, low] :
         {std::tuple(&NumGerade, Text::KindStraight, 0),
          std::tuple(&NumSchräg, Text::KindTrapezoidal, 0),
          std::tuple(&NumSpeakers, Text::KindMidHigh, 1), std::tuple(&NumBass, Text::KindBass, 0)})
        if (auto read = readBoxCount(in, what, low, *count); !read)
            return read;
    readPositions(in, AllType);
    readPositions(in, AllAngle);
    ArrayType = in.i16();
    const Result<ArrayPlacing> placing = readPlacing(in);
    if (!placing)
        return placing.error();
    CradleCoord = placing->cradleCoord;
    BassBoxCoord = placing->bassBoxCoord;
    BassBox = placing->bassBox;
    GBSetMounting(placing->mounting);
    AngleOrPin = placing->angleOrPin;
    return Done{};
}

bool operator==(const LineArray& a, const LineArray& b)
{
    const auto fields = [](const LineArray& array) {
        return std::tie(array.NumGerade, array.NumSchräg, array.NumBass, array.NumSpeakers,
                        array.ArrayType, array.AllType, array.AllAngle, array.CradleCoord,
                        array.BassBoxCoord, array.BassBox, array.Mounting, array.AngleOrPin,
                        array.MountSign);
    };
    return fields(a) == fields(b);
}

} // namespace orva
