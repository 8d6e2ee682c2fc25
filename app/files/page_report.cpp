#include "app/files/page_report.h"

#include "app/files/report_file.h"
#include "app/forms/prediction.h"
#include "app/forms/rows_table.h"
#include "app/forms/search_results.h"
#include "document/room_form.h"
#include "document/variants_edit.h"
#include "drawing/array_drawing.h"
#include "drawing/curve_drawing.h"
#include "drawing/room_view.h"
#include "drawing/spectrum_drawing.h"
#include "drawing/sub_array_drawing.h"
#include "engine/parallel.h"
#include "engine/sub_array_figures.h"
#include "lang/message.h"
#include "lang/number_text.h"
#include "lang/string_table.h"
#include "model/contradictions.h"
#include "painting/painter_surface.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace orva {

namespace {

constexpr double kTextPt = 8.5;
constexpr double kSmallPt = 7.5;
constexpr double kHeadPt = 11;
constexpr double kTitlePt = 17;
constexpr double kLine = 1.3; ///< height of a line over that of its letters
constexpr double kGap = 10;
constexpr int kLeftMiddle = static_cast<int>(Qt::AlignLeft) | static_cast<int>(Qt::AlignVCenter);
constexpr int kRightMiddle = static_cast<int>(Qt::AlignRight) | static_cast<int>(Qt::AlignVCenter);
/// Rows of seats that an area lists at most: every second, third one where there are more.
constexpr std::size_t kMostSeatRows = 22;
/// Cells along the longer side of the room.
constexpr float kCellsAcross = 260;

QString qt(const std::string& text)
{
    return QString::fromStdString(text);
}

using Row = std::vector<std::string>;

/// Writes and draws down a page, in points.
class PageWriter {
public:
    PageWriter(QPainter& painter, QRectF place) : m_painter(painter), m_place(place) {}

    double y() const { return m_place.top(); }
    double left() const { return m_place.height(); }
    QRectF place() const { return m_place; }
    void moveTo(const QRectF& place) { m_place = place; }
    void skip(double points) { m_place.setTop(m_place.top() + points); }

    void setFont(double points, bool bold = false, const char* family = "DejaVu Sans")
    {
        m_font = QFont(family);
        m_font.setBold(bold);
        m_size = points;
    }
    /// Letters of any size: the painter is scaled, since fonts have whole pixels.
    void text(const QRectF& where, const QString& text, int flags, QColor colour = Qt::black)
    {
        m_painter.save();
        m_painter.scale(1.0 / kFine, 1.0 / kFine);
        m_painter.setFont(fineFont());
        m_painter.setPen(colour);
        m_painter.drawText(QRectF(where.topLeft() * kFine, where.size() * kFine),
                           flags | Qt::TextDontClip, text);
        m_painter.restore();
    }
    double widthOf(const QString& text) const
    {
        return QFontMetricsF(fineFont()).horizontalAdvance(text) / kFine;
    }
    void line(const QString& words, QColor colour = Qt::black)
    {
        const double height = m_size * kLine;
        text({m_place.left(), m_place.top(), m_place.width(), height}, words, kLeftMiddle, colour);
        skip(height);
    }
    /// As many lines as it takes.
    void paragraph(const QString& words, QColor colour = Qt::black)
    {
        QString rest;
        for (const QString& word : words.simplified().split(' ')) {
            const QString longer = rest.isEmpty() ? word : rest + ' ' + word;
            if (!rest.isEmpty() && widthOf(longer) > m_place.width()) {
                line(rest, colour);
                rest = word;
            } else {
                rest = longer;
            }
        }
        line(rest, colour);
    }
    void head(const QString& words)
    {
        setFont(kHeadPt, true);
        line(words);
        m_painter.setPen(QPen(QColor(0x80, 0x80, 0x80), 0.5));
        m_painter.drawLine(m_place.topLeft(), m_place.topRight());
        skip(3);
    }
    /// Figures to the right; the first column is as wide as its widest text.
    void table(const Row& heads, const std::vector<Row>& rows, double points = kTextPt)
    {
        std::vector<double> widths;
        setFont(points);
        for (std::size_t column = 0; column < heads.size(); ++column) {
            setFont(points, true);
            double widest = widthOf(qt(heads[column]));
            setFont(points);
            for (const Row& row : rows)
                widest = std::max(widest, widthOf(qt(row[column])));
            widths.push_back(widest + 8);
        }
        const auto write = [&](const Row& row, bool bold) {
            setFont(points, bold);
            double x = m_place.left();
            for (std::size_t column = 0; column < row.size(); ++column) {
                text({x, m_place.top(), widths[column] - 4, points * kLine}, qt(row[column]),
                     column == 0 ? kLeftMiddle : kRightMiddle);
                x += widths[column];
            }
            skip(points * kLine);
        };
        write(heads, true);
        for (const Row& row : rows)
            write(row, false);
    }
    /// A drawing so high, over the whole width.
    void drawing(double height, const std::function<void(DrawingSurface&)>& draw)
    {
        const QRectF where(m_place.left(), m_place.top(), m_place.width(), height);
        m_painter.save();
        m_painter.setClipRect(where);
        m_painter.translate(where.topLeft());
        PainterSurface surface(m_painter, where.size());
        surface.setTextHeight(kSmallPt);
        draw(surface);
        m_painter.restore();
        m_painter.setPen(QPen(QColor(0xA0, 0xA0, 0xA0), 0.4));
        m_painter.setBrush(Qt::NoBrush);
        m_painter.drawRect(where);
        skip(height + kGap / 2);
    }

private:
    static constexpr int kFine = 20;
    QFont fineFont() const
    {
        QFont font = m_font;
        font.setPixelSize(static_cast<int>(std::lround(m_size * kFine)));
        return font;
    }

