#pragma once

#include "main/editor.h"

#include <QWidget>

namespace orva::ui {

/// A page, or part of one, that shows the document. It shows itself anew once for each change that
/// concerns it; while it is hidden it lets edits wait until it is shown.
class Page : public QWidget {
public:
    Page(Editor& editor, QWidget* parent);

protected:
    virtual bool concerns(const Shown& what) const = 0;
    virtual void display() = 0;
    /// Shows itself anew now, or when it is shown.
    void displayOrWait();

    void showEvent(QShowEvent* event) override;

    Editor& m_editor;

private:
    bool m_stale = true;
};

} // namespace orva::ui
