#include "cli/command_line.h"

#include "cli/options.h"
#include "lang/utf8.h"
#include "version/version.h"

#include <algorithm>
#include <ostream>

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

namespace orva {

namespace {

constexpr int kWorkFailed = 1;
constexpr int kArgumentsWrong = 2;

int argumentsWrong(const Console& console, const std::string& why)
{
    console.err << "orva-cli: " << printable(why) << "\nRun orva-cli --help for what it takes.\n";
    return kArgumentsWrong;
}

int run(const std::vector<std::string>& words, const Console& console)
{
    CLI::App program("Predicts, aims and reports a line array from its project file.", "orva-cli");
    program.set_version_flag("--version", versionText("orva-cli"));
    program.require_subcommand(1);
    Work work;
    addCommands(program, work);

    const auto isNamed = [&words](const CLI::App* command) {
        return command->get_name() == words[0];
    };
    const std::vector<CLI::App*> commands = program.get_subcommands({});
    if (!words.empty() && words[0].rfind('-', 0) != 0 &&
        std::none_of(commands.begin(), commands.end(), isNamed))
        return argumentsWrong(console, words[0] + " is no command");
    try {
        program.parse(
            std::vector<std::string>(words.rbegin(), words.rend())); // the library's order
    } catch (const CLI::Success& asked) {                            // help or version
        program.exit(asked, console.out, console.err);
        console.out.flush();
        return console.out ? 0 : kWorkFailed;
    } catch (const CLI::ParseError& error) {
        return argumentsWrong(console, error.what());
    }

    const Result<Done> done = work(console);
    if (done)
        return 0;
    console.err << "orva-cli: " << printable(done.error().text()) << '\n';
    return kWorkFailed;
}

} // namespace

void addCommands(CLI::App& program, Work& work)
{
    addNewCommand(program, work);
    addShowCommand(program, work);
    addGeometryCommand(program, work);
    addRiggingCommand(program, work);
    addRowsCommand(program, work);
    addLevelsCommand(program, work);
    addSpectrumCommand(program, work);
    addCompareCommand(program, work);
    addSuggestCommand(program, work);
    addMapCommand(program, work);
    addOptimizeCommand(program, work);
    addAimCommand(program, work);
    addSubArrayCommand(program, work);
    addReportCommand(program, work);
}

int runCommandLine(const std::vector<std::string>& words, const Console& console)
{
    try {
        return run(words, console);
    } catch (const std::bad_alloc&) {
        console.err << "orva-cli: not enough memory for this calculation\n";
        return kWorkFailed;
    }
}

} // namespace orva
