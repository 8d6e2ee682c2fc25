#pragma once

#include "main/page.h"
#include "widgets/drawing_widget.h"

#include <QFrame>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScrollBar>

namespace orva::ui {

/// The rigging sheet, the pins with the angles that they give, and the array in detail. Ctrl and
/// the wheel enlarge the view beyond its frame, which then scrolls.
class RiggingPage final : public Page {
    Q_OBJECT
public:
    RiggingPage(Editor& editor, QWidget* parent);

protected:
    bool concerns(const Shown& what) const override
    {
        return what.everything || what.changes.array || what.changes.setup;
    }
    void display() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showTexts();
    void displayWarnings();
    void displayPins();
    void fitSheet();
    void placeView();
    void zoom(double factor);

    QLabel* lblLastValid; ///< why sheet and view are not the setup on the page
    QPlainTextEdit* rigText_txt = nullptr;
    QListWidget* lstPins;
    QFrame* RigPbx_fra = nullptr;
    DrawingWidget* Rigging_pbx = nullptr;
    QScrollBar* RigHScroll;
    QScrollBar* RigVScroll;
    double m_zoom = 1;
};

} // namespace orva::ui
