#include "model/line_array_file.h"

namespace orva {

Result<Done> readBoxCount(ByteReader& in, std::string_view kind, int low, std::int16_t& count)
{
    const std::int16_t value = in.i16();
    if (value < low || value > 32)
        return in.error("the number of " + std::string(kind) + " boxes is " +
                        std::to_string(value) + ", not " + std::to_string(low) + " to 32");
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
    if (auto read = in.finite(placing.cradleCoord, "the cradle point"); !read)
        return read.error();
    if (auto read = in.finite(placing.bassBoxCoord, "the bass box point"); !read)
        return read.error();
    for (bool* value : {&placing.bassBox, &placing.mounting, &placing.angleOrPin}) {
        const std::int16_t stored = in.i16();
        if (stored != 1 && stored != -1)
            return in.error("a yes/no entry is " + std::to_string(stored) + ", not 1 or -1");
        *value = stored == 1;
    }
    return placing;
}

} // namespace orva
