#include "lang/language.h"

#include "lang/decimal_text.h"

#include <algorithm>

namespace orva {

const std::array<Language, 2>& MlSupportedLanguages()
{
    static constexpr std::array kLanguages = {Language::English, Language::German};
    return kLanguages;
}

Language languageOf(std::int32_t languageId)
{
    const auto& all = MlSupportedLanguages();
    const auto* found = std::find(all.begin(), all.end(), static_cast<Language>(languageId));
    return found == all.end() ? Language::English : *found;
}

Language storedLanguage(std::string_view text)
{
    const double id = leadingNumber(text);
    for (const Language language : MlSupportedLanguages())
        if (id == static_cast<double>(language))
            return language;
    return Language::English;
}

std::string_view MlLanguageName(std::int32_t languageId)
{
    switch (static_cast<Language>(languageId)) {
    case Language::English:
        return "English";
    case Language::German:
        return "German (Germany)";
    }
    return "Invalid Language Index";
}

} // namespace orva
