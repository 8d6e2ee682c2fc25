#include "main/export_menu.h"

#include <QAbstractScrollArea>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>

namespace orva::ui {

ExportMenu::ExportMenu(Editor& editor, ProjectCommands& commands, QWidget& control,
                       std::optional<ShownFigures> figures, bool rightButtonTaken)
    : QObject(&control),
      m_editor(editor),
      m_commands(commands),
      m_control(control),
      m_picture(qobject_cast<DrawingWidget*>(&control)),
      m_figures(std::move(figures)),
      m_rightButtonTaken(rightButtonTaken)
{
    if (m_picture && control.focusPolicy() == Qt::NoFocus)
        control.setFocusPolicy(Qt::ClickFocus);
    control.installEventFilter(this);
    if (auto* area = qobject_cast<QAbstractScrollArea*>(&control))
        area->viewport()->installEventFilter(this);
}

bool ExportMenu::eventFilter(QObject*, QEvent* event)
{
    if (m_picture && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        copyPicture();
        return true;
    }
    if (event->type() != QEvent::ContextMenu)
        return false;
    const auto& asked = static_cast<const QContextMenuEvent&>(*event);
    if (m_rightButtonTaken && asked.reason() == QContextMenuEvent::Mouse &&
        !asked.modifiers().testFlag(Qt::ControlModifier))
        return false;
    show(asked.reason() == QContextMenuEvent::Mouse
             ? asked.globalPos()
             : m_control.mapToGlobal(m_control.rect().center()));
    return true;
}

void ExportMenu::copyPicture()
{
    auto* data = new QMimeData;
    data->setImageData(m_picture->picture().toImage());
    data->setData("image/svg+xml", m_picture->svg());
    QGuiApplication::clipboard()->setMimeData(data);
}

void ExportMenu::show(const QPoint& at)
{
    auto* text = qobject_cast<QPlainTextEdit*>(&m_control);
    const std::unique_ptr<QMenu> menu(text ? text->createStandardContextMenu()
                                           : new QMenu(&m_control));
    menu->setObjectName("mnuPicture");
    const auto entry = [&](const char* name, Text what, const std::function<void()>& chosen) {
        QAction* action = menu->addAction(m_editor.session().text(what));
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, chosen);
        return action;
    };
    if (m_picture) {
        entry("mnuPictureCopy", Text::PictureCopy, [this] {
            copyPicture();
        })->setShortcut(QKeySequence::Copy);
        entry("mnuPicturePng", Text::PicturePng,
              [this] { m_commands.saveExport(FileKind::Png, m_picture->png().toStdString()); });
        entry("mnuPictureSvg", Text::PictureSvg,
              [this] { m_commands.saveExport(FileKind::Svg, m_picture->svg().toStdString()); });
    }
    if (m_figures) {
        menu->addSeparator();
        for (const auto& [name, what, kind] :
             {std::tuple("mnuFiguresCsv", Text::FiguresCsv, FileKind::Table),
              std::tuple("mnuFiguresJson", Text::FiguresJson, FileKind::Json)})
            entry(name, what, [this, kind = kind] {
                m_commands.saveExport(kind, m_figures->bytes(kind));
            })->setEnabled(m_figures->there());
    }
    menu->exec(at);
}

} // namespace orva::ui