    QPainter& m_painter;
    QRectF m_place;
    QFont m_font;
    double m_size = kTextPt;
};

/// All figures of a report, calculated once, and how its pages look.
class PageReport {
public:
    PageReport(ApplicationState& state, const Project& project, const ReportChoice& choice,
               const QLocale& dates)
        : m_project(project),
          m_choice(choice),
          m_written(reportTime(dates)),
          m_modelled(state.importedData.empty()),
          m_speedOfSound(state.air.SpeedOfSound),
          m_prediction(state.levelKernel(), state.speakerData.BandLevel, project.array,
                       state.air.SpeedOfSound)
    {
        const Room& room = project.room;
        for (int number = 1; number <= room.GIGetNumAreas(); ++number) {
            const Segment area = room.area(number);
            m_areas.push_back(
                {m_prediction.figuresOf(area, choice.levels),
                 seatRows(m_prediction, area, choice.levels, choice.rowPitchM, choice.rowOffsetM)});
        }
        m_fohDb = m_prediction.levelAt(room.foh(), choice.levels);
        calculateMap(state);
        for (std::size_t variant = 0; variant < Variants::kMost; ++variant)
            addVariant(state, variant);
    }

    int pages() const { return 3 + (hasMore() ? 1 : 0); }
    std::string title() const
    {
        const std::string name = m_project.room.GSGetProjectName();
        const auto end = name.find_last_not_of(' ');
        return end == std::string::npos ? word(Text::ReportTitle).toStdString()
                                        : name.substr(0, end + 1);
    }

    void paint(QPainter& painter, int page, QSizeF size)
    {
        PageWriter writer(painter, QRectF({0, 0}, size));
        writer.setFont(kSmallPt);
        writer.text({0, size.height() - kSmallPt * kLine, size.width(), kSmallPt * kLine},
                    qt(title()), Qt::AlignLeft);
        writer.text({0, size.height() - kSmallPt * kLine, size.width(), kSmallPt * kLine},
                    qt(say(Text::ReportPage, {number(page + 1), number(pages())})), Qt::AlignRight);
        if (page == 0)
            paintHead(writer);
        const bool levels = page < 2 || page == 3;
        const bool rig = page != 1;
        warnings(writer, levels, rig);
        switch (page) {
        case 0:
            paintSection(writer);
            paintLevels(writer);
            break;
        case 1:
            paintCurves(writer);
            break;
        case 2:
            paintRigging(writer, painter);
            break;
        default:
            paintSubArray(writer);
            paintVariants(writer);
        }
    }

private:
    struct Area {
        std::optional<AreaFigures> figures;
        std::vector<SeatRow> rows;
    };

    const TextOptions& options() const { return m_choice.drawing.text; }
    QString word(Text id) const
    {
        return QString::fromUtf8(
            MlGetString(options().language, id).data(),
            static_cast<qsizetype>(MlGetString(options().language, id).size()));
    }
    std::string say(Text id, std::vector<Message> arguments) const
    {
        return Message(id, std::move(arguments)).text(options().language);
    }
    std::string length(double metres, int decimals = 2) const
    {
        return fixedText(metres * options().lengthFactor(), decimals);
    }
    std::string unit() const { return std::string(lengthUnit(options())); }
    const char* decibels() const { return m_choice.aWeighted ? "dB(A)" : "dB"; }
    bool subArrayUsed() const { return m_project.subArray != SubArray{}; }
    bool hasMore() const { return subArrayUsed() || m_variants.size() > 1; }
    static std::string figure(const std::optional<AreaFigures>& figures, double AreaFigures::*which)
    {
        return figures ? fixedText((*figures).*which, 1) : "-";
    }

