#pragma once

#include "engine/sub_array_figures.h"
#include "main/entries.h"
#include "widgets/drawing_widget.h"

#include <QGroupBox>
#include <QLabel>

namespace orva::ui {

/// The row of ground-stacked bass boxes: where they stand, how wide it opens, and the delays that
/// make it act like an arc.
class SubArrayPage final : public QWidget {
    Q_OBJECT
public:
    SubArrayPage(Editor& editor, QWidget* parent);

private:
    void showTexts();
    void display();
    SubArrayFigures figures() const;

    Editor& m_editor;
    Entries m_entries;
    QGroupBox* fraSubArray;
    QLabel* lblSubArray;
    QLineEdit* OpenAng_txt;
    QLabel* m_degrees;
    QLabel* lblSubDist;
    QLabel* lblSubVDist;
    QLabel* lblSubDelay;
    std::array<QLineEdit*, 10> SubArray_txt;
    std::array<QLineEdit*, 10> VirtDist_txt;
    std::array<QLineEdit*, 10> SubDelay_txt;
    std::vector<QLabel*> m_lengthUnits;
    std::vector<QLabel*> m_timeUnits;
    DrawingWidget* picSubArray;
};

} // namespace orva::ui
