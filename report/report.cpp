#include "report/report.h"

#include "lang/string_table.h"
#include "model/contradictions.h"
#include "report/rtf_document.h"

#include <cmath>

namespace orva {

namespace {

constexpr int kCellBesidePicture = 567;

void writePictures(RtfDocument& document, const std::vector<ReportPicture>& pictures)
{
    const std::optional<PictureGrid> grid = pictureGrid(pictures.size());
    if (!grid)
        return;
    const auto columns = static_cast<std::size_t>(grid->columns);
    for (std::size_t first = 0; first < pictures.size(); first += columns) {
        const auto row =
            std::span(pictures).subspan(first, std::min(columns, pictures.size() - first));
        std::vector<PictureGrid> sizes;
        std::vector<int> widths;
        for (const ReportPicture& picture : row) {
            const PixelSize pixels = pngSize(picture.png);
            sizes.push_back(fitted(*grid, pixels.width, pixels.height));
            widths.push_back(sizes.back().width + kCellBesidePicture);
        }
        document.beginRow(widths);
        for (std::size_t i = 0; i < row.size(); ++i) {
            document.insertPicture({row[i].png, sizes[i].width, sizes[i].height});
            document.insertText("\n\r" + row[i].caption + "\n\r\n\r");
            document.endCell();
        }
        document.endRow();
    }
}

/// Blanks bring no columns in line in a proportional font: a tab does.
void insertLines(RtfDocument& document, const ReportSection& section)
{
    if (section.columnTwips == 0) {
        document.insertText(section.text);
        return;
    }
    std::string_view text = section.text;
    while (!text.empty()) {
        std::string_view line = text.substr(0, text.find('\n') + 1);
        if (line.empty())
            line = text;
        text.remove_prefix(line.size());
        const std::size_t colon = line.find(" : ");
        const std::size_t label = line.find_last_not_of(' ', colon);
        if (colon == std::string_view::npos || label == std::string_view::npos ||
            line.find('\t') != std::string_view::npos) {
            document.insertText(line);
            continue;
        }
        document.setTabStops({section.columnTwips});
        document.insertText(line.substr(0, label + 1));
        document.insertText("\t");
        document.insertText(line.substr(colon + 1));
        document.setTabStops(RtfDocument::defaultTabStops());
    }
}

} // namespace

std::optional<PictureGrid> pictureGrid(std::size_t pictures)
{
    if (pictures < 1 || pictures > 12)
        return std::nullopt;
    if (pictures == 1)
        return PictureGrid{1, 1, 9072, 5103};
    if (pictures == 2)
        return PictureGrid{1, 2, 9072, 5103};
    if (pictures == 3)
        return PictureGrid{1, 3, 9072, 3118};
    if (pictures == 4)
        return PictureGrid{2, 2, 3969, 5103};
    if (pictures <= 6)
        return PictureGrid{2, 3, 3969, 3118};
    if (pictures <= 9)
        return PictureGrid{3, 3, 2693, 3118};
    return PictureGrid{3, 4, 2693, 2268};
}

PictureGrid fitted(PictureGrid grid, double widthPx, double heightPx)
{
    if (!(widthPx > 0 && heightPx > 0))
        return grid;
    const double shape = widthPx / heightPx;
    const double cell = static_cast<double>(grid.width) / grid.height;
    if (cell > shape)
        grid.width = static_cast<int>(std::nearbyint(grid.height * shape));
    else if (cell < shape)
        grid.height = static_cast<int>(std::nearbyint(grid.width / shape));
    return grid;
}

std::string rtfReport(std::span<const ReportSection> sections)
{
    RtfDocument document;
    for (const ReportSection& section : sections) {
        const auto useFont = [&] {
            document.setFont(section.fontName, section.fontSizePt);
            document.setColour(section.colour);
        };
        useFont();
        insertLines(document, section);
        if (!section.pictures.empty()) {
            document.insertText("\r");
            writePictures(document, section.pictures);
            useFont();
        }
        if (&section != &sections.back()) // blank lines at the end may fill a page of their own
            document.insertText("\n\r");
    }
    return document.bytes();
}

std::vector<ReportSection> reportSections(const LineArray& array, const std::string& version,
                                          const std::string& created, std::string riggingPng,
                                          const TextOptions& options)
{
    constexpr int kSheetPt = 14;
    constexpr int kColonTwips = 3600;
    constexpr std::uint32_t kRed = 0x0000FF;
    const auto text = [&](Text id) { return std::string(MlGetString(options.language, id)); };
    ReportSection title;
    title.text = "ORVA " + version + ".\r" + text(Text::ReportCreated) + created + "\r\r";
    std::vector<ReportSection> sections = {title};
    ReportSection warning;
    warning.colour = kRed;
    for (const std::string& line : contradictions(array, options.language))
        warning.text += line + "\r";
    if (!warning.text.empty())
        sections.push_back(warning);
    ReportSection drawing;
    drawing.text = text(Text::RiggingDisplay);
    drawing.pictures.push_back({std::move(riggingPng), ""});
    ReportSection sheet;
    sheet.text = array.GSGetPrintout(options);
    sheet.text.erase(sheet.text.find_last_not_of("\r\n") + 1);
    sheet.fontSizePt = kSheetPt;
    sheet.columnTwips = kColonTwips;
    sections.push_back(drawing);
    sections.push_back(sheet);
    return sections;
}

} // namespace orva
