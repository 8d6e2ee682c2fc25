#include "model/line_array_file.h"

namespace orva {

Result<Done> readBoxCount(ByteReader& in, Text kind, int low, std::int16_t& count)
{
    const std::int16_t value = in.i16();
    if (value < low || value > 32)
        return in.error(
            Message(Text::BoxCountOutside, {Message(kind), number(value), number(low)}));
    count = value;
    return Done{};
}

void readPositions(ByteReader& in, std::array<std::int16_t, 32>& list)
{
    for (std::int16_t& entry : list)
        entry = in.i16();
}

Result<ArrayPlacing> readPlacing(ByteReader& in)
{
    ArrayPlacing placing{};
    if (auto read = in.finite(placing.cradleCoord, Text::FieldCradle); !read)
        return read.error();
    if (auto read = in.finite(placing.bassBoxCoord, Text::FieldBassBox); !read)
        return read.error();
    for (bool* value : {&placing.bassBox, &placing.mounting, &placing.angleOrPin}) {
        const std::int16_t stored = in.i16();
        if (stored != 1 && stored != -1)
            return in.error(Message(Text::NotYesOrNo, {number(stored)}));
        *value = stored == 1;
    }
    return placing;
}

} // namespace orva
