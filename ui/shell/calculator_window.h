#pragma once

#include "widgets/controls.h"
#include "widgets/drawing_widget.h"
#include "widgets/session.h"

#include <QLabel>
#include <QWidget>

namespace orva::ui {

/// The triangle calculator: stays above the other windows, changes no project.
class CalculatorWindow final : public QWidget {
    Q_OBJECT
public:
    CalculatorWindow(Session& session, QWidget* parent);

    /// After a change of the unit of length.
    void showUnits();

private:
    void showTexts();
    /// Shows the angle and the drawing.
    void SolveTriangle();
    void takeSide(int number);

    Session& m_session;
    NumberEdit* m_sides[3]; ///< txtLength, txtXone, txtXtwo
    double m_lengths[3] = {14, 8, 8};
    QLabel* m_labels[3];
    QLabel* lblUnits[3];
    QLabel* Label20;
    QLabel* lblAngleMeas;
    NumberEdit* txtAngle;
    DrawingWidget* Calc_pbx;
};

} // namespace orva::ui
