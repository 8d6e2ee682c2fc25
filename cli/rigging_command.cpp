#include "cli/prediction.h"

#include <ostream>

namespace orva {

namespace {

Result<Done> printRigging(const ProjectOptions& options, const Console& console)
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
    addProjectCommand(program, work, "rigging", "print the rigging sheet as text", printRigging);
}

} // namespace orva