    void calculateMap(ApplicationState& state)
    {
        const auto [width, height] = m_project.room.GFAGetRoomDims();
        const float cell = std::max(width, height) / kCellsAcross;
        m_grid = PrepareMapGrid(m_project.room, cell, cell);
        if (!m_grid)
            return;
        RawSplCache cache;
        CalcRawSPL(*state.levelKernel(), m_project.array, *m_grid, m_choice.levels.bands,
                   coreCount(), {}, cache);
        m_map = CalcSummedSPL(cache, state.speakerData.BandLevel, *m_grid, m_choice.levels,
                              coreCount(), {});
    }

    void addVariant(ApplicationState& state, std::size_t variant)
    {
        const bool current = variant == m_project.variants.current;
        const auto& kept = m_project.variants.kept[variant];
        if (!current && (!kept || kept->array.fault()))
            return;
        Prediction other(state.levelKernel(), state.speakerData.BandLevel,
                         current ? m_project.array : kept->array, m_speedOfSound);
        m_variants.push_back(arrayTexts(other, m_project.room,
                                        current ? m_project.array : kept->array, m_choice.levels,
                                        options()));
        m_variants.back().insert(m_variants.back().begin(),
                                 variantTitle(m_project.variants, variant));
    }

    void paintHead(PageWriter& page) const
    {
        page.setFont(kTitlePt, true);
        page.line(qt(title()));
        page.setFont(kTextPt);
        const auto trimmed = [](const std::string& text) { return qt(text).trimmed(); };
        const QString author = trimmed(m_project.room.GSGetAuthorName());
        page.line((author.isEmpty() ? QString() : author + ", ") +
                  qt(say(Text::ReportWritten, {m_written, ORVA_VERSION})));
        if (const QString comment = trimmed(m_project.room.GSGetComment()); !comment.isEmpty())
            page.paragraph(comment);
        page.skip(kGap / 2);
    }

    void warnings(PageWriter& page, bool levels, bool rig) const
    {
        std::vector<std::string> lines;
        const LineArray& array = m_project.array;
        if (rig && array.overloaded())
            lines.push_back(say(Text::StatusOverload, {fixedText(array.totalWeightKg(), 1),
                                                       plainText(array.system().maxWeightKg, 1)}));
        if (rig && outOfRoom(m_project.room, array).any())
            lines.push_back(word(Text::ReportOutside).toStdString());
        if (rig)
            for (const std::string& line : contradictions(array, options().language))
                lines.push_back(line);
        if (levels && m_modelled)
            lines.push_back(word(Text::ReportModelled).toStdString());
        page.setFont(kTextPt, true);
        for (const std::string& line : lines)
            page.paragraph(qt(line), QColor(0xC0, 0, 0));
        if (!lines.empty())
            page.skip(kGap / 2);
    }

    void paintSection(PageWriter& page)
    {
        const auto [width, height] = m_project.room.GFAGetRoomDims();
        constexpr double kHighest = 260;
        const double high =
            std::clamp(page.place().width() * 1.12 * height / width, 130.0, kHighest);
        page.drawing(high, [&](DrawingSurface& surface) {
            RoomViewContent content;
            content.aWeighted = m_choice.aWeighted;
            content.fohDb = m_fohDb;
            content.bassBox = {m_project.array.GBGetBassBox(), m_project.array.GFAGetBassBoxCoord(),
                               m_choice.delays};
            if (m_map) {
                content.grid = &*m_grid;
                content.map = &*m_map;
                content.aimingLines = false;
            }
            std::vector<std::optional<AreaFigures>> figures;
            for (const Area& area : m_areas)
                figures.push_back(area.figures);
            if (m_choice.drawing.map.range == MapRange::Audience)
                content.audienceMeanDb = audienceMean(figures);
            DrawRoomView(surface, m_project.room, m_project.array, content, m_speedOfSound,
                         m_choice.drawing);
        });
    }

