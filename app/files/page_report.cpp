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
#include "painting/page_writer.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace orva {

namespace {

constexpr double kTitlePt = 17;
/// Rows of seats that an area lists at most: every second, third one where there are more.
constexpr std::size_t kMostSeatRows = 22;
/// Cells along the longer side of the room.
constexpr float kCellsAcross = 260;

QString qt(const std::string& text)
{
    return QString::fromStdString(text);
}

using Row = PageWriter::Row;
constexpr double kTextPt = PageWriter::kTextPt;
constexpr double kSmallPt = PageWriter::kSmallPt;
constexpr double kLine = PageWriter::kLine;
constexpr double kGap = PageWriter::kGap;

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
        return end == std::string::npos ? word(Text::ReportTitle) : name.substr(0, end + 1);
    }

    /// The project, and which of several variants the sheet is of.
    std::string sheetTitle() const
    {
        const Variants& variants = m_project.variants;
        return m_variants.size() < 2 ? title()
                                     : title() + ", " + variantTitle(variants, variants.current);
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
        if (page == 2)
            writer.head(qt(sheetTitle()));
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
    std::string word(Text id) const { return std::string(MlGetString(options().language, id)); }
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
        const Room& room = m_project.room;
        const auto [width, height] = room.GFAGetRoomDims();
        const auto [pickX, pickY] = m_project.array.GFAGetCradleCoord();
        page.paragraph(
            qt(say(Text::ReportRoom, {length(width), length(height), unit(), length(room.foh().x),
                                      length(room.foh().y), length(pickX), length(pickY)})));
        page.skip(kGap / 2);
    }

    void warnings(PageWriter& page, bool levels, bool rig) const
    {
        std::vector<std::string> lines;
        const LineArray& array = m_project.array;
        if (const auto tooMuch = overload(array); rig && tooMuch)
            lines.push_back(tooMuch->text(options().language));
        if (rig && outOfRoom(m_project.room, array).any())
            lines.push_back(word(Text::ReportOutside));
        if (rig)
            for (const std::string& line : contradictions(array, options().language))
                lines.push_back(line);
        if (const auto missing = pinFallsShort(array); rig && missing)
            lines.push_back(missing->text(options().language));
        if (levels && m_modelled)
            lines.push_back(word(Text::ReportModelled));
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
        std::vector<Row> rows = {{"FOH", levelText(m_fohDb), "", "", ""}};
        const auto place = [&](const Point& at) { return length(at.x) + ", " + length(at.y); };
        for (std::size_t i = 0; i < m_areas.size(); ++i) {
            const Segment area = m_project.room.area(static_cast<int>(i) + 1);
            rows.push_back({word(areaText(static_cast<int>(i) + 1)),
                            figure(m_areas[i].figures, &AreaFigures::mean),
                            figure(m_areas[i].figures, &AreaFigures::spread), place(area.at(0)),
                            place(area.at(area.lengthM))});
        }
        page.table({"", word(Text::ReportMean), word(Text::ReportSpread), word(Text::ReportFrom),
                    word(Text::ReportTo)},
                   rows);
        page.skip(kGap);
        // The areas' rows side by side.
        const QRectF below = page.place();
        const double width = below.width() / static_cast<double>(m_areas.size());
        for (std::size_t i = 0; i < m_areas.size(); ++i) {
            PageWriter column = page;
            column.moveTo({below.left() + width * static_cast<double>(i), below.top(), width - kGap,
                           below.height()});
            column.setFont(kTextPt, true);
            column.line(qt(say(Text::ReportRows, {number(static_cast<int>(i) + 1)})));
            const std::vector<SeatRow>& all = m_areas[i].rows;
            const std::size_t each = (all.size() + kMostSeatRows - 1) / kMostSeatRows;
            std::vector<Row> shown;
            for (std::size_t row = 0; row < all.size(); row += std::max<std::size_t>(1, each))
                shown.push_back(
                    {std::to_string(all[row].number), length(all[row].alongM, 1),
                     std::isfinite(all[row].levelDb) ? fixedText(all[row].levelDb, 1) : "-"});
            column.table({word(Text::RowColumn), say(Text::DistanceColumn, {unit()}), decibels()},
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
                                    along.lengthM, say(Text::StripTitle, {number(area)})),
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
        right.head(qt(word(Text::RiggingDisplay)));
        constexpr double kViewHigh = 280;
        right.drawing(kViewHigh, [&](DrawingSurface& surface) {
            DrawRiggingView(surface, m_project.array, m_choice.drawing);
        });
        right.head(qt(word(Text::ReportHeights)));
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
        right.table(
            {word(Text::BoxColumn), say(Text::ReportCorner, {unit()}), word(Text::ReportTilt)},
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
                    word(Text::ReportSubDelay)},
                   rows);
        page.skip(kGap);
    }

    void paintVariants(PageWriter& page) const
    {
        if (m_variants.size() < 2)
            return;
        page.head(qt(word(Text::ReportVariants)));
        Row heads = resultHeads(Text::ColumnEven, static_cast<int>(m_areas.size()), options());
        heads.insert(heads.begin(), word(Text::ColumnVariant));
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
        report->title(), reportMoment(), report->pages(),
        [report](QPainter& painter, int page, QSizeF size) { report->paint(painter, page, size); }};
}

} // namespace orva
