#include "cli/json.h"

#include <cmath>

namespace orva {

Json jsonNumber(float value)
{
    if (!std::isfinite(value))
        return nullptr;
    return value == 0 ? 0.0F : value;
}

Json jsonNumbers(std::span<const float> values)
{
    Json list = Json::array();
    for (const float value : values)
        list.push_back(jsonNumber(value));
    return list;
}

} // namespace orva
