#include "window_fixture.h"

#include <QAccessible>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QSet>
#include <QTableWidget>

namespace orva::ui {
namespace {

bool isControl(const QWidget& widget)
{
    return qobject_cast<const QLineEdit*>(&widget) ||
           qobject_cast<const QAbstractButton*>(&widget) ||
           qobject_cast<const QComboBox*>(&widget) || qobject_cast<const DrawingWidget*>(&widget) ||
           qobject_cast<const QScrollBar*>(&widget);
}

/// The names of the visible controls of a window, each of its own.
QSet<QString> namesIn(const QWidget& window)
{
    QSet<QString> names;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (!isControl(*widget) || !widget->isVisible() || widget->objectName().isEmpty() ||
            widget->objectName().startsWith("qt_"))
            continue;
        const std::string what = widget->objectName().toStdString();
        const QString name = QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
        EXPECT_FALSE(name.trimmed().isEmpty()) << what;
        EXPECT_FALSE(names.contains(name)) << what << ": " << name.toStdString();
        names.insert(name);
        if (qobject_cast<const QMainWindow*>(window.window())) {
            EXPECT_FALSE(widget->toolTip().isEmpty()) << what;
        }
    }
    return names;
}

TEST_F(Window, EveryControlSaysWhatItIsAndWhatItIsFor)
{
    auto* tabs = control<QTabWidget>("Main_SSTab");
    for (const std::int32_t language : {1033, 1031}) {
        session.ChangeLanguage(language);
        qsizetype controls = 0;
        for (int page = 0; page < tabs->count(); ++page) {
            tabs->setCurrentIndex(page);
            for (const char* bar : {"RigHScroll", "RigVScroll"}) // there where it is zoomed
                control(bar)->show();
            controls += namesIn(*tabs->widget(page)).size();
        }
        EXPECT_GT(controls, 80);
        eachDialog([](QWidget& dialog) { EXPECT_GT(namesIn(dialog).size(), 0); });
    }
}

TEST_F(Window, EveryCommandHasAKeyOfItsOwn)
{
    for (const std::int32_t language : {1033, 1031}) {
        session.ChangeLanguage(language);
        QSet<QString> keys;
        for (const QAction* action : window->findChildren<QAction*>()) {
            const QString key = action->shortcut().toString();
            EXPECT_FALSE(!key.isEmpty() && keys.contains(key)) << key.toStdString();
            keys.insert(key);
        }
        for (const char* given :
             {"Ctrl+P", "F1", "Ctrl+F", "Ctrl+1", "Ctrl+3", "F5", "F6", "Alt+4", "Ctrl+F1"})
            EXPECT_TRUE(keys.contains(given)) << given;
        QList<const QWidget*> menus = {window->menuBar()};
        for (const QMenu* menu : window->menuBar()->findChildren<QMenu*>())
            menus += menu;
        for (const QWidget* menu : menus) {
            QSet<QChar> letters;
            for (const QAction* action : menu->actions()) {
                if (action->isSeparator())
                    continue;
                const QString text = QString(action->text()).remove("&&");
                const qsizetype at = text.indexOf('&');
                EXPECT_TRUE(at >= 0 || !action->shortcut().isEmpty()) << text.toStdString();
                if (at < 0)
                    continue;
                EXPECT_FALSE(letters.contains(text[at + 1].toLower())) << text.toStdString();
                letters.insert(text[at + 1].toLower());
            }
        }
    }
}

} // namespace
} // namespace orva::ui
