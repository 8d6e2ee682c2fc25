#include "manual_pdf.h"

#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

namespace orva::manual {

namespace {

constexpr int kDotsPerInch = 96;      ///< in which the pages are laid out
constexpr double kPictureWidth = 0.8; ///< of the text, for pictures as wide as the window
constexpr double kFooterHeight = 24;
constexpr int kIndexRows = 54; ///< a column of the index
constexpr int kBookmarkLevels = 2;

const char* const kStyle = R"(
body { font-family: "DejaVu Sans"; font-size: 9pt; }
h1 { font-size: 20pt; color: #1d4e6b; page-break-before: always; margin-bottom: 12px; }
h2 { font-size: 13pt; color: #006699; margin-top: 18px; margin-bottom: 4px; }
h3 { font-size: 10.5pt; color: #1d4e6b; margin-top: 12px; margin-bottom: 2px; }
p { margin-top: 5px; margin-bottom: 5px; line-height: 118%; }
li { margin-top: 2px; margin-bottom: 3px; line-height: 118%; }
a { color: #006699; text-decoration: none; }
pre { white-space: pre-wrap; font-family: "DejaVu Sans Mono"; font-size: 7pt; background-color: #eef3f7; margin-top: 5px; margin-bottom: 5px; }
code { font-family: "DejaVu Sans Mono"; font-size: 8pt; }
th { background-color: #d5e2ec; font-weight: bold; text-align: left; }
.picture { margin-top: 6px; margin-bottom: 10px; line-height: 100%; }
.contents1 { font-weight: bold; margin-top: 7px; margin-bottom: 0px; }
.contents2 { margin-top: 0px; margin-bottom: 0px; margin-left: 16px; }
.entry { margin-top: 0px; margin-bottom: 1px; line-height: 110%; }
)";

using PageOf = std::function<int(const QString& name)>;

QString contentsHtml(const std::vector<Section>& sections, const PageOf& page)
{
    QString html = "<table width=\"100%\" border=\"0\" cellpadding=\"0\" "
                   "cellspacing=\"0\">\n";
    for (const Section& section : sections)
        if (section.level <= kBookmarkLevels)
            html += QString("<tr><td><p class=\"contents%1\"><a href=\"#%2\">%3</a></p></td>"
                            "<td align=\"right\"><p class=\"contents%1\">%4</p></td></tr>\n")
                        .arg(section.level)
                        .arg(section.id, section.title.toHtmlEscaped())
                        .arg(page(section.id));
    return html + "</table>\n";
}

/// In two columns, a table for each page.
QString indexInColumns(const std::vector<IndexMark>& marks, const PageOf& page)
{
    const QStringList entries = indexHtml(marks, [&](const IndexMark& mark) {
                                    return QString::number(page(mark.paragraph));
                                }).split('\n', Qt::SkipEmptyParts);
    const auto rows = std::min<qsizetype>(kIndexRows, (entries.size() + 1) / 2);
    QString html;
    for (qsizetype start = 0; start < entries.size(); start += 2 * rows)
        html += "<table width=\"100%\" border=\"0\"><tr><td width=\"50%\">" +
                entries.mid(start, rows).join('\n') + "</td><td>" +
                entries.mid(start + rows, rows).join('\n') + "</td></tr></table>\n";
    return html;
}

class Book {
public:
    Book(const ManualText& text, const Words& words, const Pictures& pictures, QSizeF page)
        : m_text(text), m_words(words), m_page(page)
    {
        QFont font("DejaVu Sans", 9);
        font.setHintingPreference(QFont::PreferNoHinting);
        m_document.setDefaultFont(font);
        m_document.setUseDesignMetrics(true);
        m_document.setDocumentMargin(0);
        m_document.setDefaultStyleSheet(kStyle);
        for (const auto& [name, image] : pictures)
            m_document.addResource(QTextDocument::ImageResource, QUrl(name), image);
        // Pages are known once all is laid out; a figure in the place of another moves nothing.
        for (int pass = 0; pass < 2; ++pass)
            layOut();
    }

    int pages() const { return m_document.pageCount(); }
    /// From 1.
    int page(const QString& name) const { return m_pages.value(name, 0); }
    double top(const QString& name) const { return m_tops.value(name, 0); }

    void paint(QPainter& painter, int number)
    {
        painter.save();
        painter.translate(0, -m_page.height() * (number - 1));
        const QRectF shown(QPointF(0, m_page.height() * (number - 1)), m_page);
        painter.setClipRect(shown);
        QAbstractTextDocumentLayout::PaintContext context;
        context.clip = shown;
        context.palette.setColor(QPalette::Text, Qt::black);
        m_document.documentLayout()->draw(&painter, context);
        painter.restore();
        if (number == 1) {
            paintCover(painter);
            return;
        }
        painter.setFont(m_document.defaultFont());
        const QRectF footer(0, m_page.height(), m_page.width(), kFooterHeight);
        painter.setPen(QColor(0x1d, 0x4e, 0x6b));
        painter.drawText(footer, Qt::AlignLeft | Qt::AlignBottom, m_words.title);
        painter.drawText(footer, Qt::AlignRight | Qt::AlignBottom, QString::number(number));
    }

private:
    void paintCover(QPainter& painter)
    {
        QFont font = m_document.defaultFont();
        double y = m_page.height() * 0.16;
        const auto line = [&](const QString& text, double size, bool bold) {
            font.setPointSizeF(size);
            font.setBold(bold);
            painter.setFont(font);
            painter.drawText(QRectF(0, y, m_page.width(), 4 * size), Qt::AlignHCenter, text);
            y += 2.4 * size;
        };
        painter.setPen(QColor(0x1d, 0x4e, 0x6b));
        line("ORVA", 40, true);
        line(m_words.title.section(": ", 1), 20, false);
        line(ORVA_VERSION, 11, false);
        const QImage picture =
            m_document.resource(QTextDocument::ImageResource, QUrl(m_words.cover)).value<QImage>();
        const double height = m_page.width() * picture.height() / picture.width();
        painter.drawImage(QRectF(0, y + 40, m_page.width(), height), picture);
    }

    void layOut()
    {
        const PageOf page = [this](const QString& name) { return this->page(name); };
        m_document.setHtml("<html><body><p>&nbsp;</p><h1>" + m_words.contents + "</h1>" +
                           contentsHtml(m_text.sections, page) + m_text.html + "<h1 id=\"index\">" +
                           m_words.index + "</h1>" + indexInColumns(m_text.marks, page) +
                           "</body></html>");
        fitPictures();
        drawTables();
        do { // All anew: what has moved by a break is drawn and measured where it was.
            m_document.setPageSize(m_page / 2);
            m_document.setPageSize(m_page);
        } while (keepTogether());
        note();
    }

    void fitPictures()
    {
        for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next())
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QTextFragment fragment = part.fragment();
                if (!fragment.charFormat().isImageFormat())
                    continue;
                QTextImageFormat image = fragment.charFormat().toImageFormat();
                const double factor =
                    std::min(kPictureWidth * m_page.width() / image.width(), 0.62);
                image.setHeight(image.height() * factor);
                image.setWidth(image.width() * factor);
                QTextCursor cursor(block);
                cursor.setPosition(fragment.position());
                cursor.setPosition(fragment.position() + fragment.length(),
                                   QTextCursor::KeepAnchor);
                cursor.setCharFormat(image);
                break;
            }
    }

    void drawTables()
    {
        const std::function<void(QTextFrame*)> visit = [&](QTextFrame* frame) {
            for (QTextFrame* child : frame->childFrames()) {
                if (auto* table = qobject_cast<QTextTable*>(child)) {
                    QTextTableFormat format = table->format();
                    if (table->cellAt(0, 0).format().background().style() != Qt::NoBrush) {
                        format.setBorder(1);
                        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
                        format.setBorderCollapse(true);
                        format.setBorderBrush(QColor(0xa0, 0xb4, 0xc4));
                        format.setCellPadding(2);
                        format.setHeaderRowCount(1);
                        format.setTopMargin(5);
                        format.setBottomMargin(5);
                        table->setFormat(format);
                    }
                }
                visit(child);
            }
        };
        visit(m_document.rootFrame());
    }

    QRectF rect(const QTextBlock& block) const
    {
        return m_document.documentLayout()->blockBoundingRect(block);
    }
    int pageAt(double y) const { return static_cast<int>(y / m_page.height()) + 1; }

    /// Headings stay with what follows them, up to a picture that is near. Moves the first one that
    /// does not; false: all do.
    bool keepTogether()
    {
        for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next()) {
            QTextBlockFormat format = block.blockFormat();
            if (format.headingLevel() < 2 ||
                format.pageBreakPolicy() == QTextFormat::PageBreak_AlwaysBefore)
                continue;
            QTextBlock last = block.next();
            double end = rect(last).top() + 30;
            for (int ahead = 0; ahead < 4 && last.isValid(); ++ahead, last = last.next()) {
                if (last.blockFormat().headingLevel() > 0)
                    break;
                if (!last.begin().atEnd() && last.begin().fragment().charFormat().isImageFormat()) {
                    end = rect(last).bottom() - 1;
                    break;
                }
            }
            if (pageAt(end) == pageAt(rect(block).top()))
                continue;
            format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
            QTextCursor(block).setBlockFormat(format);
            return true;
        }
        return false;
    }

    /// Where everything that has a name lies.
    void note()
    {
        m_pages.clear();
        for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next())
            for (auto part = block.begin(); !part.atEnd(); ++part)
                for (const QString& name : part.fragment().charFormat().anchorNames()) {
                    if (m_pages.contains(name))
                        continue;
                    const double y = rect(block).top();
                    m_pages[name] = pageAt(y);
                    m_tops[name] = y - m_page.height() * (pageAt(y) - 1);
                }
    }

    const ManualText& m_text;
    const Words& m_words;
    QSizeF m_page;
    QTextDocument m_document;
    QHash<QString, int> m_pages;
    QHash<QString, double> m_tops;
};

/// Runs qpdf; nothing when it failed.
std::optional<QByteArray> qpdf(const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start("qpdf", arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        return std::nullopt;
    return process.readAllStandardOutput();
}

QString reference(int object)
{
    return QString("%1 0 R").arg(object);
}

/// The outline as objects of the file, to be joined to it by qpdf.
class Outline {
public:
    Outline(const QJsonObject& file, int firstObject) : m_next(firstObject)
    {
        const QJsonArray pages = file["pages"].toArray();
        for (const auto& page : pages)
            m_pages += page.toObject()["object"].toString();
    }

    struct Entry {
        int level;
        QString title;
        int page; ///< from 1
        double y; ///< from the lower edge, in points
    };

    /// The root's reference.
    QString make(const std::vector<Entry>& entries)
    {
        const int root = m_next++;
        std::size_t at = 0;
        const Row children = row(entries, at, 1, root);
        QJsonObject value{{"/Type", "/Outlines"}};
        hang(value, children, true);
        put(root, value);
        return reference(root);
    }

    QJsonObject objects() const { return m_objects; }
    int lastObject() const { return m_next - 1; }

private:
    struct Row {
        QString first;
        QString last;
        int count = 0;
    };

    static void hang(QJsonObject& value, const Row& row, bool open)
    {
        if (row.count == 0)
            return;
        value["/First"] = row.first;
        value["/Last"] = row.last;
        value["/Count"] = open ? row.count : -row.count;
    }

    Row row(const std::vector<Entry>& entries, std::size_t& at, int level, int parent)
    {
        Row made;
        QJsonObject before;
        int beforeObject = 0;
        while (at < entries.size() && entries[at].level >= level) {
            const Entry& entry = entries[at++];
            const int object = m_next++;
            QJsonObject value{{"/Title", "u:" + entry.title},
                              {"/Parent", reference(parent)},
                              {"/Dest", QJsonArray{m_pages.at(entry.page - 1), "/XYZ", 0, entry.y,
                                                   QJsonValue()}}};
            if (at < entries.size() && entries[at].level > level)
                hang(value, row(entries, at, level + 1, object), false);
            if (beforeObject) {
                value["/Prev"] = reference(beforeObject);
                before["/Next"] = reference(object);
                put(beforeObject, before);
            } else {
                made.first = reference(object);
            }
            before = value;
            beforeObject = object;
            made.last = reference(object);
            ++made.count;
        }
        if (beforeObject)
            put(beforeObject, before);
        return made;
    }

    void put(int object, const QJsonObject& value)
    {
        m_objects["obj:" + reference(object)] = QJsonObject{{"value", value}};
    }

    QStringList m_pages;
    QJsonObject m_objects;
    int m_next;
};

QString addOutline(const QString& plain, const std::vector<Outline::Entry>& entries,
                   const QString& language, const QString& change, const QString& output)
{
    const auto listed = qpdf({"--json=2", "--json-key=pages", "--json-key=qpdf", plain});
    if (!listed)
        return "qpdf does not read the PDF";
    const QJsonObject file = QJsonDocument::fromJson(*listed).object();
    const QJsonObject head = file["qpdf"].toArray().at(0).toObject();
    const QJsonObject objects = file["qpdf"].toArray().at(1).toObject();
    const QString root = objects["trailer"].toObject()["value"].toObject()["/Root"].toString();
    QJsonObject catalogue = objects["obj:" + root].toObject()["value"].toObject();

    Outline outline(file, head["maxobjectid"].toInt() + 1);
    catalogue["/Outlines"] = outline.make(entries);
    catalogue["/PageMode"] = "/UseOutlines";
    catalogue["/Lang"] = "u:" + language;
    QJsonObject changed = outline.objects();
    changed["obj:" + root] = QJsonObject{{"value", catalogue}};
    const QJsonObject newHead{{"jsonversion", 2},
                              {"pushedinheritedpageresources", false},
                              {"calledgetallpages", false},
                              {"maxobjectid", outline.lastObject()}};
    QFile json(change);
    if (!json.open(QIODevice::WriteOnly))
        return change + " cannot be written";
    json.write(QJsonDocument(QJsonObject{{"qpdf", QJsonArray{newHead, changed}}}).toJson());
    json.close();
    if (!qpdf({plain, "--update-from-json=" + change, "--deterministic-id", output}))
        return "qpdf does not write the PDF";
    return {};
}

} // namespace

QString writePdf(const ManualText& text, const Words& words, const Pictures& pictures,
                 const QString& file)
{
    const QTemporaryDir folder;
    const QString plain = folder.filePath("plain.pdf");
    std::vector<Outline::Entry> entries;
    {
        QPdfWriter writer(plain);
        writer.setResolution(kDotsPerInch);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setPageMargins(QMarginsF(20, 16, 18, 14), QPageLayout::Millimeter);
        writer.setTitle(words.title);
        writer.setCreator("ORVA " ORVA_VERSION);
        const QSizeF paper = writer.pageLayout().paintRectPixels(kDotsPerInch).size();
        Book book(text, words, pictures, paper - QSizeF(0, kFooterHeight));
        QPainter painter(&writer);
        painter.setRenderHint(QPainter::LosslessImageRendering); // letters in pictures
        for (int page = 1; page <= book.pages(); ++page) {
            if (page > 1)
                writer.newPage();
            book.paint(painter, page);
        }
        const double points = 72.0 / kDotsPerInch;
        const double height = writer.pageLayout().fullRectPoints().height();
        const double margin = writer.pageLayout().paintRectPoints().top();
        std::vector<Section> sections = text.sections;
        sections.push_back({1, "index", words.index});
        for (const Section& section : sections) {
            if (section.level > kBookmarkLevels)
                continue;
            if (book.page(section.id) < 1)
                return section.id + " is on no page";
            entries.push_back({section.level, section.title, book.page(section.id),
                               height - margin - book.top(section.id) * points});
        }
    }
    return addOutline(plain, entries, words.language, folder.filePath("outline.json"), file);
}

} // namespace orva::manual
