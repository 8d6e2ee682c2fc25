#include "app/forms/export_table.h"

#include "lang/number_text.h"
#include "lang/string_table.h"
#include "model/project.h"

#include <nlohmann/json.hpp>

namespace orva {

namespace {

/// JSON of a figure as it is written in a table.
std::string jsonValue(const std::string& text)
{
    if (text == "-" || text == "-inf")
        return "null";
    const nlohmann::json number = nlohmann::json::parse(text, nullptr, false);
    return number.is_number() ? text : nlohmann::json(text).dump();
}

std::string jsonMember(const std::string& name, const std::string& text)
{
    return '"' + name + "\": " + jsonValue(text);
}

std::string csvLine(const ExportTable::Line& cells)
{
    std::string line;
    for (const std::string& cell : cells)
        line += (line.empty() ? "" : ",") + cell;
    return line + '\n';
}

/// The cells of the map, rows apart by `rowEnd`.
std::string mapRows(const SummedMap& map, const MapGrid& grid, const char* none,
                    std::string_view rowEnd)
{
    std::string text;
    const auto columns = static_cast<std::size_t>(grid.columns);
    for (std::size_t cell = 0; cell < map.levels.size(); ++cell) {
        if (cell > 0)
            text += cell % columns == 0 ? rowEnd : ",";
        text += std::isfinite(map.levels[cell]) ? fixedText(map.levels[cell], 3) : none;
    }
    return text;
}

} // namespace

ExportTable curveTable(const Room& room, std::span<const std::vector<float>> levels,
                       const TextOptions& options)
{
    ExportTable table{{}, {"area", "point", "distance", "x", "y", "level"}, {}};
    const auto length = [&](double metres) {
        return fixedText(metres * options.lengthFactor(), 3);
    };
    for (std::size_t area = 0; area < levels.size(); ++area) {
        const int number = static_cast<int>(area) + 1;
        const Segment line = room.area(number);
        const std::vector<float>& along = levels[area];
        const std::vector<Point> points = lineReceivers(line, static_cast<int>(along.size()));
        const double step = line.lengthM / static_cast<double>(along.size());
        for (std::size_t at = 0; at < along.size(); ++at)
            table.rows.push_back({std::to_string(number), std::to_string(at + 1),
                                  length(static_cast<double>(at) * step), length(points[at].x),
                                  length(points[at].y), fixedText(along[at], 3)});
    }
    return table;
}

ExportTable rowsTable(const std::vector<SeatRow>& rows, const TextOptions& options)
{
    ExportTable table{{}, {"row", "distance", "x", "y", "level", "to_mean", "box", "arrival"}, {}};
    for (const SeatRow& row : rows)
        table.rows.push_back(rowTexts(row, options));
    return table;
}

ExportTable sheetTable(const Room& room, const LineArray& array, const TextOptions& options)
{
    const auto length = [&](double metres) {
        return plainText(metres * options.lengthFactor(), 2);
    };
    const auto figure = [](double value) { return plainText(value, 2); };
    const SystemRecord& record = array.system();
    const FloatPair pick = array.GFAGetCradleCoord();
    const Extent extent = extentOf(room, array);
    const bool flown = array.GBGetMounting();
    ExportTable table;
    table.facts = {{"pick_point_x", length(pick[0])}, {"pick_point_y", length(pick[1])}};
    if (flown)
        table.facts.emplace_back("pin", std::to_string(array.GIPinPoint() + 1));
    const std::pair<const char*, double> weights[] = {
        {"straight_weight", array.GFGetSpeakerByType(record.TypeCodeGerade)},
        {"trapezoidal_weight", array.GFGetSpeakerByType(record.TypeCodeSchräg)},
        {"bass_weight", array.GFGetSpeakerByType(record.TypeCodeBass)},
        {"cable_weight", array.GFGetCableWeight()},
        {"frame_weight", flown ? record.frameWeightKg : 0},
        {"total_weight", array.totalWeightKg()},
        {"weight_limit", record.maxWeightKg}};
    table.facts.emplace_back("cradle_angle", figure(-array.GFFirstAngle()));
    for (const auto& [name, kg] : weights)
        table.facts.emplace_back(name, figure(kg));
    const std::array<float, 4> bounds = array.GFAGetBounds();
    table.facts.emplace_back("height", length(std::abs(bounds[1] - bounds[3])));
    table.facts.emplace_back("lowest_edge", length(extent.lowest));

    table.columns = {"box", "model", "splay_angle", "tilt", "corner_x", "corner_height"};
    const std::vector<Point> corners = array.upperFrontCorners();
    const Point reference = room.reference();
    const std::vector<LineArray::BoxAxis> axes = array.axes();
    const LineArray::Positions angles = array.GIAGetAllAngle();
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const std::optional<BoxKind> kind = array.kindAt(static_cast<int>(i));
        const RiggingText* names = kind ? &record.riggingText(*kind) : nullptr;
        table.rows.push_back({std::to_string(i + 1),
                              names ? std::string(names->model) +
                                          std::string(MlGetString(options.language, names->kind))
                                    : "-",
                              i == 0 ? "-" : figure(LineArray::splayAngle(angles[i])),
                              figure(axes[i].angleDeg), length(corners[i].x + reference.x),
                              length(corners[i].y + reference.y)});
    }
    return table;
}

