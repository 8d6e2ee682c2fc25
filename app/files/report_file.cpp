#include "app/files/report_file.h"

#include "drawing/array_drawing.h"
#include "painting/picture.h"
#include "report/report.h"

#include <algorithm>
#include <cmath>

namespace orva {

namespace {

/// Pixels of the largest picture that the page takes; a narrower one is as high.
constexpr double kPictureWidth = 1600;
constexpr double kPictureHeight = 900;
/// The picture is printed 16 cm wide: lines of a quarter of a millimetre, texts of 3.5 mm.
constexpr double kPixelsPerLine = 2.5;
constexpr double kTextHeight = 14;
/// Narrower views leave no room for labels beside the boxes.
constexpr double kNarrowestAspect = 1.25;

} // namespace

QDateTime reportMoment()
{
    bool given = false;
    const qint64 epoch = qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(&given);
    QDateTime time = QDateTime::fromSecsSinceEpoch(epoch, Qt::UTC);
    if (!given || epoch < 0 || !time.isValid() || time.date().year() > 9999)
        time = QDateTime::currentDateTime();
    return time;
}

std::string reportTime(const QLocale& locale)
{
    const QDateTime time = reportMoment();
    return (locale.toString(time.date(), QLocale::ShortFormat) + " " +
            locale.toString(time.time(), QLocale::ShortFormat))
        .toStdString();
}

Result<std::string> rtfReportOf(const LineArray& array, const DrawingOptions& options,
                                double aspect, const QLocale& dates)
{
    if (const std::optional<Message> fault = array.fault())
        return Error{*fault, ""};
    aspect = std::max(aspect, kNarrowestAspect);
    const double width = std::min(kPictureHeight * aspect, kPictureWidth);
    const double height = std::max(width / aspect, 100.0);
    const auto pixels = [](double size) { return static_cast<int>(std::lround(size)); };
    const std::string png = pngPicture(
        pixels(width), pixels(height),
        [&](DrawingSurface& surface) {
            surface.setTextHeight(kTextHeight);
            DrawRiggingView(surface, array, options);
        },
        kPixelsPerLine);
    const auto sections = reportSections(array, ORVA_VERSION, reportTime(dates), png, options.text);
    return rtfReport(sections);
}

} // namespace orva
