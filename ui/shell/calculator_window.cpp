#include "shell/calculator_window.h"

#include "document/room_form.h"
#include "drawing/triangle_drawing.h"
#include "engine/triangle.h"
#include "lang/number_text.h"
#include "lang/string_table.h"
#include "widgets/control_texts.h"

#include <QGridLayout>
#include <cmath>

namespace orva::ui {

CalculatorWindow::CalculatorWindow(Session& session, QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::WindowStaysOnTopHint), m_session(session)
{
    setObjectName("frmCalc");
    auto* layout = new QGridLayout(this);
    const char* const names[] = {"txtLength", "txtXone", "txtXtwo"};
    const char* const labels[] = {"Label16", "Label18", "Label21"};
    for (int i = 0; i < 3; ++i) {
        m_labels[i] = named<QLabel>(labels[i], this);
        m_sides[i] = named<NumberEdit>(names[i], this);
        m_sides[i]->setText(qtText(plainText(m_lengths[i], 6)));
        m_labels[i]->setBuddy(m_sides[i]);
        lblUnits[i] = named<QLabel>(elementName("lblUnits", i), this);
        layout->addWidget(m_labels[i], i, 0);
        layout->addWidget(m_sides[i], i, 1);
        layout->addWidget(lblUnits[i], i, 2);
        connect(m_sides[i], &QLineEdit::editingFinished, this, [this, i] { takeSide(i); });
        connect(m_sides[i], &NumberEdit::cancelled, this,
                [this, i] { showText(*m_sides[i], qtText(plainText(m_lengths[i], 6))); });
    }
    Label20 = named<QLabel>("Label20", this);
    txtAngle = named<NumberEdit>("txtAngle", this);
    Label20->setBuddy(txtAngle);
    lblAngleMeas = named<QLabel>("lblAngleMeas", this);
    connect(txtAngle, &QLineEdit::editingFinished, this, &CalculatorWindow::SolveTriangle);
    connect(txtAngle, &NumberEdit::cancelled, this, &CalculatorWindow::SolveTriangle);
    layout->addWidget(Label20, 3, 0);
    layout->addWidget(txtAngle, 3, 1);
    layout->addWidget(lblAngleMeas, 3, 2);
    layout->setRowStretch(4, 1);

    Calc_pbx = new DrawingWidget(
        "Calc_pbx",
        [this](DrawingSurface& surface) {
            DrawTriangle(surface, m_lengths[0], m_lengths[1], m_lengths[2],
                         m_session.drawingOptions());
        },
        this);
    Calc_pbx->setMinimumSize(320, 220);
    layout->addWidget(Calc_pbx, 0, 3, 5, 1);
    layout->setColumnStretch(3, 1);

    connect(&session, &Session::LanguageChanged, this, &CalculatorWindow::showTexts);
    showTexts();
    SolveTriangle();
}

void CalculatorWindow::showTexts()
{
    setWindowTitle(m_session.text(Text::Calculator));
    const Text ids[] = {Text::Side1, Text::Side2, Text::Side3};
    for (int i = 0; i < 3; ++i)
        m_labels[i]->setText(m_session.text(ids[i]));
    Label20->setText(m_session.text(Text::Angle));
    lblAngleMeas->setText(m_session.text(Text::Degrees));
    Calc_pbx->setAccessibleName(m_session.text(Text::Calculator));
    showUnits();
    explainControls(*this, m_session);
}

void CalculatorWindow::showUnits()
{
    for (QLabel* unit : lblUnits)
        unit->setText(qtText(lengthUnit(m_session.textOptions())));
    Calc_pbx->redraw();
}

void CalculatorWindow::takeSide(int number)
{
    const auto typed =
        typedLength(m_sides[number]->text().toStdString(), m_session.state().settings.Units_Meters);
    if (typed)
        m_lengths[number] = std::abs(*typed);
    showText(*m_sides[number], qtText(plainText(m_lengths[number], 6)));
    SolveTriangle();
}

void CalculatorWindow::SolveTriangle()
{
    const auto solved = orva::SolveTriangle(m_lengths[0], m_lengths[1], m_lengths[2]);
    if (const float* angle = std::get_if<float>(&solved))
        txtAngle->setText(qtText(floatText(*angle)));
    Calc_pbx->redraw();
}

} // namespace orva::ui
