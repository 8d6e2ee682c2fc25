#include "cli/command_line.h"

#include "cli/options.h"

#include <algorithm>
#include <ostream>

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

namespace orva {

namespace {

constexpr int kWorkFailed = 1;
constexpr int kArgumentsWrong = 2;

std::string oneLine(std::string text)
{
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

int run(const std::vector<std::string>& words, const Console& console)
{
    CLI::App program("Predicts, aims and reports a line array from its project file.", "orva-cli");
    program.set_version_flag("--version", "orva-cli " ORVA_VERSION);
    program.require_subcommand(1);
    Work work;
    addNewCommand(program, work);
    addShowCommand(program, work);
    addGeometryCommand(program, work);
    addRiggingCommand(program, work);
    addLevelsCommand(program, work);
    addMapCommand(program, work);
    addAimCommand(program, work);
    addSubArrayCommand(program, work);

    try {
        program.parse(
            std::vector<std::string>(words.rbegin(), words.rend())); // the library's order
    } catch (const CLI::Success& asked) {                            // help or version
        program.exit(asked, console.out, console.err);
        return 0;
    } catch (const CLI::ParseError& error) {
        console.err << "orva-cli: " << oneLine(error.what())
                    << "\nRun orva-cli --help for what it takes.\n";
        return kArgumentsWrong;
    }

    const Result<Done> done = work(console);
    console.out.flush();
    if (done && console.out)
        return 0;
    const Error unwritten{"the result cannot be written", "standard output"};
    console.err << "orva-cli: " << oneLine((done ? unwritten : done.error()).text()) << '\n';
    return kWorkFailed;
}

} // namespace

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
