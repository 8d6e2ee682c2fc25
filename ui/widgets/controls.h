#pragma once

#include "document/choice_list.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QString>
#include <functional>

namespace orva::ui {

/// The name of an element of a control array.
inline QString elementName(const char* name, int index)
{
    return QString("%1(%2)").arg(QString::fromLatin1(name)).arg(index);
}

/// A new control under its name.
template<typename Control, typename... Arguments>
Control* named(const QString& name, Arguments... arguments)
{
    auto* control = new Control(arguments...);
    control->setObjectName(name);
    return control;
}

/// Marks an entry as invalid (red background, property "invalid", and why, for those who hear it
/// read) or as valid (plain).
void markInvalid(QWidget& control, bool invalid, const QString& why);

/// Shows the list without telling anybody; an invalid one is red and says why.
void showList(QComboBox& box, const ChoiceList& list, const QString& why = {});

/// Shows a text without moving the caret where it already stands there.
void showText(QLineEdit& edit, const QString& text);

/// Calls `cancel` when Esc is pressed on what has been typed, and selects the text that is then
/// there; nobody else sees that key. Where nothing has been typed, Undo and Redo are not the
/// entry's.
void cancelByEsc(QLineEdit& edit, const std::function<void()>& cancel);

/// A list that the wheel changes only while it is open; else it scrolls what the list lies on.
class ListBox final : public QComboBox {
    Q_OBJECT
public:
    explicit ListBox(QWidget* parent = nullptr);

protected:
    void wheelEvent(QWheelEvent* event) override;
};

/// An entry for a number, as wide as numbers are.
class NumberEdit final : public QLineEdit {
    Q_OBJECT
public:
    explicit NumberEdit(QWidget* parent = nullptr);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    /// By Esc, as cancelByEsc() says.
    void cancelled();
};

/// A column of controls, as wide as they need, that scrolls where it is too high.
class ColumnArea final : public QScrollArea {
public:
    explicit ColumnArea(QWidget* column, QWidget* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fitWidth();
};

/// Where a window of that size lies whole on the screen without covering `keepFree`: right of it,
/// below, left or above; where there is no such place, where it covers least.
QPoint placeBeside(QSize window, const QRect& keepFree, const QRect& screen);
/// What a window manager's frame adds to a window that is not shown yet, about.
QSize frameMargins(const QWidget& window);

/// The wait cursor, as long as it lives.
class BusyPointer {
public:
    BusyPointer();
    ~BusyPointer();
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

/// The line that divides parts of a page.
QFrame* lineDivider(QWidget* parent);

} // namespace orva::ui
