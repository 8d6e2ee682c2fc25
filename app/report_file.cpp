#include "app/report_file.h"

#include "drawing/array_drawing.h"
#include "painting/picture.h"
#include "report/report.h"

#include <QDateTime>
#include <QLocale>
#include <algorithm>
#include <cmath>

namespace orva {

namespace {

constexpr int kPictureWidth = 1600;

/// Date and time in the short forms of the language.
std::string created(Language language)
{
    const QLocale locale(language == Language::German ? QLocale::German : QLocale::English);
    bool given = false;
    const qint64 epoch = qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(&given);
    const QDateTime time =
        given ? QDateTime::fromSecsSinceEpoch(epoch, Qt::UTC) : QDateTime::currentDateTime();
    return (locale.toString(time.date(), QLocale::ShortFormat) + " " +
            locale.toString(time.time(), QLocale::ShortFormat))
        .toStdString();
}

} // namespace

Result<std::string> rtfReportOf(const ApplicationState& state, const DrawingOptions& options,
                                double aspect)
{
    if (const std::optional<std::string> fault = state.gLineArray.fault())
        return Error{*fault, ""};
    const int height =
        std::clamp(static_cast<int>(std::lround(kPictureWidth / aspect)), 100, 10 * kPictureWidth);
    const std::string png = pngPicture(kPictureWidth, height, [&](DrawingSurface& surface) {
        surface.setTextHeight(2 * surface.textHeight()); // printed smaller than a screen shows it
        DrawRiggingView(surface, state.gLineArray, options);
    });
    const auto sections = reportSections(state.gLineArray, ORVA_VERSION,
                                         created(options.text.language), png, options.text);
    return rtfReport(sections);
}

} // namespace orva
