#include "app/forms/start_options.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orva {

namespace {

constexpr std::pair<std::string_view, Language> kLanguages[] = {{"en", Language::English},
                                                                {"english", Language::English},
                                                                {"de", Language::German},
                                                                {"german", Language::German},
                                                                {"deutsch", Language::German}};

std::optional<Language> languageNamed(std::string name)
{
    for (char& letter : name)
        letter = static_cast<char>(letter >= 'A' && letter <= 'Z' ? letter - 'A' + 'a' : letter);
    for (const auto& [known, language] : kLanguages)
        if (name == known)
            return language;
    return std::nullopt;
}

constexpr std::pair<std::string_view, bool StartOptions::*> kSwitches[] = {
    {"--help", &StartOptions::help},
    {"-h", &StartOptions::help},
    {"--version", &StartOptions::version},
    {"--reset-settings", &StartOptions::resetSettings},
    {"--no-splash", &StartOptions::noSplash}};

bool takeSwitch(StartOptions& options, std::string_view argument)
{
    for (const auto& [name, field] : kSwitches)
        if (argument == name) {
            options.*field = true;
            return true;
        }
    return false;
}

/// Those of the toolkit, which takes them itself; each with a value.
bool isToolkits(std::string_view argument)
{
    constexpr std::string_view kNames[] = {"-platform", "-style", "-geometry", "-display", "-name"};
    return std::find(std::begin(kNames), std::end(kNames), argument) != std::end(kNames);
}

} // namespace

Result<StartOptions> startOptions(std::span<const std::string> arguments)
{
    StartOptions options;
    bool onlyFiles = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        // "--name VALUE" or "--name=VALUE"; empty where the value lacks
        std::string value;
        const auto takesValue = [&](const std::string& name) {
            if (argument == name && i + 1 < arguments.size())
                value = arguments[++i];
            else if (argument.starts_with(name + "="))
                value = argument.substr(name.size() + 1);
            else
                return argument == name;
            return true;
        };
        if (!onlyFiles && argument == "--") {
            onlyFiles = true;
        } else if (onlyFiles || argument.empty() || argument[0] != '-') {
            if (options.file)
                return Error{"one project at a time", argument};
            options.file = argument;
        } else if (takesValue("--language")) {
            if (value.empty())
                return Error{"which language? (en, de)", argument};
            options.language = languageNamed(value);
            if (!options.language)
                return Error{"no such language (en, de)", value};
        } else if (takesValue("--log")) {
            if (value.empty())
                return Error{"which file?", argument};
            options.log = value;
        } else if (isToolkits(argument)) {
            ++i;
        } else if (!takeSwitch(options, argument)) {
            return Error{"unknown option", argument};
        }
    }
    return options;
}

std::string startHelp()
{
    return "Usage: orva [OPTIONS] [--] [FILE.lad]\n"
           "Opens the project, or starts with a new one.\n\n"
           "  -h, --help           print this\n"
           "  --version            print the version\n"
           "  --language en|de     the language of this run\n"
           "  --no-splash          start without the splash screen's wait\n"
           "  --log FILE           write what happens there instead of to the state folder\n"
           "  --reset-settings     set the stored options aside and start with the first ones\n";
}

} // namespace orva
