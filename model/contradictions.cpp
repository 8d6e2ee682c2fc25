#include "model/contradictions.h"

#include "lang/string_table.h"

#include <tuple>

namespace orva {

namespace {

/// Rows of the string table.
enum Row {
    kStraight = 1040,
    kTrapezoidal = 1041,
    kBass = 1042,
    kUnknownBoxes = 1043,
    kSystem = 1044
};

int inColumn(const LineArray& array, BoxKind kind)
{
    int count = 0;
    for (int i = 0; i < array.boxCount(); ++i)
        count += array.kindAt(i) == kind;
    return count;
}

std::string filled(std::string_view text, const std::string& first, const std::string& second = {})
{
    std::string line(text);
    if (const std::size_t at = line.find("%1"); at != std::string::npos)
        line.replace(at, 2, first);
    if (const std::size_t at = line.find("%2"); at != std::string::npos)
        line.replace(at, 2, second);
    return line;
}

/// "2 (9), 5 (12)": positions from 1 with the codes that the system does not know.
std::string unknownBoxes(const LineArray& array)
{
    std::string list;
    for (int i = 0; i < array.boxCount(); ++i)
        if (!array.kindAt(i)) {
            const std::int16_t code = array.GIAGetAllType()[static_cast<std::size_t>(i)];
            list += (list.empty() ? "" : ", ") + std::to_string(i + 1) + " (" +
                    std::to_string(code) + ")";
        }
    return list;
}

} // namespace

std::vector<std::string> contradictions(const LineArray& array, Language language)
{
    const auto text = [&](int id) { return MlGetString(language, id); };
    std::vector<std::string> lines;
    const std::int16_t system = array.GIGetArrayType();
    if (system != kStandardSystem && system != kCompactSystem)
        lines.push_back(filled(text(kSystem), std::to_string(system)));
    const std::tuple<int, int, BoxKind> counts[] = {
        {kStraight, array.GIGetNumGerade(), BoxKind::Straight},
        {kTrapezoidal, array.GIGetNumSchräg(), BoxKind::Trapezoidal},
        {kBass, array.GIGetNumBass(), BoxKind::Bass}};
    for (const auto& [id, named, kind] : counts)
        if (const int hung = inColumn(array, kind); hung != named)
            lines.push_back(filled(text(id), std::to_string(named), std::to_string(hung)));
    if (const std::string boxes = unknownBoxes(array); !boxes.empty())
        lines.push_back(filled(text(kUnknownBoxes), boxes));
    return lines;
}

} // namespace orva