    void paintLevels(PageWriter& page) const
    {
        page.head(qt(say(Text::ReportLevels, {decibels()})));
        std::vector<Row> rows = {{"FOH", levelText(m_fohDb), ""}};
        for (std::size_t i = 0; i < m_areas.size(); ++i)
            rows.push_back({word(areaText(static_cast<int>(i) + 1)).toStdString(),
                            figure(m_areas[i].figures, &AreaFigures::mean),
                            figure(m_areas[i].figures, &AreaFigures::spread)});
        page.table(
            {"", word(Text::ReportMean).toStdString(), word(Text::ReportSpread).toStdString()},
            rows);
        page.skip(kGap);
        // The areas' rows side by side.
        const QRectF place = page.place();
        const double width = place.width() / static_cast<double>(m_areas.size());
        for (std::size_t i = 0; i < m_areas.size(); ++i) {
            PageWriter column = page;
            column.moveTo({place.left() + width * static_cast<double>(i), place.top(), width - kGap,
                           place.height()});
            column.setFont(kTextPt, true);
            column.line(qt(say(Text::ReportRows, {number(static_cast<int>(i) + 1)})));
            const std::vector<SeatRow>& all = m_areas[i].rows;
            const std::size_t each = (all.size() + kMostSeatRows - 1) / kMostSeatRows;
            std::vector<Row> shown;
            for (std::size_t row = 0; row < all.size(); row += std::max<std::size_t>(1, each))
                shown.push_back(
                    {std::to_string(all[row].number), length(all[row].alongM, 1),
                     std::isfinite(all[row].levelDb) ? fixedText(all[row].levelDb, 1) : "-"});
            column.table({word(Text::RowColumn).toStdString(), say(Text::DistanceColumn, {unit()}),
                          decibels()},
                         shown, kSmallPt);
        }
    }

    void paintCurves(PageWriter& page)
    {
        const double each = (page.left() - 3 * kGap) / static_cast<double>(2 * m_areas.size());
        const double high = std::clamp(each - kGap / 2, 20.0, 150.0);
        for (int area = 1; area <= static_cast<int>(m_areas.size()); ++area) {
            const Segment along = m_project.room.area(area);
            page.drawing(high, [&](DrawingSurface& surface) {
                CurvePicture picture;
                picture.area = area;
                picture.lengthM = along.lengthM;
                picture.detailed = true;
                picture.curves = {{m_prediction.levelsAlong(
                                       along, curvePoints(surface.pixelWidth()), m_choice.levels),
                                   Role::Curve, 1.2, 0, area}};
                DrawCurves(surface, picture, m_choice.drawing);
            });
            page.drawing(high, [&](DrawingSurface& surface) {
                DrawStrip(surface,
                          Strip::of(m_prediction.bandsAlong(along, kAreaReceivers, m_choice.levels),
                                    along.lengthM, word(Text::StripTitle).arg(area).toStdString()),
                          m_choice.drawing);
            });
        }
    }

    /// The rigging sheet with its colons below each other.
    QStringList sheetLines() const
    {
        QStringList lines = qt(m_project.array.GSGetPrintout(options())).trimmed().split("\r\n");
        const auto labelOf = [](const QString& line) {
            const qsizetype colon = line.indexOf(" :");
            return colon > 0 && !line.startsWith('\t') ? line.left(colon).trimmed() : QString();
        };
        qsizetype widest = 0;
        for (const QString& line : lines)
            widest = std::max(widest, labelOf(line).size());
        constexpr int kTab = 8;
        for (QString& line : lines) {
            if (const QString label = labelOf(line); !label.isEmpty())
                line = label.leftJustified(widest) + line.mid(line.indexOf(" :"));
            for (qsizetype tab = line.indexOf('\t'); tab >= 0; tab = line.indexOf('\t'))
                line.replace(tab, 1, QString(static_cast<int>(kTab - tab % kTab), ' '));
        }
        // Sentences go on below; figures stay on their line.
        constexpr qsizetype kLongest = 68;
        for (qsizetype i = 0; i < lines.size(); ++i)
            if (const qsizetype end = lines[i].lastIndexOf(' ', kLongest);
                lines[i].size() > kLongest && end > 0) {
                lines.insert(i + 1, lines[i].mid(end + 1));
                lines[i].truncate(end);
            }
        return lines;
    }

