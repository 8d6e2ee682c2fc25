#include "shell/colours.h"

#include <QApplication>
#include <QPalette>

namespace orva::ui {

bool isDark()
{
    return QApplication::palette().color(QPalette::Window).lightness() < 128;
}

void useColours()
{
    QPalette palette = QApplication::palette();
    QColor disabled(0x9A, 0xA2, 0xAA); // locked figures are still read
    if (!isDark()) {
        const QColor background(0xAF, 0xC3, 0xE1);
        palette.setColor(QPalette::Window, background);
        palette.setColor(QPalette::Button, background);
        disabled = QColor(0x5C, 0x6B, 0x80);
    }
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(QPalette::Disabled, role, disabled);
    QApplication::setPalette(palette);
    if (isDark()) {
        // The style draws their edges a little darker than the window's colour, which nobody sees.
        palette.setColor(QPalette::Window, QColor(0xB0, 0xBA, 0xC4));
        for (const char* button : {"QCheckBox", "QRadioButton"})
            QApplication::setPalette(palette, button);
    }
}

} // namespace orva::ui
