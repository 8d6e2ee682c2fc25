#include "model/project.h"
#include "report/report.h"
#include "report/rtf_document.h"

#include <gtest/gtest.h>

namespace orva {
namespace {

/// The start of a PNG: all that a document reads of it.
std::string pngOf(std::uint32_t width, std::uint32_t height)
{
    std::string png = "\x89PNG\r\n\x1a\n";
    const auto number = [&](std::uint32_t value) {
        for (int shift = 24; shift >= 0; shift -= 8)
            png += static_cast<char>(value >> shift & 0xFF);
    };
    number(13);
    png += "IHDR";
    number(width);
    number(height);
    return png;
}

std::string bodyOf(std::string_view text)
{
    RtfDocument empty;
    const std::size_t start = empty.bytes().size() - 2; // its "}\n"
    RtfDocument document;
    document.insertText(text);
    const std::string bytes = document.bytes();
    return bytes.substr(start, bytes.size() - start - 2);
}

TEST(RtfDocument, EscapesWhatIsNoPlainText)
{
    const std::pair<const char*, const char*> cases[] = {
        {"plain 5 kg", "plain 5 kg"},
        {"a{b}c\\d", "a\\{b\\}c\\\\d"},
        {"Gr\u00fc\u00dfe 5\u00b0", "Gr\\'fc\\'dfe 5\\'b0"},
        {"\u20ac \u2013", "\\'80 \\'96"},
        {"\u03b1", "\\u945?"},
        {"\ufb01", "\\u-1279?"},
        {"\U0001f50a", "\\u-10179?\\u-8950?"},
        {"a\tb", "a\\tab b"},
        {"a\r\nb", "a\\par\nb"},
        {"a\rb\n", "a\\par\nb\\par\n"},
        {"\n\r\r", "\\par\n\\par\n"},
        {"\x01", " "}};
    for (const auto& [text, rtf] : cases)
        EXPECT_EQ(bodyOf(text), rtf) << text;
}

TEST(RtfDocument, BracesAreBalanced)
{
    const LineArray array = newProject(kStandardSystem).array;
    const std::string document =
        rtfReport(reportSections(array, "1.2.3", "now", pngOf(1600, 900), {}));
    int depth = 0;
    for (std::size_t i = 0; i < document.size(); ++i) {
        if (document[i] == '\\')
            ++i;
        else if (document[i] == '{')
            ++depth;
        else if (document[i] == '}')
            --depth;
        ASSERT_GE(depth, i + 2 < document.size() ? 1 : 0) << i;
    }
    EXPECT_EQ(depth, 0);
    for (const char* part :
         {"ORVA 1.2.3.\\par", "RTF Document, created now", "Rigging Display", "Times New Roman",
          "\\fs28 ", "\\cellx9639", "\\picw1600\\pich900\\picwgoal9072\\pichgoal5103\n89504e47",
          "Cradle Angle\\tab : ", "Pin Point : 5"})
        EXPECT_NE(document.find(part), std::string::npos) << part;
}

TEST(Report, SaysInRedWhatContradictsItself)
{
    LineArray array = newProject(kStandardSystem).array;
    const std::string red = "\\red255\\green0\\blue0";
    const auto document = [&] { return rtfReport(reportSections(array, "1", "now", "", {})); };
    EXPECT_EQ(document().find(red), std::string::npos);
    array.GBSetNumGerade(1);
    const std::string warned = document();
    EXPECT_NE(warned.find(red), std::string::npos);
    EXPECT_LT(warned.find("1 straight boxes"), warned.find("Rigging Display"));
}

TEST(Report, NoBlankLineAtTheEndFillsAPage)
{
    const LineArray array = newProject(kStandardSystem).array;
    const std::string document = rtfReport(reportSections(array, "1", "now", "", {}));
    EXPECT_NE(document.find("Box 12", document.rfind("\\par\n")), std::string::npos);
}

TEST(Report, PictureGrids)
{
    const std::tuple<std::size_t, int, int, int, int> cases[] = {
        {1, 1, 1, 9072, 5103},  {2, 1, 2, 9072, 5103}, {3, 1, 3, 9072, 3118}, {4, 2, 2, 3969, 5103},
        {5, 2, 3, 3969, 3118},  {6, 2, 3, 3969, 3118}, {7, 3, 3, 2693, 3118}, {9, 3, 3, 2693, 3118},
        {10, 3, 4, 2693, 2268}, {12, 3, 4, 2693, 2268}};
    for (const auto& [pictures, columns, rows, width, height] : cases) {
        const std::optional<PictureGrid> grid = pictureGrid(pictures);
        ASSERT_TRUE(grid) << pictures;
        EXPECT_EQ(std::tuple(grid->columns, grid->rows, grid->width, grid->height),
                  std::tuple(columns, rows, width, height))
            << pictures;
    }
    EXPECT_FALSE(pictureGrid(0));
    EXPECT_FALSE(pictureGrid(13));

    const PictureGrid cell = *pictureGrid(1);
    const std::tuple<double, double, int, int> shapes[] = {
        {3200, 900, 9072, 2552}, // 2551.5: halves to even
        {900, 900, 5103, 5103},
        {9072, 5103, 9072, 5103},
        {0, 0, 9072, 5103}};
    for (const auto& [width, height, fittedWidth, fittedHeight] : shapes) {
        const PictureGrid fit = fitted(cell, width, height);
        EXPECT_EQ(fit.width, fittedWidth) << width;
        EXPECT_EQ(fit.height, fittedHeight) << width;
    }
}

TEST(Report, EveryPictureHasItsCell)
{
    ReportSection section;
    for (int i = 0; i < 7; ++i)
        section.pictures.push_back({pngOf(400, 300), "picture " + std::to_string(i)});
    const std::string document = rtfReport(std::span(&section, 1));
    const auto count = [&](std::string_view what) {
        int found = 0;
        for (std::size_t at = document.find(what); at != std::string::npos;
             at = document.find(what, at + 1))
            ++found;
        return found;
    };
    EXPECT_EQ(count("{\\pict"), 7);
    EXPECT_EQ(count("\\cell\n"), 7);
    EXPECT_EQ(count("\\trowd"), 3);
    EXPECT_EQ(count("\\row"), 3);
    EXPECT_NE(document.find("picture 6"), std::string::npos);
    EXPECT_EQ(pngSize("no picture").width, 0U);
}

} // namespace
} // namespace orva