ExportTable subArrayTable(const SubArray& subArray, double speedOfSound, const TextOptions& options)
{
    const auto length = [&](double metres) {
        return plainText(metres * options.lengthFactor(), 3);
    };
    const SubArrayFigures figures = subArrayFigures(subArray, speedOfSound, options.lengthFactor());
    ExportTable table{{{"opening_angle", plainText(subArray.openingAngleDeg, 2)}},
                      {"box", "position", "virtual_distance", "delay"},
                      {}};
    for (std::size_t i = 0; i < subArray.SubPos.size(); ++i)
        table.rows.push_back({std::to_string(i + 1), length(subArray.SubPos[i]),
                              length(figures.virtualDistance[i]), plainText(figures.delay[i], 2)});
    return table;
}

std::string csvOf(const ExportTable& table)
{
    std::string csv;
    for (const auto& [name, figure] : table.facts)
        csv += csvLine({name, figure});
    if (!table.facts.empty())
        csv += '\n';
    csv += csvLine(table.columns);
    for (const ExportTable::Line& row : table.rows)
        csv += csvLine(row);
    return csv;
}

std::string jsonOf(const ExportTable& table, const TextOptions& options)
{
    std::string json = "{\n  " + jsonMember("unit", options.Units_Meters ? "m" : "ft");
    for (const auto& [name, figure] : table.facts)
        json += ",\n  " + jsonMember(name, figure);
    json += ",\n  \"rows\": [";
    const char* before = "\n    {";
    for (const ExportTable::Line& row : table.rows) {
        for (std::size_t column = 0; column < row.size(); ++column)
            json += (column == 0 ? before : ", ") + jsonMember(table.columns[column], row[column]);
        json += '}';
        before = ",\n    {";
    }
    return json + "\n  ]\n}\n";
}

std::string mapCsv(const SummedMap& map, const MapGrid& grid)
{
    return mapRows(map, grid, "-inf", "\n") + '\n';
}

std::string mapJson(const SummedMap& map, const MapGrid& grid)
{
    std::string json = "{\n";
    const std::pair<const char*, std::string> facts[] = {{"columns", std::to_string(grid.columns)},
                                                         {"rows", std::to_string(grid.rows)},
                                                         {"cellW", floatText(grid.CellW)},
                                                         {"cellH", floatText(grid.CellH)},
                                                         {"offX", floatText(grid.OffX)},
                                                         {"offY", floatText(grid.OffY)}};
    for (const auto& [name, figure] : facts)
        json += "  " + jsonMember(name, figure) + ",\n";
    return json + "  \"levels\": [\n    [" + mapRows(map, grid, "null", "],\n    [") +
           "]\n  ]\n}\n";
}

} // namespace orva
