#include "app/files/report_file.h"
#include "model/project.h"

#include <QDateTime>
#include <QImage>
#include <QLocale>
#include <cstdlib>

#include <gtest/gtest.h>

namespace orva {
namespace {

QImage pictureOf(const std::string& rtf)
{
    const std::size_t blip = rtf.find("\\pngblip");
    const std::size_t begin = rtf.find("89504e47", blip);
    if (begin == std::string::npos)
        return {};
    const std::size_t end = rtf.find('}', begin);
    return QImage::fromData(
        QByteArray::fromHex(QByteArray(rtf.data() + begin, static_cast<qsizetype>(end - begin))));
}

/// Lengths of what is not white along a row of pixels.
std::vector<int> linesAcross(const QImage& image, int row)
{
    std::vector<int> widths;
    bool in = false;
    for (int x = 0; x < image.width(); ++x) {
        const bool ink = image.pixelColor(x, row).lightness() < 240;
        if (ink && !in)
            widths.push_back(0);
        if (ink)
            ++widths.back();
        in = ink;
    }
    return widths;
}

TEST(ReportFile, LinesOfThePictureAreSeenOnPaper)
{
    for (const double aspect : {0.5, 1.5, 4.0}) {
        SCOPED_TRACE(aspect);
        const Result<std::string> rtf =
            rtfReportOf(newProject(kStandardSystem).array, {}, aspect, QLocale::c());
        ASSERT_TRUE(rtf);
        const QImage picture = pictureOf(*rtf);
        ASSERT_FALSE(picture.isNull());
        const std::vector<int> grid = linesAcross(picture, picture.height() - 4);
        ASSERT_GE(grid.size(), 3U);
        for (const int width : grid)
            EXPECT_GE(width, 2) << "pixels, of 1600 to 16 cm";
    }
}

TEST(ReportFile, IsOfNowUnlessAMomentIsGiven)
{
    for (const char* none : {"", "soon", "1e99", "-99999999999999", "999999999999999"}) {
        ::setenv("SOURCE_DATE_EPOCH", none, 1); // NOLINT(concurrency-mt-unsafe)
        EXPECT_LE(std::abs(reportMoment().secsTo(QDateTime::currentDateTime())), 60) << none;
    }
    ::setenv("SOURCE_DATE_EPOCH", "1700000000", 1); // NOLINT(concurrency-mt-unsafe)
    EXPECT_EQ(reportMoment().toSecsSinceEpoch(), 1700000000);
    ::unsetenv("SOURCE_DATE_EPOCH"); // NOLINT(concurrency-mt-unsafe)
}

} // namespace
} // namespace orva
