#include "main/picture_menu.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>

namespace orva::ui {

PictureMenu::PictureMenu(Editor& editor, ProjectCommands& commands, DrawingWidget& picture,
                         bool rightButtonTaken)
    : QObject(&picture),
      m_editor(editor),
      m_commands(commands),
      m_picture(picture),
      m_rightButtonTaken(rightButtonTaken)
{
    if (picture.focusPolicy() == Qt::NoFocus)
        picture.setFocusPolicy(Qt::ClickFocus);
    picture.installEventFilter(this);
}

bool PictureMenu::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        copy();
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
             : m_picture.mapToGlobal(m_picture.rect().center()));
    return true;
}

void PictureMenu::copy()
{
    auto* data = new QMimeData;
    data->setImageData(m_picture.picture().toImage());
    data->setData("image/svg+xml", m_picture.svg());
    QGuiApplication::clipboard()->setMimeData(data);
}

void PictureMenu::show(const QPoint& at)
{
    QMenu menu(&m_picture);
    menu.setObjectName("mnuPicture");
    const auto entry = [&](const char* name, Text text, const std::function<void()>& chosen) {
        QAction* action = menu.addAction(m_editor.session().text(text));
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, chosen);
        return action;
    };
    entry("mnuPictureCopy", Text::PictureCopy, [this] { copy(); })->setShortcut(QKeySequence::Copy);
    entry("mnuPicturePng", Text::PicturePng,
          [this] { m_commands.savePicture(FileKind::Png, m_picture.png().toStdString()); });
    entry("mnuPictureSvg", Text::PictureSvg,
          [this] { m_commands.savePicture(FileKind::Svg, m_picture.svg().toStdString()); });
    menu.exec(at);
}

} // namespace orva::ui
