#pragma once

#include "drawing/drawing_options.h"
#include "model/line_array.h"

#include <QDateTime>
#include <QLocale>

namespace orva {

/// When a report was made: now, or by SOURCE_DATE_EPOCH.
QDateTime reportMoment();
/// The same as the user reads it.
std::string reportTime(const QLocale& locale);

/// The report of the current project as an RTF document, dated now or by SOURCE_DATE_EPOCH in the
/// short forms of `dates`, with the rigging view as a picture of `aspect` (width over height), 1.25
/// at least. An error where the array cannot be calculated.
Result<std::string> rtfReportOf(const LineArray& array, const DrawingOptions& options,
                                double aspect, const QLocale& dates);

} // namespace orva
