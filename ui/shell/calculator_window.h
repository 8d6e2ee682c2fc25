#pragma once

#include "widgets/drawing_widget.h"
#include "widgets/session.h"

#include <QLabel>
#include <QLineEdit>
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
    /// Reads the sides, shows the angle and the drawing.
    void SolveTriangle();
    double side(int number) const;

    Session& m_session;
    QLineEdit* m_sides[3]; ///< txtLength, txtXone, txtXtwo
    QLabel* m_labels[3];
    QLabel* lblUnits[3];
    QLabel* Label20;
    QLabel* lblAngleMeas;
    QLineEdit* txtAngle;
    DrawingWidget* Calc_pbx;
};

} // namespace orva::ui
