#include "app/forms/start_options.h"

#include <gtest/gtest.h>

namespace orva {
namespace {

TEST(StartOptions, ArgumentsOfTheWindow)
{
    struct Case {
        std::vector<std::string> arguments;
        std::string file;
        std::optional<Language> language;
        std::string switches; ///< help, version, reset, no splash
    };
    const Case cases[] = {
        {{}, "", {}, ""},
        {{"hall.lad"}, "hall.lad", {}, ""},
        {{"--", "--no-splash"}, "--no-splash", {}, ""},
        {{"--no-splash", "file:///tmp/a%20b.lad"}, "file:///tmp/a%20b.lad", {}, "s"},
        {{"--language", "DE", "x.lad"}, "x.lad", Language::German, ""},
        {{"--language=english"}, "", Language::English, ""},
        {{"--log", "l.txt", "--log=m.txt", "a.lad"}, "a.lad", {}, "m.txt"},
        {{"-platform", "xcb", "a.lad"}, "a.lad", {}, ""},
        {{"-h"}, "", {}, "h"},
        {{"--version", "--reset-settings", "--help"}, "", {}, "hvr"}};
    for (const Case& test : cases) {
        const Result<StartOptions> options = startOptions(test.arguments);
        ASSERT_TRUE(options);
        EXPECT_EQ(options->file.value_or(""), test.file);
        EXPECT_EQ(options->language, test.language);
        const std::string switches = std::string(options->help ? "h" : "") +
                                     (options->version ? "v" : "") +
                                     (options->resetSettings ? "r" : "") +
                                     (options->noSplash ? "s" : "") + options->log.value_or("");
        EXPECT_EQ(switches, test.switches);
    }
    const std::pair<std::vector<std::string>, const char*> wrong[] = {
        {{"a.lad", "b.lad"}, "b.lad: one project at a time"},
        {{"--nosplash"}, "--nosplash: unknown option"},
        {{"-x"}, "-x: unknown option"},
        {{"--language"}, "--language: which language? (en, de)"},
        {{"--log"}, "--log: which file?"},
        {{"--language=fr"}, "fr: no such language (en, de)"}};
    for (const auto& [arguments, message] : wrong) {
        const Result<StartOptions> options = startOptions(arguments);
        ASSERT_FALSE(options);
        EXPECT_EQ(options.error().text(), message);
    }
}

} // namespace
} // namespace orva
