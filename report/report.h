#pragma once

#include "lang/text_options.h"
#include "model/line_array.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace orva {

/// A picture of a report with what is printed under it.
struct ReportPicture {
    std::string png;
    std::string caption;
};

/// A text in one font, followed by a grid of up to 12 pictures.
struct ReportSection {
    std::string text; ///< lines end with CR
    std::string fontName = "Times New Roman";
    int fontSizePt = 10;
    std::uint32_t colour = 0; ///< 0x00BBGGRR
    std::vector<ReportPicture> pictures;
    /// Where the colons of "label : value" lines stand, twips; 0: as the text has them.
    int columnTwips = 0;
};

/// How so many pictures (1 to 12) are laid out: columns, rows, and the largest size of each in
/// twips. None for any other number.
struct PictureGrid {
    int columns;
    int rows;
    int width;
    int height;
};
std::optional<PictureGrid> pictureGrid(std::size_t pictures);

/// The largest size within the grid's cells that keeps the shape of `widthPx` x `heightPx`.
PictureGrid fitted(PictureGrid grid, double widthPx, double heightPx);

/// The sections as a document.
std::string rtfReport(std::span<const ReportSection> sections);

/// The report of an array without a fault(): program and time of writing, in red what in the array
/// contradicts itself, the rigging drawing (a PNG), the rigging sheet. `created` is date and time
/// as the user reads them.
std::vector<ReportSection> reportSections(const LineArray& array, const std::string& version,
                                          const std::string& created, std::string riggingPng,
                                          const TextOptions& options);

} // namespace orva
