#pragma once

#include "lang/text_ids.h"
#include "lang/text_options.h"

#include <string_view>
#include <vector>

namespace orva {

/// A row of texts.tsv as it stands there.
struct TextRow {
    int id;
    std::string_view name; ///< in the enum Text
    std::string_view english;
    std::string_view german; ///< may be empty: shown in English
};

/// Reads the table, in the order of its ids. The first call does the work, later ones do nothing.
const std::vector<TextRow>& MlInit();

/// The text of row `id` in the language, UTF-8, blanks and ampersands as they stand. English where
/// the German text is empty; empty for an id without a row.
std::string_view MlGetString(Language language, int id);
inline std::string_view MlGetString(Language language, Text text)
{
    return MlGetString(language, static_cast<int>(text));
}

/// "m" or "ft".
std::string_view lengthUnit(const TextOptions& options);

/// "Area 2": of audience area 1 to 3.
Text areaText(int number);

} // namespace orva
