#include "app/forms/rows_table.h"

#include "lang/number_text.h"

namespace orva {

std::vector<SeatRow> seatRows(Prediction& prediction, const Segment& area,
                              const LevelChoice& choice, double pitchM, double offsetM)
{
    const std::optional<AreaFigures> figures = prediction.figuresOf(area, choice);
    std::vector<SeatRow> rows;
    constexpr double kSlackM = 1e-6; // a last row at the very end
    while (rows.size() < kMostRows) {
        const double along = offsetM + pitchM * static_cast<double>(rows.size());
        if (!(along <= area.lengthM + kSlackM))
            break;
        const Point at = area.at(along);
        const float level = prediction.levelAt(at, choice);
        const std::optional<NearestBox> box = prediction.nearestTo(at);
        rows.push_back({static_cast<int>(rows.size()) + 1, along, at, level,
                        static_cast<double>(level) - (figures ? figures->mean : 0), box,
                        box ? prediction.delayMs(*box) : 0});
    }
    return rows;
}

std::vector<std::string> rowTexts(const SeatRow& row, const TextOptions& options)
{
    const auto length = [&](double metres) {
        return fixedText(metres * options.lengthFactor(), 2);
    };
    return {std::to_string(row.number),
            length(row.alongM),
            length(row.at.x),
            length(row.at.y),
            levelText(row.levelDb),
            levelText(row.overMeanDb),
            row.box ? std::to_string(row.box->position + 1) : "-",
            row.box ? fixedText(row.delayMs, 1) : "-"};
}

} // namespace orva
