#include "main/page.h"

namespace orva::ui {

Page::Page(Editor& editor, QWidget* parent) : QWidget(parent), m_editor(editor)
{
    connect(&editor, &Editor::changed, this, [this](const Shown& what) {
        if (!concerns(what))
            return;
        if (what.everything) {
            m_stale = false;
            display();
        } else {
            displayOrWait();
        }
    });
}

void Page::displayOrWait()
{
    m_stale = !isVisible();
    if (!m_stale)
        display();
}

void Page::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_stale)
        display();
    m_stale = false;
}

} // namespace orva::ui
