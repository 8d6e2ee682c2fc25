#pragma once

#include "drawing/drawing_options.h"
#include "model/line_array.h"

#include <QLocale>

namespace orva {

/// Date and time of a report as the user reads them: now, or by SOURCE_DATE_EPOCH.
std::string reportTime(const QLocale& locale);

/// The report of the current project as an RTF document, dated now or by SOURCE_DATE_EPOCH in the
/// short forms of `dates`, with the rigging view as a picture of `aspect` (width over height), 1.25
/// at least. An error where the array cannot be calculated.
Result<std::string> rtfReportOf(const LineArray& array, const DrawingOptions& options,
                                double aspect, const QLocale& dates);

} // namespace orva
