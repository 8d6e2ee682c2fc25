#pragma once

#include "main/page.h"
#include "widgets/controls.h"

#include <QComboBox>
#include <QToolButton>

namespace orva::ui {

/// Variants A to D above the room view: which one is current, and where the setup is kept.
class VariantBar final : public Page {
public:
    VariantBar(Editor& editor, QWidget* parent);

protected:
    bool concerns(const Shown& what) const override
    {
        return what.everything || what.view || what.changes.variants;
    }
    void display() override;
    /// A double click names a variant; its first click has made it current, as with tabs.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void choose(int variant);
    void askName(int variant);
    void displayCompared();
    void compare(int index);

    QToolButton* cmdVariant[Variants::kMost];
    QToolButton* cmdKeep[Variants::kMost];
    QComboBox* cmbCompare;
};

} // namespace orva::ui
