#pragma once

#include "main/project_commands.h"
#include "main/shown_figures.h"

namespace orva::ui {

/// What can be taken out of a control: a picture is copied (Ctrl+C, context menu) or saved as PNG
/// or SVG, figures are saved. Where the right button has a meaning of its own, the menu comes by
/// Ctrl with it, and by the menu key.
class ExportMenu final : public QObject {
    Q_OBJECT
public:
    ExportMenu(Editor& editor, ProjectCommands& commands, QWidget& control,
               std::optional<ShownFigures> figures, bool rightButtonTaken = false);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void copyPicture();
    void show(const QPoint& at);

    Editor& m_editor;
    ProjectCommands& m_commands;
    QWidget& m_control;
    DrawingWidget* m_picture; ///< if it is one
    std::optional<ShownFigures> m_figures;
    bool m_rightButtonTaken;
};

} // namespace orva::ui
