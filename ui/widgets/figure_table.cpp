#include "widgets/figure_table.h"

#include "widgets/controls.h"
#include "widgets/session.h"

#include <QHeaderView>

namespace orva::ui {

QTableWidget* newFigureTable(const char* name, QWidget* parent)
{
    auto* table = named<QTableWidget>(name, parent);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 4);
    table->verticalHeader()->setMinimumSectionSize(1);
    table->setTabKeyNavigation(false);
    return table;
}

void fillTable(QTableWidget& table, const QStringList& heads,
               const std::vector<std::vector<std::string>>& rows)
{
    table.setColumnCount(static_cast<int>(heads.size()));
    table.setHorizontalHeaderLabels(heads);
    table.setRowCount(static_cast<int>(rows.size()));
    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t column = 0; column < rows[row].size(); ++column) {
            const int r = static_cast<int>(row);
            const int c = static_cast<int>(column);
            if (!table.item(r, c)) {
                table.setItem(r, c, new QTableWidgetItem);
                table.item(r, c)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            }
            table.item(r, c)->setText(qtText(rows[row][column]));
        }
    table.resizeColumnsToContents();
}

} // namespace orva::ui
