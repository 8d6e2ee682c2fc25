#pragma once

#include <QStringList>
#include <QTableWidget>
#include <string>
#include <vector>

namespace orva::ui {

/// A new table under its name that shows figures, a row selected as a whole.
QTableWidget* newFigureTable(const char* name, QWidget* parent);

/// Its figures, right-aligned under their heads.
void fillTable(QTableWidget& table, const QStringList& heads,
               const std::vector<std::vector<std::string>>& rows);

} // namespace orva::ui
