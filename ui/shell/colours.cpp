#include "shell/colours.h"

#include <QApplication>
#include <QPalette>

namespace orva::ui {

void useColours()
{
    QPalette palette = QApplication::palette();
    if (palette.color(QPalette::Window).lightness() < 128)
        return;
    const QColor background(0xAF, 0xC3, 0xE1);
    palette.setColor(QPalette::Window, background);
    palette.setColor(QPalette::Button, background);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(QPalette::Disabled, role, QColor(0x5C, 0x6B, 0x80));
    QApplication::setPalette(palette);
}

} // namespace orva::ui
