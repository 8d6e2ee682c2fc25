#include "cli/json.h"

#include <cmath>
#include <ostream>

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

void printJson(std::ostream& out, const Json& object)
{
    const char* before = "{\n  ";
    for (const auto& [name, value] : object.items()) {
        out << before << Json(name).dump() << ": " << value.dump();
        before = ",\n  ";
    }
    out << "\n}\n";
}

} // namespace orva
