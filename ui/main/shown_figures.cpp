#include "main/shown_figures.h"

#include "app/forms/export_table.h"

namespace orva::ui {

namespace {

ExportTable curves(const Editor& editor)
{
    std::vector<std::vector<float>> levels;
    for (int number = 1; number <= editor.room().GIGetNumAreas(); ++number)
        levels.push_back(editor.levelsAlong(editor.room().area(number), kAreaReceivers));
    return curveTable(editor.room(), levels, editor.session().textOptions());
}

ExportTable rows(const Editor& editor)
{
    return rowsTable(editor.seatRows(), editor.session().textOptions());
}

ExportTable sheet(const Editor& editor)
{
    return sheetTable(editor.room(), editor.array(), editor.session().textOptions());
}

ExportTable subArray(const Editor& editor)
{
    return subArrayTable(editor.subArray(), editor.session().state().air.SpeedOfSound,
                         editor.session().textOptions());
}

struct Source {
    const char* control;
    ExportTable (*figures)(const Editor&);
    bool ofArray; ///< nothing without a valid setup
};
constexpr Source kSources[] = {{"AreaSpl_pbx", curves, true},
                               {"tblRows", rows, true},
                               {"Rigging_pbx", sheet, true},
                               {"rigText_txt", sheet, true},
                               {"picSubArray", subArray, false}};

} // namespace

std::optional<ShownFigures> figuresShownBy(const QString& control, Editor& editor, ViewPanel& views)
{
    if (&views.roomView() == views.findChild<QWidget*>(control))
        return ShownFigures{[&] { return views.shownMap().has_value(); },
                            [&](FileKind kind) {
                                const auto map = views.shownMap();
                                if (!map)
                                    return std::string();
                                return kind == FileKind::Json ? mapJson(*map->map, *map->grid)
                                                              : mapCsv(*map->map, *map->grid);
                            }};
    for (const Source& source : kSources)
        if (control == source.control)
            return ShownFigures{[&] { return !source.ofArray || editor.calculable(); },
                                [&](FileKind kind) {
                                    const ExportTable table = source.figures(editor);
                                    return kind == FileKind::Json
                                               ? jsonOf(table, editor.session().textOptions())
                                               : csvOf(table);
                                }};
    return std::nullopt;
}

} // namespace orva::ui
