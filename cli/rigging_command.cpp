#include "cli/prediction.h"

#include <memory>
#include <ostream>

namespace orva {

namespace {

struct Options {
    CommonOptions common;
    std::string file;
};

Result<Done> printRigging(const Options& options, const Console& console)
{
    const Result<ApplicationState> state = openForCalculation(options.file);
    if (!state)
        return state.error();
    std::string sheet = state->gLineArray.GSGetPrintout(options.common.text());
    std::erase(sheet, '\r'); // the line ends of a terminal
    console.out << sheet;
    return Done{};
}

} // namespace

void addRiggingCommand(CLI::App& program, Work& work)
{
    CLI::App* command = program.add_subcommand("rigging", "print the rigging sheet as text");
    const auto options = std::make_shared<Options>();
    command->add_option("PROJECT.lad", options->file, "the project")->required()->type_name("");
    addCommonOptions(*command, options->common);
    command->callback([options, &work] {
        work = [options](const Console& console) { return printRigging(*options, console); };
    });
}

} // namespace orva
