#pragma once

#include <QHash>
#include <QSize>
#include <QString>
#include <vector>

namespace orva::manual {

/// A heading with the name by which links find it.
struct Section {
    int level;
    QString id;
    QString title;
};

/// A word of the index and a paragraph that it stands for.
struct IndexMark {
    QString word;
    QString paragraph; ///< its name
    QString section;   ///< the heading above it
};

/// The manual of one language: clean HTML, from which page, PDF and the help in the window are
/// made.
struct ManualText {
    QString html;
    std::vector<Section> sections;
    std::vector<IndexMark> marks; ///< in the order of the alphabet
};

/// What the text leaves open: pictures by name, and HTML that stands in the place of a paragraph
/// "@name@".
struct Inserts {
    QHash<QString, QSize> pictures;
    QString pictureFolder;
    QHash<QString, QString> html;
};

/// Reads Markdown. A heading ends in its name, "{#setup}"; "{^word}" in a paragraph puts it into
/// the index. An error is what the text lacks: a heading without a name, an unknown picture or
/// insert, a link that leads nowhere.
ManualText readManual(const QString& markdown, const Inserts& inserts, QStringList& errors);

/// The index as HTML; `target` gives the words that lead to a mark.
template<typename Target>
QString indexHtml(const std::vector<IndexMark>& marks, Target target)
{
    QString html;
    QString last;
    QStringList places;
    const auto finish = [&] {
        if (!last.isEmpty())
            html += "<p class=\"entry\">" + last.toHtmlEscaped().replace("!", ", ") + " &nbsp;" +
                    places.join(", ") + "</p>\n";
        places.clear();
    };
    for (const IndexMark& mark : marks) {
        if (mark.word != last)
            finish();
        last = mark.word;
        const QString place =
            "<a href=\"#" + mark.paragraph + "\">" + QString(target(mark)).toHtmlEscaped() + "</a>";
        const QString words = place.section('>', 1);
        const bool said = std::any_of(places.begin(), places.end(), [&](const QString& earlier) {
            return earlier.section('>', 1) == words;
        });
        if (!said)
            places += place;
    }
    finish();
    return html;
}

} // namespace orva::manual
