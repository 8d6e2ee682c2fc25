#include "lang/string_table.h"

#include "lang/decimal_text.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <functional>

namespace orva {

/// texts.tsv, taken in by the build.
extern const char* const kEmbeddedTexts;

namespace {

std::string_view withoutQuotes(std::string_view quoted)
{
    assert(quoted.size() >= 2 && quoted.front() == '"' && quoted.back() == '"');
    return quoted.substr(1, quoted.size() - 2);
}

std::vector<TextRow> readTable()
{
    std::vector<TextRow> rows;
    for (std::string_view rest = kEmbeddedTexts; !rest.empty();) {
        std::string_view line = takeUpTo(rest, '\n');
        if (line.empty() || line.front() == '#')
            continue;
        const std::string_view number = takeUpTo(line, '\t');
        TextRow row{};
        std::from_chars(number.data(), number.data() + number.size(), row.id);
        row.name = takeUpTo(line, '\t');
        row.english = withoutQuotes(takeUpTo(line, '\t'));
        row.german = withoutQuotes(line);
        rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end(),
              [](const TextRow& a, const TextRow& b) { return a.id < b.id; });
    return rows;
}

} // namespace

const std::vector<TextRow>& MlInit()
{
    static const std::vector<TextRow> rows = readTable();
    return rows;
}

std::string_view MlGetString(Language language, int id)
{
    const std::vector<TextRow>& rows = MlInit();
    const auto row = std::lower_bound(rows.begin(), rows.end(), id,
                                      [](const TextRow& r, int wanted) { return r.id < wanted; });
    if (row == rows.end() || row->id != id)
        return {};
    return language == Language::German && !row->german.empty() ? row->german : row->english;
}

std::string_view lengthUnit(const TextOptions& options)
{
    return MlGetString(options.language, options.Units_Meters ? Text::MetresUnit : Text::FeetUnit);
}

Text areaText(int number)
{
    return number == 1 ? Text::Area1 : number == 2 ? Text::Area2 : Text::Area3;
}

} // namespace orva
