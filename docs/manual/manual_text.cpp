#include "manual/manual_text.h"

#include <QCollator>
#include <QRegularExpression>
#include <QSet>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>

namespace orva::manual {

namespace {

/// Walks what Qt reads from the Markdown and writes it as HTML.
class Writer {
public:
    Writer(const Inserts& inserts, QStringList& errors) : m_inserts(inserts), m_errors(errors) {}

    void writeFrame(QTextFrame& frame)
    {
        for (auto it = frame.begin(); !it.atEnd(); ++it) {
            if (auto* table = qobject_cast<QTextTable*>(it.currentFrame()))
                writeTable(*table);
            else if (it.currentBlock().isValid())
                writeBlock(it.currentBlock());
        }
        endBlocks();
    }

    ManualText take() { return std::move(m_text); }

private:
    void writeBlock(const QTextBlock& block)
    {
        const QTextBlockFormat format = block.blockFormat();
        if (format.hasProperty(QTextFormat::BlockCodeFence)) {
            endLists();
            if (!m_inCode)
                m_text.html += "<pre>";
            m_inCode = true;
            m_text.html += block.text().toHtmlEscaped() + "\n";
            return;
        }
        endCode();
        if (const QTextList* list = block.textList()) {
            writeItem(block, *list);
            return;
        }
        endLists();
        if (block.text().trimmed().isEmpty())
            return;
        if (format.headingLevel() > 0)
            writeHeading(block, format.headingLevel());
        else if (const QString name = block.text().trimmed();
                 name.startsWith('@') && name.endsWith('@'))
            writeInsert(name.mid(1, name.size() - 2));
        else
            writeParagraph(block);
    }

    void writeHeading(const QTextBlock& block, int level)
    {
        static const QRegularExpression kName(" *\\{#([a-z0-9-]+)\\}$");
        const QRegularExpressionMatch name = kName.match(block.text());
        if (!name.hasMatch()) {
            m_errors += "heading without a name: " + block.text();
            return;
        }
        const QString title = block.text().left(name.capturedStart());
        m_text.sections.push_back({level, name.captured(1), title});
        m_text.html += QString("<h%1 id=\"%2\">%3</h%1>\n")
                           .arg(level)
                           .arg(name.captured(1), title.toHtmlEscaped());
    }

    void writeInsert(const QString& name)
    {
        if (!m_inserts.html.contains(name))
            m_errors += "nothing to put in for " + name;
        m_text.html += m_inserts.html.value(name);
    }

    void writeParagraph(const QTextBlock& block)
    {
        const QTextCharFormat first = block.begin().fragment().charFormat();
        if (first.isImageFormat()) {
            writePicture(first.toImageFormat());
            return;
        }
        const QString inner = inside(block);
        m_text.html += "<p" + paragraphName() + ">" + inner + "</p>\n";
    }

    void writePicture(const QTextImageFormat& picture)
    {
        const QSize size = m_inserts.pictures.value(picture.name());
        if (size.isEmpty())
            m_errors += "no picture " + picture.name();
        const QString caption =
            picture.property(QTextFormat::ImageAltText).toString().toHtmlEscaped();
        m_text.html += QString("<p class=\"picture\"><img src=\"%1%2\" width=\"%3\" height=\"%4\" "
                               "alt=\"%5\"></p>\n")
                           .arg(m_inserts.pictureFolder, picture.name())
                           .arg(size.width())
                           .arg(size.height())
                           .arg(caption);
    }

    void writeItem(const QTextBlock& block, const QTextList& list)
    {
        const auto depth = static_cast<std::size_t>(std::max(1, list.format().indent()));
        const QString tag = list.format().style() == QTextListFormat::ListDecimal ? "ol" : "ul";
        while (m_lists.size() > depth || (m_lists.size() == depth && m_lists.back() != tag))
            endList();
        while (m_lists.size() < depth) {
            m_lists.push_back(tag);
            m_text.html += "<" + tag + ">\n";
        }
        const QString inner = inside(block);
        m_text.html += "<li" + paragraphName() + ">" + inner + "</li>\n";
    }

