#pragma once

#include "main/project_commands.h"
#include "widgets/drawing_widget.h"

namespace orva::ui {

/// Copies a picture (Ctrl+C, context menu) or saves it as PNG or SVG. Where the right button has a
/// meaning of its own, the menu comes by Ctrl with it, and by the menu key.
class PictureMenu final : public QObject {
    Q_OBJECT
public:
    PictureMenu(Editor& editor, ProjectCommands& commands, DrawingWidget& picture,
                bool rightButtonTaken);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void copy();
    void show(const QPoint& at);

    Editor& m_editor;
    ProjectCommands& m_commands;
    DrawingWidget& m_picture;
    bool m_rightButtonTaken;
};

} // namespace orva::ui
