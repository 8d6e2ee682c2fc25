#include "app/files/page_report.h"
#include "app/files/report_file.h"
#include "cli/prediction.h"

#include <memory>

namespace orva {

namespace {

struct Options : ProjectOptions {
    PredictionOptions prediction;
    std::string outFile;
    std::string paper = "a4";
};

bool isPdf(const std::string& name)
{
    return QString::fromStdString(name).endsWith(".pdf", Qt::CaseInsensitive);
}

Result<std::string> pdfReport(const Options& options, OpenProject& state, const QLocale& dates)
{
    ReportChoice choice;
    choice.levels = options.prediction.choice();
    choice.aWeighted = options.prediction.aWeighted;
    choice.drawing = options.common.drawing();
    const Result<PagedDocument> report = pageReportOf(state, state.project, choice, dates);
    if (!report)
        return report.error();
    return pdfOf(*report, options.paper == "letter" ? QPageSize::Letter : QPageSize::A4);
}

Result<Done> writeReport(const Options& options, const Console& console)
{
    constexpr double kAspect = 16.0 / 9;
    if (qEnvironmentVariableIsSet("SOURCE_DATE_EPOCH")) // else a zone's name makes other bytes
        qputenv("TZ", "UTC");
    if (auto apart = checkOutputs(console, options.common, {options.outFile}, {options.file});
        !apart)
        return apart;
    const bool pdf = isPdf(options.outFile);
    Result<OpenProject> state =
        pdf ? openForPrediction(options.file, options.common, options.prediction, console)
            : openForCalculation(options.file);
    if (!state)
        return state.error();
    const bool german = options.common.text().language == Language::German;
    const QLocale dates(german ? QLocale::German : QLocale::English);
    const Result<std::string> report =
        pdf ? pdfReport(options, *state, dates)
            : rtfReportOf(state->project.array, options.common.drawing(), kAspect, dates);
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
    CLI::App* command = program.add_subcommand(
        "report", "write the report: a PDF with levels and rigging, or the sheet as RTF");
    const auto options = std::make_shared<Options>();
    addProjectOptions(*command, *options);
    addExample(*command, "theatre.lad theatre.rtf --language de");
    command->add_option("out", options->outFile, "the document")
        ->required()
        ->check(fileName())
        ->type_name("OUT.pdf|OUT.rtf");
    command->add_option("--paper", options->paper, "of a PDF")
        ->check(CLI::IsMember({"a4", "letter"}))
        ->type_name("")
        ->capture_default_str();
    addPredictionOptions(*command, options->prediction);
    command->callback([options, &work] {
        work = [options](const Console& console) { return writeReport(*options, console); };
    });
}

} // namespace orva
