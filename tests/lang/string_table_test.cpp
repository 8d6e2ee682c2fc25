#include "lang/message.h"
#include "lang/string_table.h"

#include <cctype>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace orva {
namespace {

std::map<int, std::string> givenEnglish()
{
    std::map<int, std::string> texts;
    std::ifstream file(ORVA_SOURCE_DIR "/tests/lang/given_english_texts.tsv");
    for (std::string line; std::getline(file, line);) {
        const std::size_t tab = line.find('\t');
        texts[std::stoi(line)] = line.substr(tab + 2, line.size() - tab - 3);
    }
    return texts;
}

TEST(StringTable, EnglishTextsAreTheGivenOnes)
{
    const std::map<int, std::string> given = givenEnglish();
    ASSERT_EQ(given.size(), 269U);
    for (int id = 1; id <= 270; ++id) {
        const auto text = given.find(id);
        EXPECT_EQ(MlGetString(Language::English, id), text == given.end() ? "" : text->second)
            << id;
    }
}

TEST(StringTable, EveryIdStandsOnceAndHasBothLanguages)
{
    const std::set<int> emptyGerman = {176, 180, 250, 260};
    int last = 0;
    for (const TextRow& row : MlInit()) {
        EXPECT_GT(row.id, last);
        last = row.id;
        EXPECT_FALSE(row.english.empty()) << row.id;
        EXPECT_EQ(row.german.empty(), emptyGerman.count(row.id) == 1) << row.id;
        EXPECT_FALSE(MlGetString(Language::German, row.id).empty()) << row.id;
        EXPECT_TRUE(row.id <= 270 || row.id >= 1001) << row.id;
    }
    EXPECT_EQ(MlGetString(Language::German, 250), "kg ");
    EXPECT_EQ(MlGetString(Language::German, 248), "");
    EXPECT_EQ(MlGetString(Language::English, 99999), "");
}

TEST(StringTable, GermanKeepsTheGivenRowsBlanksAndFigures)
{
    const std::pair<int, const char*> given[] = {
        {1, "ORVA - Tarnholm Audio"},
        {98, "&Datei"},
        {99, "&Neu"},
        {100, "&Öffnen"},
        {101, "&Speichern"},
        {108, "Daten Laden (.xhn)"},
        {136, "Autokorrektur:"},
        {198, "Änderungen im aktuellen Projekt speichern?"},
        {201, "ARDA ASCII Lautsprecherdaten laden"},
        {245, "Sprache auswählen"},
        {246, "Diesen Dialog beim Programmstart anzeigen"}};
    for (const auto& [id, text] : given)
        EXPECT_EQ(MlGetString(Language::German, id), text);

    const auto digits = [](std::string_view text) {
        std::string found;
        for (const char c : text)
            if (std::isdigit(static_cast<unsigned char>(c)) != 0)
                found += c;
        return found;
    };
    const auto blanks = [](std::string_view text) {
        return std::pair(text.find_first_not_of(' '), text.size() - text.find_last_not_of(' '));
    };
    for (const TextRow& row : MlInit()) {
        if (row.german.empty())
            continue;
        EXPECT_EQ(digits(row.german), digits(row.english)) << row.id; // 33kg stays 33kg
        if (row.id != 101) { // given with and without a blank
            EXPECT_EQ(blanks(row.german), blanks(row.english)) << row.id;
        }
    }
}

TEST(Languages, UnknownIdentifiersAreEnglish)
{
    const std::tuple<std::int32_t, Language, const char*> cases[] = {
        {9, Language::English, "English"},
        {1031, Language::German, "German (Germany)"},
        {1033, Language::English, "Invalid Language Index"},
        {-1, Language::English, "Invalid Language Index"}};
    for (const auto& [id, language, name] : cases) {
        EXPECT_EQ(languageOf(id), language) << id;
        EXPECT_EQ(MlLanguageName(id), name) << id;
        EXPECT_EQ(storedLanguage(std::to_string(id)), language) << id;
    }
    for (const char* stored : {"", "abc", "1e99", "-1e99", "4294968327", "1031.5"})
        EXPECT_EQ(storedLanguage(stored), Language::English) << stored;
    EXPECT_EQ(MlSupportedLanguages().front(), Language::English);
}

TEST(Message, BecomesWordsInTheLanguageAsked)
{
    const Message inside(Text::FileEndsInside, {Message(Text::BlockRoom), number(30), number(584)});
    EXPECT_EQ(inside.text(), "the file ends inside the room block (30 bytes, 584 needed)");
    EXPECT_EQ(inside.text(Language::German),
              "die Datei endet in dem Block des Raums (30 Bytes, nötig sind 584)");
    EXPECT_EQ(Message("100 % as it is %1").text(Language::German), "100 % as it is %1");
    EXPECT_EQ(Message(Text::BandsFound, {"%2"}).text(), "%2 of %2 bands found")
        << "what is put in is not looked at, what is missing stays";
}

} // namespace
} // namespace orva
