#pragma once

#include "app/forms/search_run.h"
#include "main/editor.h"
#include "widgets/controls.h"

#include <QCheckBox>
#include <QLabel>
#include <QWidget>
#include <array>

namespace orva::ui {

/// The part of the search dialog that folds out: several areas, free pin and heights, the quick
/// search alone. What it wishes counts only while it can be seen.
class SearchMore final : public QWidget {
    Q_OBJECT
public:
    SearchMore(Editor& editor, QWidget* parent);

    void showTexts();
    /// Adds what is wished here to what the given part of the dialog asks for.
    void addTo(SearchChoice& choice) const;
    SearchRun::Quick quick(bool first) const;
    /// Of several areas, or of another than the selected one, none is measured along a fit line.
    bool alongFitLine() const;
    /// Why the search cannot begin; empty where it can.
    QString fault() const;

signals:
    void changed();

private:
    QWidget* areasColumn();
    QWidget* freeColumn();
    void chooseArea(int number, bool chosen);
    NumberEdit* entry(const QString& name, double& value, const std::function<bool(double)>& valid);
    void showFigures();
    std::optional<std::vector<float>> heights() const;

    Editor& m_editor;
    std::array<double, Room::kAreas> m_weights{1, 1, 1};
    double m_perDoubling = 0;
    std::array<double, 3> m_heights{}; ///< from, to, step, in the user's unit
    double m_budget = QuickSearch::kBudget;
    std::vector<std::pair<NumberEdit*, double*>> m_entries;

    QLabel* m_areas;
    QCheckBox* chkSearchArea[Room::kAreas];
    QLabel* m_doubling;
    QCheckBox* chkFreePin;
    QCheckBox* chkFreeHeight;
    QCheckBox* chkQuickOnly;
};

} // namespace orva::ui
