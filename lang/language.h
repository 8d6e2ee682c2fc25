#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace orva {

/// The values are the language identifiers of the settings store.
enum class Language : std::int32_t { English = 9, German = 1031 };

/// The supported languages in the order of the language list.
const std::array<Language, 2>& MlSupportedLanguages();

/// English for an identifier that is not supported.
Language languageOf(std::int32_t languageId);

/// The language of an identifier as the settings store holds it, in digits; English for any other
/// text.
Language storedLanguage(std::string_view text);

/// Name in the settings store; "Invalid Language Index" for an identifier that is not supported.
std::string_view MlLanguageName(std::int32_t languageId);

} // namespace orva