    /// The sheet on the left; view, heights and tilts on the right.
    void paintRigging(PageWriter& page, QPainter& painter) const
    {
        const QRectF place = page.place();
        const double bottom = place.bottom() - 2 * kSmallPt;
        constexpr double kSheetShare = 0.56;
        PageWriter sheet(painter, QRectF(place.topLeft(), QSizeF(place.width() * kSheetShare,
                                                                 bottom - place.top())));
        const QStringList lines = sheetLines();
        const double fits =
            sheet.left() / (kLine * static_cast<double>(std::max<qsizetype>(1, lines.size())));
        qsizetype longest = 1;
        for (const QString& line : lines)
            longest = std::max(longest, line.size());
        constexpr double kLetter = 0.602; // width over size
        const double wide = sheet.place().width() / (kLetter * static_cast<double>(longest));
        sheet.setFont(std::min({kTextPt, fits, wide}), false, "DejaVu Sans Mono");
        for (const QString& line : lines)
            sheet.line(line);

        const double from = place.left() + place.width() * kSheetShare + kGap;
        PageWriter right(painter,
                         QRectF(from, place.top(), place.right() - from, bottom - place.top()));
        right.head(word(Text::RiggingDisplay));
        constexpr double kViewHigh = 280;
        right.drawing(kViewHigh, [&](DrawingSurface& surface) {
            DrawRiggingView(surface, m_project.array, m_choice.drawing);
        });
        right.head(word(Text::ReportHeights));
        std::vector<Row> rows;
        const std::vector<Point> corners = m_project.array.upperFrontCorners();
        const auto axes = m_project.array.axes();
        for (std::size_t i = 0; i < corners.size(); ++i)
            rows.push_back({std::to_string(i + 1),
                            length(corners[i].y + m_project.room.reference().y),
                            fixedText(axes[i].angleDeg, 1)});
        const double points = std::clamp((right.left() - 3 * kTextPt) /
                                             (kLine * static_cast<double>(rows.size() + 1)),
                                         3.0, kSmallPt);
        right.table({word(Text::BoxColumn).toStdString(), say(Text::ReportCorner, {unit()}),
                     word(Text::ReportTilt).toStdString()},
                    rows, points);
        right.setFont(kTextPt, true);
        right.skip(2);
        right.paragraph(
            qt(say(Text::ReportLowest,
                   {length(extentOf(m_project.room, m_project.array).lowest), unit()})));
    }

    void paintSubArray(PageWriter& page) const
    {
        if (!subArrayUsed())
            return;
        const SubArray& sub = m_project.subArray;
        const SubArrayFigures figures =
            subArrayFigures(sub, m_speedOfSound, options().lengthFactor());
        page.head(qt(say(Text::ReportSub, {plainText(sub.openingAngleDeg, 2)})));
        constexpr double kHigh = 200;
        page.drawing(kHigh, [&](DrawingSurface& surface) { DrawSubArray(surface, sub, figures); });
        std::vector<Row> rows;
        for (std::size_t i = 0; i < sub.SubPos.size(); ++i)
            rows.push_back({std::to_string(i + 1), length(sub.SubPos[i]),
                            length(figures.virtualDistance[i]), fixedText(figures.delay[i], 2)});
        page.table({"", say(Text::ReportSubPlace, {unit()}), say(Text::ReportSubVirtual, {unit()}),
                    word(Text::ReportSubDelay).toStdString()},
                   rows);
        page.skip(kGap);
    }

    void paintVariants(PageWriter& page) const
    {
        if (m_variants.size() < 2)
            return;
        page.head(word(Text::ReportVariants));
        Row heads = resultHeads(Text::ColumnEven, static_cast<int>(m_areas.size()), options());
        heads.insert(heads.begin(), word(Text::ColumnVariant).toStdString());
        page.table(heads, m_variants, kSmallPt);
    }

    const Project m_project;
    const ReportChoice m_choice;
    const std::string m_written;
    const bool m_modelled;
    const double m_speedOfSound;
    Prediction m_prediction;
    std::vector<Area> m_areas;
    float m_fohDb = 0;
    std::optional<MapGrid> m_grid;
    std::optional<SummedMap> m_map;
    std::vector<Row> m_variants;
};

} // namespace

Result<PagedDocument> pageReportOf(ApplicationState& state, const Project& project,
                                   const ReportChoice& choice, const QLocale& dates)
{
    if (const std::optional<Message> fault = project.array.fault())
        return Error{*fault, ""};
    const auto report = std::make_shared<PageReport>(state, project, choice, dates);
    return PagedDocument{
        report->title(), report->pages(),
        [report](QPainter& painter, int page, QSizeF size) { report->paint(painter, page, size); }};
}

} // namespace orva
