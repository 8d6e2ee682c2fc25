#pragma once

#include "main/array_column.h"
#include "main/entries.h"
#include "main/page.h"

#include <QCheckBox>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

namespace orva::ui {

/// The controls of the array: counts, boxes, mounting, first box, cradle, bass box, lock, and the
/// warning box.
class SetupPage final : public Page {
    Q_OBJECT
public:
    SetupPage(Editor& editor, QWidget* parent);

    /// From box to box, round again after the last.
    void focusNextBox() { m_column->focusNextBox(); }

signals:
    void autoAimAsked();

protected:
    bool concerns(const Shown& what) const override
    {
        const Changes& changes = what.changes;
        return what.everything || what.view || changes.setup || changes.array || changes.room;
    }
    void display() override;

private:
    QWidget* countsFrame();
    QWidget* mountingFrame();
    void layOutMounting(QGridLayout& layout);
    QWidget* pointsFrame();
    void addCount(QComboBox* box, Text step, ChoiceList SetupForm::*list,
                  void (SetupForm::*choose)(int, bool));
    void addPoint(QLineEdit* edit, Text step, std::size_t element,
                  FloatPair (LineArray::*get)() const, bool (LineArray::*set)(FloatPair));
    void showEndOfColumn();
    void showTexts();
    void displayCounts();
    void displayMounting();
    void displayPoints();

    Entries m_entries;
    ArrayColumn* m_column;

    QLabel* lblTotGer;
    QLabel* lblTotSch;
    QLabel* lblTotSub;
    QLabel* lblNumSpk;
    QComboBox* cmbNumGer;
    QComboBox* cmbNumSch;
    QComboBox* cmbNumBass;
    QComboBox* cmbNumSpk;

    QCheckBox* Stacked_chk;
    QRadioButton* PinAngle_opt[2];
    QComboBox* PinNumber_cmb;
    QLabel* Label10;
    QLabel* PinAngle_lbl;
    QLabel* box1_lbl;
    QLineEdit* box1Angle_txt;
    QLabel* lblAngleMeas;
    QLabel* Label12;
    QLabel* AnglePin_lbl;
    QLabel* Label11;
    QLabel* RemAng_lbl;
    QPushButton* cmdAuto;

    QLabel* Label18;
    QPushButton* cmdHang;
    QLabel* m_cradleAxes[2];
    QLineEdit* Cradle_txt[2];
    QLabel* Label15;
    QRadioButton* optBassYesNo[2];
    QLabel* bassX_lbl;
    QLabel* bassY_lbl;
    QLineEdit* BassBox_txt[2];
    QCheckBox* ShowDelay_chk;
    std::vector<QLabel*> m_units;
    QCheckBox* Lock_chk;

    QFrame* Warning_fra;
    QLabel* Warning_lbl;
    QFrame* m_countsBox;
    QLabel* m_countsText;
};

} // namespace orva::ui
