#include "app/files/report_file.h"
#include "cli/prediction.h"

#include <memory>

namespace orva {

namespace {

struct Options : ProjectOptions {
    std::string outFile;
};

Result<Done> writeReport(const Options& options, const Console& console)
{
    constexpr double kAspect = 16.0 / 9;
    if (auto apart = checkOutputs(console, options.common, {options.outFile}, {options.file});
        !apart)
        return apart;
    const Result<OpenProject> state = openForCalculation(options.file);
    if (!state)
        return state.error();
    const bool german = options.common.text().language == Language::German;
    const QLocale dates(german ? QLocale::German : QLocale::English);
    const Result<std::string> report =
        rtfReportOf(state->project.array, options.common.drawing(), kAspect, dates);
    if (!report)
        return report.error();
    PendingFiles files;
    if (auto added = files.add(options.outFile, *report); !added)
        return added;
    return deliver(console, "", files, state->warnings);
}

} // namespace

void addReportCommand(CLI::App& program, Work& work)
{
    CLI::App* command = program.add_subcommand("report", "write the report as an RTF document");
    const auto options = std::make_shared<Options>();
    addProjectOptions(*command, *options);
    command->add_option("out", options->outFile, "the document")
        ->required()
        ->check(fileName())
        ->type_name("OUT.rtf");
    command->callback([options, &work] {
        work = [options](const Console& console) { return writeReport(*options, console); };
    });
}

} // namespace orva
