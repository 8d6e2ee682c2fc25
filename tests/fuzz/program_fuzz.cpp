// A project from a fuzzer through the whole program: opened, predicted, rigged, reported, saved,
// opened again. What is saved twice is the same.
#include "app/files/page_report.h"
#include "app/files/report_file.h"
#include "app/forms/export_table.h"
#include "model/contradictions.h"
#include "model/project_file.h"
#include "require.h"

#include <QLocale>
#include <cmath>
#include <cstdio>

namespace {

using namespace orva;

void predict(Workspace& state, std::uint8_t which)
{
    constexpr int kPoints = 5;
    const LevelChoice choice = {{0, kBands - 1}, LevelField::Continuous, which % 2 == 0};
    Prediction prediction(state.levelKernel(), state.speakerData.BandLevel, state.project.array,
                          state.air.SpeedOfSound);
    const Room& room = state.project.room;
    std::vector<std::vector<float>> levels;
    for (int area = 1; area <= room.GIGetNumAreas(); ++area) {
        levels.push_back(prediction.levelsAlong(room.area(area), kPoints, choice));
        for (const float level : levels.back())
            require(!std::isnan(level));
    }
    const TextOptions options = {which % 3 == 0 ? Language::German : Language::English,
                                 which % 5 != 0};
    require(!csvOf(curveTable(room, levels, options)).empty());
    require(!jsonOf(sheetTable(room, state.project.array, options), options).empty());
}

/// How many of the inputs were calculated, told among the fuzzer's own figures.
struct Calculated {
    long count = 0;
    ~Calculated() { std::fprintf(stderr, "stat::calculated: %ld\n", count); }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Calculated calculated;
    static Workspace state;
    static const bool loaded = bool(LoadSystemData(state, ORVA_SOURCE_DIR "/data"));
    require(loaded);
    auto read = readProject(std::as_bytes(std::span(data, size)), "fuzz.lad");
    if (!read)
        return 0;
    const std::string saved = projectBytes(read->project);
    const auto again = readProject(std::as_bytes(std::span(saved)), "again.lad");
    require(again && projectBytes(again->project) == saved);
    makeCurrent(state, std::move(read->project));
    const LineArray& array = state.project.array;
    (void)contradictions(array, Language::German);
    if (array.fault())
        return 0;
    std::uint8_t which = 0;
    for (std::size_t at = 0; at < size; ++at)
        which = static_cast<std::uint8_t>(which * 31 + data[at]);
    ++calculated.count;
    predict(state, which);
    DrawingOptions options;
    constexpr std::uint8_t kReports = 16; // a report takes as long as a hundred predictions
    if (which % kReports == 0)
        require(bool(rtfReportOf(array, options, 1.5, QLocale::c())));
    if (which == kReports) {
        const auto pages = pageReportOf(state, state.project, {}, QLocale::c());
        require(pages && pdfOf(*pages, QPageSize::A4).starts_with("%PDF"));
    }
    return 0;
}
