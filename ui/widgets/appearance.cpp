#include "widgets/appearance.h"

#include "widgets/flat_style.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>
#include <QVariant>

namespace orva::ui {

namespace {

constexpr const char* kProperty = "appearance"; ///< of the application

bool dark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < 128;
}

/// As the desktop gave them to the program.
struct Desktop {
    QPalette palette = QApplication::palette();
    QString style = QApplication::style()->name();
};

const Desktop& desktop()
{
    static const Desktop given;
    return given;
}

void setDisabled(QPalette& palette, const QColor& colour)
{
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(QPalette::Disabled, role, colour);
}

/// The given colours where the desktop is a light one, and readable figures where they are locked.
QPalette classicPalette()
{
    QPalette palette = desktop().palette;
    setDisabled(palette, QColor(0x9A, 0xA2, 0xAA));
    palette.setColor(QPalette::Link, QColor(0x00, 0x66, 0x99));
    palette.setColor(QPalette::BrightText, Qt::red);
    if (!dark(palette)) {
        const QColor background(0xAF, 0xC3, 0xE1);
        palette.setColor(QPalette::Window, background);
        palette.setColor(QPalette::Button, background);
        setDisabled(palette, QColor(0x5C, 0x6B, 0x80));
    }
    return palette;
}

struct Flat {
    QRgb window, base, button, text, disabled, accent, onAccent, edge, warning;
};
constexpr Flat kLight = {0xF4F6F8, 0xFFFFFF, 0xE6EBF0, 0x20232B, 0x666E78,
                         0x006699, 0xFFFFFF, 0xB9C1CA, 0xC61C1C};
constexpr Flat kDark = {0x272C32, 0x1E2226, 0x39414A, 0xE6EAEE, 0x98A1AB,
                        0x64B4E0, 0x10202A, 0x505A65, 0xFF7A7A};

QPalette flatPalette(const Flat& flat)
{
    QPalette palette(QColor(flat.button), QColor(flat.window));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, QColor(flat.text));
    palette.setColor(QPalette::Base, QColor(flat.base));
    palette.setColor(QPalette::AlternateBase, QColor(flat.window));
    palette.setColor(QPalette::ToolTipBase, QColor(flat.base));
    palette.setColor(QPalette::PlaceholderText, QColor(flat.disabled));
    palette.setColor(QPalette::Highlight, QColor(flat.accent));
    palette.setColor(QPalette::HighlightedText, QColor(flat.onAccent));
    palette.setColor(QPalette::Link, QColor(flat.accent));
    palette.setColor(QPalette::BrightText, QColor(flat.warning));
    palette.setColor(QPalette::Mid, QColor(flat.edge));
    setDisabled(palette, QColor(flat.disabled));
    return palette;
}

} // namespace

void useAppearance(Appearance appearance)
{
    const Desktop& given = desktop();
    qApp->setProperty(kProperty, static_cast<int>(appearance));
    const bool flat = appearance != Appearance::Classic;
    if (flat != (dynamic_cast<FlatStyle*>(QApplication::style()) != nullptr))
        QApplication::setStyle(flat ? new FlatStyle : QStyleFactory::create(given.style));
    const bool bright = appearance == Appearance::Light ||
                        (appearance == Appearance::Desktop && !dark(given.palette));
    const QPalette palette = flat ? flatPalette(bright ? kLight : kDark) : classicPalette();
    QApplication::setPalette(palette);
    for (const char* control : {"QCheckBox", "QRadioButton", "QLineEdit"}) {
        QPalette edges = palette;
        if (dark(palette))
            // The style draws their edges a little darker than the window's colour, which nobody
            // sees.
            edges.setColor(QPalette::Window, QColor(0xB0, 0xBA, 0xC4));
        QApplication::setPalette(edges, control);
    }
}

const ColourScheme& drawingScheme()
{
    const auto appearance = static_cast<Appearance>(qApp->property(kProperty).toInt());
    if (appearance == Appearance::Classic)
        return classicScheme();
    return isDark() ? darkScheme() : lightScheme();
}

bool isDark()
{
    return dark(QApplication::palette());
}

} // namespace orva::ui
