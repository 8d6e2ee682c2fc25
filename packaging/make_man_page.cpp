// Makes a man page of its template: @VERSION@, @DATE@, @OPTIONS@ of orva, @COMMANDS@ of orva-cli,
// as the programs themselves tell them.
#include "app/forms/start_options.h"
#include "cli/options.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

using namespace orva;

namespace {

/// A text that is printed as it stands.
std::string plain(const std::string& text)
{
    std::string page;
    for (const char c : text)
        page += c == '\\' ? "\\e" : c == '-' ? "\\-" : std::string(1, c);
    return !page.empty() && (page[0] == '.' || page[0] == '\'') ? "\\&" + page : page;
}

std::string withCapital(std::string text)
{
    if (!text.empty() && text[0] >= 'a' && text[0] <= 'z')
        text[0] = static_cast<char>(text[0] - 'a' + 'A');
    return text;
}

std::string joined(std::string text, const std::string& separator)
{
    for (std::size_t at = 0; (at = text.find(',', at)) != std::string::npos; at += separator.size())
        text.replace(at, 1, separator);
    return text;
}

/// A file's place in the command: "PROJECT.lad".
std::string placeName(const CLI::Option& option)
{
    const std::string type = option.get_type_name();
    return type.empty() ? option.get_name(true) : type;
}

std::string paragraph(const CLI::Option& option)
{
    // "TYPE:{a,b}": the name of the value and its choices, either may lack
    const std::string type = option.get_type_name();
    const std::size_t colon = type.find(":{");
    const std::string value = type.substr(0, colon);
    std::string page = ".TP\n\\fB" + plain(joined(option.get_name(false, true), ", ")) + "\\fR";
    if (!value.empty())
        page += " \\fI" + plain(value) + "\\fR";
    page += '\n' + plain(withCapital(option.get_description())) + ".\n";
    if (colon != std::string::npos)
        page += "One of " + plain(joined(type.substr(colon + 2, type.size() - colon - 3), ", ")) +
                ".\n";
    if (!option.get_default_str().empty())
        page += "Default: " + plain(option.get_default_str()) + ".\n";
    return page;
}

/// The options of a command, those of its groups too.
std::vector<const CLI::Option*> optionsOf(const CLI::App& command)
{
    std::vector<const CLI::Option*> options;
    const auto add = [&options](const CLI::App& from) {
        for (const CLI::Option* option : from.get_options())
            if (!option->get_positional())
                options.push_back(option);
    };
    for (const CLI::App* group : command.get_subcommands([](const CLI::App*) { return true; }))
        add(*group);
    add(command);
    return options;
}

std::string commandSection(const CLI::App& command, const std::vector<std::string>& shared)
{
    std::string page = ".SS " + plain(command.get_name()) + "\n.B orva\\-cli " +
                       plain(command.get_name()) + "\n[\\fIOPTIONS\\fR]";
    for (const CLI::Option* option : command.get_options())
        if (option->get_positional())
            page += " \\fI" + plain(placeName(*option)) + "\\fR";
    page += "\n.PP\n" + plain(withCapital(command.get_description())) + ".\n";
    for (const CLI::Option* option : optionsOf(command))
        if (const std::string text = paragraph(*option);
            std::find(shared.begin(), shared.end(), text) == shared.end())
            page += text;
    std::istringstream footer(command.get_footer());
    std::string line;
    for (std::string before; std::getline(footer, line); before = line) {
        if (line.rfind("  ", 0) == 0)
            page += ".IP\n.B " + plain(line.substr(2)) + '\n';
        else
            page += line.empty()     ? ""
                    : before.empty() ? ".PP\n" + plain(line) + '\n'
                                     : plain(line) + '\n';
    }
    return page;
}

/// All commands; options that each has stand once, at the end.
std::string commandSections()
{
    CLI::App program;
    Work work;
    addCommands(program, work);
    const std::vector<CLI::App*> commands = program.get_subcommands({});
    std::vector<std::string> shared;
    std::string common;
    for (const CLI::Option* option : optionsOf(*commands.front())) {
        const std::string text = paragraph(*option);
        if (std::all_of(commands.begin(), commands.end(), [&text](const CLI::App* command) {
                const std::vector<const CLI::Option*> options = optionsOf(*command);
                return std::any_of(options.begin(), options.end(), [&text](const CLI::Option* its) {
                    return paragraph(*its) == text;
                });
            })) {
            shared.push_back(text);
            common += text;
        }
    }
    std::string page = ".SH COMMANDS\n";
    for (const CLI::App* command : commands)
        page += commandSection(*command, shared);
    return page + ".SH OPTIONS OF EVERY COMMAND\n" + common;
}

/// "  --log FILE           write ..." of the window's help.
std::string startOptionParagraphs()
{
    std::istringstream help(startHelp());
    std::string page;
    for (std::string line; std::getline(help, line);)
        if (const std::size_t gap = line.find("  ", 3);
            line.rfind("  -", 0) == 0 && gap != std::string::npos)
            page += ".TP\n.B " + plain(line.substr(2, gap - 2)) + '\n' +
                    plain(withCapital(line.substr(line.find_first_not_of(' ', gap)))) + ".\n";
    return page;
}

void replace(std::string& text, const std::string& what, const std::string& with)
{
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
}

} // namespace

/// make_man_page TEMPLATE OUT VERSION DATE
int main(int argc, char** argv)
{
    if (argc != 5)
        return 2;
    std::ifstream in(argv[1]);
    std::string page{std::istreambuf_iterator<char>(in), {}};
    replace(page, "@VERSION@", argv[3]);
    replace(page, "@DATE@", argv[4]);
    replace(page, "@OPTIONS@\n", startOptionParagraphs());
    replace(page, "@COMMANDS@\n", commandSections());
    std::ofstream out(argv[2]);
    out << page;
    return in && !page.empty() && out.flush() ? 0 : 1;
}
