#pragma once

#include "engine/sub_array_figures.h"
#include "main/entries.h"
#include "main/page.h"
#include "widgets/drawing_widget.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>

namespace orva::ui {

/// The row of ground-stacked bass boxes: where they stand, how wide it opens, and the delays that
/// make it act like an arc.
class SubArrayPage final : public Page {
    Q_OBJECT
public:
    SubArrayPage(Editor& editor, QWidget* parent);

protected:
    bool concerns(const Shown& what) const override
    {
        return what.everything || what.changes.subArray;
    }
    void display() override;

private:
    void makeFrame();
    void makeRow(int i, QGridLayout& grid);
    void showTexts();
    SubArrayFigures figures() const;

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
