#pragma once

#include "app/forms/rows_table.h"
#include "engine/spl_map.h"
#include "engine/sub_array_figures.h"

namespace orva {

/// Figures as spreadsheets and other programs take them. Decimal points whatever the locale;
/// lengths in the unit of the user.
struct ExportTable {
    using Line = std::vector<std::string>;

    std::vector<std::pair<std::string, std::string>> facts; ///< about the whole: name, figure
    Line columns;
    std::vector<Line> rows;
};

/// "area,point,distance,x,y,level": the receivers along each area of the room, from 1.
ExportTable curveTable(const Room& room, std::span<const std::vector<float>> levels,
                       const TextOptions& options);
/// "row,distance,x,y,level,to_mean,box,arrival".
ExportTable rowsTable(const std::vector<SeatRow>& rows, const TextOptions& options);
/// What the rigging sheet says, and of each box its joint with the one before, how it is tilted
/// (degrees, negative = aimed down) and where its upper front corner is, in the room and above the
/// floor; weights in kg. The array has no fault().
ExportTable sheetTable(const Room& room, const LineArray& array, const TextOptions& options);
/// "box,position,virtual_distance,delay" with the opening angle; delays in ms.
ExportTable subArrayTable(const SubArray& subArray, double speedOfSound,
                          const TextOptions& options);

/// The facts, a line each, then an empty line; then the rows below their names.
std::string csvOf(const ExportTable& table);
/// {"unit": "m"|"ft", facts, "rows": [{column: figure, ...}, ...]}; null for what is not heard.
std::string jsonOf(const ExportTable& table, const TextOptions& options);

/// The figures of a map in dB with three decimals, a row per line, top row first; "-inf" for none.
std::string mapCsv(const SummedMap& map, const MapGrid& grid);
/// Its cells, in metres, and these figures.
std::string mapJson(const SummedMap& map, const MapGrid& grid);

} // namespace orva
