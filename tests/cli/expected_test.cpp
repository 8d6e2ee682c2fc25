// What the commands say of the shipped examples, as tests/cli/expected has it: the figures there
// agree with an independent model. With ORVA_WRITE_EXPECTED they are written anew.
#include "app/files/file_access.h"
#include "app/files/page_report.h"
#include "command_line_fixture.h"
#include "expected_text.h"
#include "model/project_file.h"
#include "painting/picture.h"
#include "svg_text.h"

#include <QBuffer>
#include <QSvgGenerator>
#include <cmath>
#include <cstdlib>
#include <fstream>

namespace orva {
namespace {

std::string replaced(const std::string& text, const std::string& from, const std::string& to)
{
    std::string whole;
    std::size_t begin = 0;
    for (std::size_t at = 0; (at = text.find(from, begin)) != std::string::npos;
         begin = at + from.size())
        whole += text.substr(begin, at - begin) + to;
    return whole + text.substr(begin);
}

/// Of a text that is too long to be kept (FNV-1a).
std::string fingerprint(const std::string& text)
{
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    return std::to_string(text.size()) + " bytes, " + std::to_string(hash) + '\n';
}

/// Without what differs from run to run.
std::string steady(const std::string& text)
{
    std::istringstream lines(text);
    std::string kept;
    for (std::string line; std::getline(lines, line);)
        if (line.find("\"seconds\"") == std::string::npos &&
            line.find("PerSecond\"") == std::string::npos)
            kept += line + '\n';
    return kept;
}

/// Of the example, or with an array that is too heavy.
PagedDocument reportOf(const std::string& example, const ReportChoice& choice, bool heavy = false)
{
    Workspace state;
    EXPECT_TRUE(LoadSystemData(state, ORVA_BINARY_DIR "/bin"));
    const std::string file = ORVA_SOURCE_DIR "/examples/" + example + ".lad";
    makeCurrent(state, readProject(asBytes(contentOf(file)), file)->project);
    LineArray& array = state.project.array;
    if (heavy) {
        LineArray::Positions types;
        types.fill(2); // bass boxes
        array.GBSetAllType(types);
        array.GBSetNumSpeakers(24);
        array.GFACalcCOM();
    }
    const Result<PagedDocument> report =
        pageReportOf(state, state.project, choice, QLocale(QLocale::English));
    EXPECT_TRUE(report);
    return *report;
}

/// The texts of all pages in the order of painting, and how many shapes of each kind there are.
std::string pagesOf(const PagedDocument& report)
{
    needApplication();
    std::string said;
    for (int page = 0; page < report.pages; ++page) {
        QBuffer svg;
        QSvgGenerator generator;
        generator.setOutputDevice(&svg);
        const QSizeF size(523, 770);
        generator.setSize(size.toSize());
        QPainter painter(&generator);
        report.paint(painter, page, size);
        painter.end();
        said += saidBySvg(QString::fromUtf8(svg.data()), true);
    }
    return said;
}

TEST_F(CommandLine, PagesOfTheExamplesAreWhatTheyWere)
{
    setenv("SOURCE_DATE_EPOCH", "1700000000", 1); // NOLINT(concurrency-mt-unsafe)
    setenv("TZ", "UTC", 1);                       // NOLINT(concurrency-mt-unsafe)
    compareWithKept("cli/expected/pages-theatre.txt", pagesOf(reportOf("theatre", {})));
    ReportChoice choice;
    choice.levels = {{3, 8}, LevelField::Peak, false};
    choice.rowPitchM = 0.42; // one row more than stand on a page
    choice.rowOffsetM = 0.2;
    choice.drawing.text = {Language::German, false};
    choice.delays = true;
    compareWithKept("cli/expected/pages-club-de-ft.txt", pagesOf(reportOf("club", choice)));
    EXPECT_NE(pagesOf(reportOf("theatre", {}, true)).find("kg hang or stand, 850 kg are allowed."),
              std::string::npos);

    const std::string file = folder / "report.pdf";
    const Outcome made = run("report " ORVA_SOURCE_DIR "/examples/theatre.lad " + file +
                             " --averaging broadband --map-type continuous");
    EXPECT_EQ(made.status, 0) << made.err;
    ReportChoice asHeard;
    asHeard.levels = {{0, kBands - 1}, LevelField::Continuous, false};
    asHeard.aWeighted = false;
    EXPECT_TRUE(contentOf(file) == pdfOf(reportOf("theatre", asHeard), QPageSize::A4));
}

TEST_F(CommandLine, SaysOfTheExamplesWhatItSaid)
{
    setenv("SOURCE_DATE_EPOCH", "1700000000", 1); // NOLINT(concurrency-mt-unsafe)
    setenv("TZ", "UTC", 1);                       // NOLINT(concurrency-mt-unsafe)
    const fs::path kept = fs::path(ORVA_SOURCE_DIR) / "tests/cli/expected";
    std::ifstream commands(kept / "commands.txt");
    int count = 0;
    for (std::string name, line; commands >> name && std::getline(commands, line);) {
        ++count;
        const fs::path made = folder / "made";
        line = replaced(line, "EXAMPLES", ORVA_SOURCE_DIR "/examples");
        line = replaced(line, "MADE", made.string());
        std::string said;
        std::istringstream parts(line);
        for (std::string part; std::getline(parts, part, '&');) {
            const Outcome outcome = run(part);
            said += outcome.out + outcome.err;
            if (outcome.status != 0)
                said += "status " + std::to_string(outcome.status) + '\n';
        }
        for (const char* kind : {".csv", ".json", ".rtf"})
            if (const fs::path file = made.string() + kind; fs::exists(file)) {
                const std::string bytes = contentOf(file);
                said += bytes.size() > 10000 ? fingerprint(bytes) : bytes;
                fs::remove(file);
            }
        said = replaced(said, folder.string(), "FOLDER");
        said = steady(replaced(said, ORVA_SOURCE_DIR, "SOURCE"));
        compareWithKept("cli/expected/" + name + ".txt", said);
    }
    EXPECT_GE(count, 35);
}

} // namespace
} // namespace orva