    void writeTable(QTextTable& table)
    {
        endBlocks();
        m_text.html += "<table>\n";
        for (int row = 0; row < table.rows(); ++row) {
            m_text.html += "<tr>";
            for (int column = 0; column < table.columns(); ++column) {
                QString inner;
                QTextTableCell cell = table.cellAt(row, column);
                for (auto it = cell.begin(); !it.atEnd(); ++it)
                    inner += inside(it.currentBlock());
                const QString tag = row == 0 ? "th" : "td";
                m_text.html += "<" + tag + paragraphName() + ">" + inner + "</" + tag + ">";
            }
            m_text.html += "</tr>\n";
        }
        m_text.html += "</table>\n";
    }

    /// The words of a paragraph; its index marks are taken out.
    QString inside(const QTextBlock& block)
    {
        QString html;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QTextCharFormat format = fragment.charFormat();
            QString text = fragment.text().toHtmlEscaped();
            text.replace(QChar::LineSeparator, "<br>");
            if (format.fontFixedPitch())
                text = "<code>" + text + "</code>";
            if (format.fontItalic())
                text = "<i>" + text + "</i>";
            if (format.fontWeight() > QFont::Medium)
                text = "<b>" + text + "</b>";
            if (!format.anchorHref().isEmpty())
                text = "<a href=\"" + format.anchorHref().toHtmlEscaped() + "\">" + text + "</a>";
            html += text;
        }
        takeMarks(html);
        return html.trimmed();
    }

    void takeMarks(QString& html)
    {
        static const QRegularExpression kMark(" *\\{\\^([^}]*)\\}");
        for (auto match = kMark.match(html); match.hasMatch(); match = kMark.match(html)) {
            if (m_paragraph.isEmpty())
                m_paragraph = QString("ix%1").arg(++m_paragraphs);
            m_text.marks.push_back(
                {match.captured(1), m_paragraph,
                 m_text.sections.empty() ? QString() : m_text.sections.back().id});
            html.remove(match.capturedStart(), match.capturedLength());
        }
    }

    /// Of the paragraph whose words have been written just now; empty without index marks.
    QString paragraphName()
    {
        const QString name = std::exchange(m_paragraph, {});
        return name.isEmpty() ? name : " id=\"" + name + "\"";
    }

    void endList()
    {
        m_text.html += "</" + m_lists.back() + ">\n";
        m_lists.pop_back();
    }
    void endLists()
    {
        while (!m_lists.empty())
            endList();
    }
    void endCode()
    {
        if (m_inCode)
            m_text.html += "</pre>\n";
        m_inCode = false;
    }
    void endBlocks()
    {
        endLists();
        endCode();
    }

    const Inserts& m_inserts;
    QStringList& m_errors;
    ManualText m_text;
    std::vector<QString> m_lists;
    bool m_inCode = false;
    QString m_paragraph;
    int m_paragraphs = 0;
};

void checkLinks(const ManualText& text, QStringList& errors)
{
    QSet<QString> names;
    for (const Section& section : text.sections) {
        if (names.contains(section.id))
            errors += "two headings are named " + section.id;
        names.insert(section.id);
    }
    static const QRegularExpression kLink("href=\"#([^\"]*)\"");
    for (auto it = kLink.globalMatch(text.html); it.hasNext();)
        if (const QString name = it.next().captured(1); !names.contains(name))
            errors += "a link leads to " + name + ", which is not there";
}

} // namespace

ManualText readManual(const QString& markdown, const Inserts& inserts, QStringList& errors)
{
    QTextDocument document;
    document.setMarkdown(markdown);
    Writer writer(inserts, errors);
    writer.writeFrame(*document.rootFrame());
    ManualText text = writer.take();
    checkLinks(text, errors);
    QCollator order{QLocale(QLocale::German)}; // which orders English words as well
    order.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(
        text.marks.begin(), text.marks.end(),
        [&](const IndexMark& a, const IndexMark& b) { return order.compare(a.word, b.word) < 0; });
    return text;
}

} // namespace orva::manual
