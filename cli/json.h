#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace orva {

/// JSON whose names keep their order and whose figures are 32-bit floats: written with just the
/// digits that give the same float back.
using Json = nlohmann::basic_json<nlohmann::ordered_map, std::vector, std::string, bool,
                                  std::int64_t, std::uint64_t, float>;

/// A figure; null when it is not finite, never -0.
Json jsonNumber(float value);
Json jsonNumbers(std::span<const float> values);

/// Adds "warnings" to a result where there are some.
template<typename Object>
void addWarnings(Object& result, const std::vector<std::string>& warnings)
{
    if (!warnings.empty())
        result["warnings"] = warnings;
}

/// The object, one name a line.
template<typename Object>
std::string jsonText(const Object& object)
{
    std::string text;
    const char* before = "{\n  ";
    for (const auto& [name, value] : object.items()) {
        text += before + Object(name).dump() + ": " + value.dump();
        before = ",\n  ";
    }
    return text + "\n}\n";
}

} // namespace orva
