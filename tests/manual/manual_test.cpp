// What readers find in the manual that the build made.
#include "manual/manual_text.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

namespace orva::manual {
namespace {

struct Edition {
    const char* page;
    const char* pdf;
};
constexpr Edition kEditions[] = {{"en.html", "ORVA-help.pdf"}, {"de.html", "ORVA-help-de.pdf"}};
const QString kPrograms = ORVA_BINARY_DIR "/";
const QString kFolder = kPrograms + "ORVA-help/";

QString readPage(const Edition& edition)
{
    QFile file(kFolder + edition.page);
    file.open(QIODevice::ReadOnly);
    return QString::fromUtf8(file.readAll());
}

QStringList all(const QString& text, const char* pattern)
{
    QStringList found;
    const QRegularExpression expression(pattern);
    for (auto it = expression.globalMatch(text); it.hasNext();)
        found += it.next().captured(1);
    return found;
}

QJsonArray ask(const Edition& edition, const char* key)
{
    QProcess qpdf;
    qpdf.start("qpdf", {"--json=2", QString("--json-key=") + key, kPrograms + edition.pdf});
    EXPECT_TRUE(qpdf.waitForFinished(-1) && qpdf.exitCode() == 0) << edition.pdf;
    return QJsonDocument::fromJson(qpdf.readAllStandardOutput()).object()[key].toArray();
}

struct Bookmark {
    QString title;
    int page;
};

void collect(const QJsonArray& outline, std::vector<Bookmark>& bookmarks)
{
    for (const QJsonValue entry : outline) {
        bookmarks.push_back({entry["title"].toString(), entry["destpageposfrom1"].toInt()});
        collect(entry["kids"].toArray(), bookmarks);
    }
}

TEST(Manual, EveryLinkAndPictureOfAPageIsThere)
{
    for (const Edition& edition : kEditions) {
        SCOPED_TRACE(edition.page);
        const QString page = readPage(edition);
        const QStringList names = all(page, "id=\"([^\"]+)\"");
        EXPECT_EQ(names.size(), QSet<QString>(names.begin(), names.end()).size());
        const QStringList links = all(page, "href=\"([^\"]*)\"");
        EXPECT_GT(links.size(), 100);
        for (const QString& link : links)
            EXPECT_TRUE(link.startsWith('#') && names.contains(link.mid(1))) << qPrintable(link);
        for (const QString& picture : all(page, "src=\"([^\"]*)\""))
            EXPECT_TRUE(QFileInfo::exists(kFolder + picture)) << qPrintable(picture);
        EXPECT_FALSE(page.contains("{^") || page.contains("{#") || page.contains("http"));
    }
}

TEST(Manual, BothLanguagesHaveTheSameSectionsAndPictures)
{
    for (const char* pattern : {"<h[123] id=\"([^\"]+)\"", "src=\"..-([^\"]*)\""})
        EXPECT_EQ(all(readPage(kEditions[0]), pattern), all(readPage(kEditions[1]), pattern));
}

TEST(Manual, EachOfTheFifteenStepsHasItsPicture)
{
    for (const Edition& edition : kEditions)
        for (int step = 1; step <= 15; ++step) {
            const QString text = readPage(edition)
                                     .section(QString("id=\"step-%1\"").arg(step), 1)
                                     .section("<h", 0, 0);
            EXPECT_EQ(all(text, "src=\"..-([^\"]*)\""),
                      QStringList(QString("step-%1.png").arg(step)))
                << edition.page;
        }
}

TEST(Manual, ThePdfHasABookmarkForEachSectionAndAllPictures)
{
    for (const Edition& edition : kEditions) {
        SCOPED_TRACE(edition.pdf);
        const QString page = readPage(edition);
        std::vector<Bookmark> bookmarks;
        collect(ask(edition, "outlines"), bookmarks);
        const QStringList titles = all(page, "<h[12] id=\"[^\"]+\">([^<]*)");
        ASSERT_EQ(bookmarks.size(), static_cast<std::size_t>(titles.size()));
        int last = 3; // after cover and contents
        for (std::size_t i = 0; i < bookmarks.size(); ++i) {
            EXPECT_EQ(bookmarks[i].title.toHtmlEscaped(), titles[static_cast<qsizetype>(i)]);
            EXPECT_GE(bookmarks[i].page, last);
            last = bookmarks[i].page;
        }
        qsizetype pictures = -1; // the cover's is one of the others
        for (const QJsonValue sheet : ask(edition, "pages"))
            pictures += sheet["images"].toArray().size();
        EXPECT_GE(pictures, all(page, "src=\"([^\"]*)\"").size());
    }
}

TEST(Manual, ATextWithAFaultIsNotTaken)
{
    Inserts inserts;
    inserts.pictures["map.png"] = {10, 10};
    const std::pair<const char*, const char*> cases[] = {
        {"# One {#one}\n\nSee [two](#two).\n\n## Two {#two}\n\n![x](map.png)\n", ""},
        {"# One\n", "heading without a name"},
        {"# One {#one}\n\n## Two {#one}\n", "two headings"},
        {"# One {#one}\n\n[two](#two)\n", "a link leads to two"},
        {"# One {#one}\n\n![x](other.png)\n", "no picture"},
        {"# One {#one}\n\n@keys@\n", "nothing to put in"},
    };
    for (const auto& [text, error] : cases) {
        QStringList errors;
        readManual(text, inserts, errors);
        EXPECT_TRUE(*error ? errors.size() == 1 && errors[0].startsWith(error) : errors.isEmpty())
            << text << qPrintable(errors.join("; "));
    }
}

TEST(Manual, AWordOfTheIndexLeadsToItsParagraphsInTheOrderOfTheAlphabet)
{
    QStringList errors;
    const ManualText text = readManual(
        "# One {#one}\n\nB. {^pin} {^Äther}\n\n- C {^pin}\n\n| a |\n|---|\n| D {^pin!long} |\n", {},
        errors);
    QStringList words;
    for (const IndexMark& mark : text.marks) {
        words += mark.word;
        EXPECT_TRUE(text.html.contains("id=\"" + mark.paragraph + "\""));
    }
    EXPECT_EQ(words, QStringList({"Äther", "pin", "pin", "pin!long"}));
    EXPECT_FALSE(text.html.contains("{^"));
}

} // namespace
} // namespace orva::manual

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
