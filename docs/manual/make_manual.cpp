// Makes the manual from the texts beside this file and pictures of the real program: for each
// language a PDF and a page for browsers, which the help in the window shows too.
#include "app/state/memory_settings.h"
#include "manual/manual_text.h"
#include "manual_pdf.h"
#include "manual_pictures.h"
#include "widgets/appearance.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <cstdio>

using namespace orva;
using namespace orva::manual;

namespace {

struct Edition {
    Language language;
    const char* pdf;
    Words words;
};

const Edition kEditions[] = {
    {Language::English,
     "ORVA-help.pdf",
     {"ORVA: the manual", "Contents", "Index", "Search", "sections", "en", "en-levels.png"}},
    {Language::German,
     "ORVA-help-de.pdf",
     {"ORVA: das Handbuch", "Inhalt", "Stichwörter", "Suchen", "Abschnitte", "de",
      "de-levels.png"}},
};

struct Sources {
    QString texts;
    QString project;
    QDir programs;
};

bool failed(const QString& why)
{
    std::fprintf(stderr, "make_manual: %s\n", qPrintable(why));
    return false;
}

QString readAll(const QString& file)
{
    QFile source(file);
    source.open(QIODevice::ReadOnly);
    return QString::fromUtf8(source.readAll());
}

/// What orva-cli says of a command; without one, of itself.
QString cliHelp(const QDir& programs, const QStringList& command)
{
    QProcess process;
    process.start(programs.filePath("orva-cli"), command + QStringList{"--help"});
    process.waitForFinished(-1);
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// The help of all commands, a heading for each.
QString commandsHtml(const QDir& programs)
{
    const QString all = cliHelp(programs, {});
    QString html = "<pre>" + all.toHtmlEscaped() + "</pre>\n";
    const QStringList lines = all.section("Subcommands:\n", 1).split('\n');
    for (const QString& line : lines) {
        if (!line.startsWith("  ") || line.startsWith("   "))
            continue;
        const QString name = line.trimmed().section(' ', 0, 0);
        html += "<h3 id=\"cli-" + name + "\">orva-cli " + name + "</h3>\n<pre>" +
                cliHelp(programs, {name}).toHtmlEscaped() + "</pre>\n";
    }
    return html;
}

QString contentsHtml(const std::vector<Section>& sections)
{
    QString html;
    for (const Section& section : sections)
        if (section.level <= 2)
            html += QString("<a class=\"c%1\" href=\"#%2\">%3</a>\n")
                        .arg(section.level)
                        .arg(section.id, section.title.toHtmlEscaped());
    return html;
}

bool writePage(const ManualText& text, const Words& words, const QString& frame,
               const QString& file)
{
    std::vector<Section> sections = text.sections;
    sections.push_back({1, "index", words.index});
    const auto titleOf = [&](const IndexMark& mark) {
        const auto found = std::find_if(sections.begin(), sections.end(),
                                        [&](const Section& s) { return s.id == mark.section; });
        return found->title;
    };
    QString page = frame;
    page.replace("@LANGUAGE@", words.language)
        .replace("@TITLE@", words.title)
        .replace("@SEARCH@", words.search)
        .replace("@FOUND@", words.found)
        .replace("@CONTENTS@", contentsHtml(sections))
        .replace("@MAIN@", text.html + "<h1 id=\"index\">" + words.index + "</h1>\n" +
                               indexHtml(text.marks, titleOf));
    QFile output(file);
    const QByteArray bytes = page.toUtf8();
    return output.open(QIODevice::WriteOnly) && output.write(bytes) == bytes.size();
}

bool makeEdition(const Edition& edition, const Sources& sources)
{
    MemorySettings store;
    ui::Session session(store, {sources.programs.path().toStdString()});
    session.state().settings.ShowNewQuery = false;
    if (!LoadSystemData(session.state(), session.programFolder() / "bin"))
        return failed("the loudspeaker data are missing");
    session.ChangeLanguage(static_cast<std::int32_t>(edition.language));

    const QString language = edition.words.language;
    Inserts inserts;
    inserts.pictureFolder = language + "-";
    inserts.html["keys"] = keysTable(session);
    inserts.html["commands"] = commandsHtml(sources.programs);
    Pictures pictures = takePages(session, sources.project);
    for (auto& picture : takeSteps(session))
        pictures.push_back(std::move(picture));

    const QDir folder(sources.programs.filePath("ORVA-help"));
    folder.mkpath(".");
    for (auto& [name, image] : pictures) {
        inserts.pictures[name] = image.size();
        name.prepend(inserts.pictureFolder);
        if (!image.save(folder.filePath(name)))
            return failed(name + " cannot be written");
    }
    QStringList errors;
    const ManualText text =
        readManual(readAll(sources.texts + "/" + language + ".md"), inserts, errors);
    if (!errors.isEmpty())
        return failed(language + ".md: " + errors.join("; "));
    if (!writePage(text, edition.words, readAll(sources.texts + "/page.html"),
                   folder.filePath(language + ".html")))
        return failed("the page cannot be written");
    const QString why =
        writePdf(text, edition.words, pictures, sources.programs.filePath(edition.pdf));
    return why.isEmpty() || failed(why);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    ui::useAppearance(Appearance::Classic);
    if (argc != 4) {
        std::fputs("usage: make_manual TEXTS PROJECT.lad PROGRAMS\n", stderr);
        return 2;
    }
    const Sources sources{argv[1], argv[2], QDir(argv[3])};
    return std::all_of(std::begin(kEditions), std::end(kEditions),
                       [&](const Edition& edition) { return makeEdition(edition, sources); })
               ? 0
               : 1;
}
