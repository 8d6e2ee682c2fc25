#include "optimize/search_part.h"

#include <cmath>
#include <tuple>

#include <nlohmann/json.hpp>

namespace orva {

namespace {

using Json = nlohmann::json;

/// As deep as the figures lie: a list in an entry of a list in the object.
constexpr int kDeepest = 4;
constexpr std::size_t kTaskDigits = 16;

/// The object of a text that is not nested deeper than needed; null for any other text.
Json objectOf(std::string_view text)
{
    bool deep = false;
    const auto notTooDeep = [&](int depth, Json::parse_event_t, Json&) {
        deep = deep || depth > kDeepest;
        return !deep;
    };
    Json json = Json::parse(text, notTooDeep, false);
    return deep || !json.is_object() ? Json() : json;
}

const Json& member(const Json& object, const char* name)
{
    static const Json kNone;
    const auto found = object.find(name);
    return found == object.end() ? kNone : *found;
}

/// A whole number within the bounds.
template<typename Number>
bool take(const Json& json, std::int64_t low, std::int64_t high, Number& number)
{
    if (!json.is_number_integer() ||
        (json.is_number_unsigned() && json.get<std::uint64_t>() > std::uint64_t(high)))
        return false;
    const auto value = json.get<std::int64_t>();
    if (value < low || value > high)
        return false;
    number = static_cast<Number>(value);
    return true;
}

bool take(const Json& json, std::uint64_t& number)
{
    if (!json.is_number_unsigned())
        return false;
    number = json.get<std::uint64_t>();
    return true;
}

bool take(const Json& json, LineArray::Positions& angles)
{
    if (!json.is_array() || json.size() != angles.size())
        return false;
    for (std::size_t i = 0; i < angles.size(); ++i)
        if (!take(json[i], INT16_MIN, INT16_MAX, angles[i]))
            return false;
    return true;
}

bool take(const Json& json, JointRange& range)
{
    constexpr int kJoints = LineArray::kPositions - 1;
    return json.is_array() && json.size() == 2 && take(json[0], 0, kJoints - 1, range.first) &&
           take(json[1], -1, kJoints - 1, range.last) && range.last >= range.first - 1;
}

bool takeTask(const Json& json, std::string& task)
{
    if (!json.is_string())
        return false;
    task = json.get<std::string>();
    return task.size() == kTaskDigits &&
           task.find_first_not_of("0123456789abcdef") == std::string::npos;
}

/// A measure; null stands for one that there is not.
bool takeMeasure(const Json& json, double& rms)
{
    if (json.is_null()) {
        rms = kNoMeasure;
        return true;
    }
    if (!json.is_number())
        return false;
    rms = json.get<double>();
    return std::isfinite(rms) && rms >= 0;
}

bool isSplayAngle(std::int16_t index)
{
    return index >= 0 && index < static_cast<int>(LineArray::GSALookupAngles().size());
}

/// Whether the angles can be those of a configuration; with `pin` the first one is varied, too.
bool areCandidates(const LineArray::Positions& angles, const PartResult& result, bool pin)
{
    for (int i = 0; i < LineArray::kPositions; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (i == 0 && pin)
            continue;
        const bool varied = i > result.range.first && i <= result.range.last + 1;
        if (varied ? !isSplayAngle(angles[at]) : angles[at] != result.original[at])
            return false;
    }
    return true;
}

/// What is wrong with an entry of the best; none where nothing is.
std::optional<std::string> takeRanked(const Json& json, const PartResult& result, Ranked& entry)
{
    if (!json.is_object() || !take(member(json, "angles"), entry.angles) ||
        !takeMeasure(member(json, "rms"), entry.rms) || !take(member(json, "number"), entry.number))
        return "this is no result of a search: an entry of \"best\" is not sound";
    const SearchPart& part = result.part;
    if (entry.number < part.first || entry.number - part.first >= part.tested)
        return "configuration " + std::to_string(entry.number) +
               " is not among those that were tested";
    if (const Json& height = member(json, "height"); !height.is_null()) {
        entry.heightM = height.is_number() ? height.get<float>() : std::nanf("");
        if (!std::isfinite(*entry.heightM))
            return "configuration " + std::to_string(entry.number) + " has no sound height";
    }
    const Json& pin = member(json, "pin");
    constexpr int kMostPins = 100;
    int pinNumber = 0;
    if (!pin.is_null() && (!take(pin, 0, kMostPins, pinNumber) || pinNumber != entry.angles[0]))
        return "configuration " + std::to_string(entry.number) +
               " has a pin that is not that of its angles";
    entry.pin = !pin.is_null();
    if (!areCandidates(entry.angles, result, entry.pin))
        return "configuration " + std::to_string(entry.number) +
               " has angles that are not those of this search";
    if (!part.best.empty() && entry.rms < part.best.back().rms)
        return "the best configurations are not in their order";
    return std::nullopt;
}

} // namespace

bool PartResult::belongsTo(const PartResult& other) const
{
    const auto search = [](const PartResult& result) {
        return std::tie(result.configurations, result.range, result.original, result.task);
    };
    return search(*this) == search(other);
}

Result<PartResult> readPart(std::string_view text, std::string_view name)
{
    const auto error = [&](std::string what) { return Error{std::move(what), std::string(name)}; };
    if (text.size() > kPartMaxBytes)
        return error("this is no result of a search: it is larger than 1 MB");
    const Json json = objectOf(text);
    PartResult result;
    SearchPart& part = result.part;
    if (!json.is_object() || !take(member(json, "configurations"), result.configurations) ||
        !take(member(json, "tested"), part.tested) || !take(member(json, "first"), part.first) ||
        !take(member(json, "range"), result.range) || !member(json, "original").is_object() ||
        !take(member(json["original"], "angles"), result.original) ||
        !member(json, "best").is_array())
        return error("this is no result of a search");
    if (json.contains("evaluations"))
        return error("this is the result of a quick search, which tests no part of the order");
    if (!takeTask(member(json, "task"), result.task))
        return error("this result does not tell its task");
    if (part.tested == 0 || part.tested > result.configurations ||
        part.first > result.configurations - part.tested)
        return error(std::to_string(part.tested) + " configurations from number " +
                     std::to_string(part.first) + " on are not among " +
                     std::to_string(result.configurations));
    const Json& best = json["best"];
    if (best.empty() || best.size() > Ranking::kMost)
        return error("there are " + std::to_string(best.size()) +
                     " best configurations, not 1 to 3");
    for (const Json& listed : best) {
        Ranked entry;
        if (const auto fault = takeRanked(listed, result, entry))
            return error(*fault);
        part.best.push_back(entry);
    }
    return result;
}

} // namespace orva
