#include "cli/prediction.h"
#include "drawing/array_drawing.h"

#include <memory>

namespace orva {

namespace {

struct RiggingOptions : ProjectOptions {
    PictureOptions picture;
    FigureFiles figures;
};

Result<Done> printRigging(const RiggingOptions& options, const Console& console)
{
    if (auto apart = checkOutputs(console, options.common,
                                  {options.picture.file, options.figures.csv, options.figures.json},
                                  {options.file});
        !apart)
        return apart;
    const Result<OpenProject> state = openForCalculation(options.file);
    if (!state)
        return state.error();
    PendingFiles files;
    const auto draw = [&](DrawingSurface& surface) {
        DrawRiggingView(surface, state->project.array, options.common.drawing());
    };
    if (auto drawn = addPicture(options.picture, draw, files); !drawn)
        return drawn;
    const TextOptions text = options.common.text();
    const auto table = [&] { return sheetTable(state->project.room, state->project.array, text); };
    if (auto added = addFigures(options.figures, table, text, files); !added)
        return added;
    std::string sheet = state->project.array.GSGetPrintout(text);
    std::erase(sheet, '\r'); // the line ends of a terminal
    return deliver(console, sheet, files, state->warnings);
}

} // namespace

void addRiggingCommand(CLI::App& program, Work& work)
{
    CLI::App* command = program.add_subcommand("rigging", "print the rigging sheet as text");
    const auto options = std::make_shared<RiggingOptions>();
    addPictureOptions(*command, options->picture, "write the rigging view");
    addFigureOptions(*command, options->figures, "the sheet and where each box hangs");
    addProjectOptions(*command, *options);
    addExample(*command, "theatre.lad --units ft --png rigging.png");
    command->callback([options, &work] {
        work = [options](const Console& console) { return printRigging(*options, console); };
    });
}

} // namespace orva
