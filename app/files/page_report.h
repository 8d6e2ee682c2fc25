#pragma once

#include "app/state/application_state.h"
#include "drawing/drawing_options.h"
#include "engine/line_spl.h"
#include "painting/paged_document.h"

#include <QLocale>

namespace orva {

/// What the report shows, and how.
struct ReportChoice {
    LevelChoice levels;
    bool aWeighted = true;
    double rowPitchM = 0.9;
    double rowOffsetM = 0;
    DrawingOptions drawing;
    bool delays = false; ///< in the section
};

/// The report of a project as it is handed to a venue: section, map and levels; curves and strips;
/// rigging with every height; sub array and variants, where there are such. What is wrong stands in
/// red on every page that it touches. Dated like the RTF report; holds all that it shows.
/// An error where the array cannot be calculated.
Result<PagedDocument> pageReportOf(ApplicationState& state, const Project& project,
                                   const ReportChoice& choice, const QLocale& dates);

} // namespace orva
