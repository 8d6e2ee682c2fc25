#include "widgets/controls.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QVariant>
#include <QWheelEvent>
#include <algorithm>

namespace orva::ui {

void markInvalid(QWidget& control, bool invalid, const QString& why)
{
    control.setAccessibleDescription(invalid ? why : QString());
    if (control.property("invalid").toBool() == invalid && control.property("invalid").isValid())
        return;
    control.setProperty("invalid", invalid);
    QPalette palette; // without anything set it follows the window
    if (invalid) {
        for (const auto role : {QPalette::Base, QPalette::Button, QPalette::Window})
            palette.setColor(role, Qt::red);
        for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText})
            palette.setColor(role, Qt::white);
    }
    control.setPalette(palette);
}

void showList(QComboBox& box, const ChoiceList& list, const QString& why)
{
    const QSignalBlocker quiet(box);
    bool same = box.count() == static_cast<int>(list.items.size());
    for (int i = 0; same && i < box.count(); ++i)
        same =
            box.itemText(i) == QString::fromStdString(list.items[static_cast<std::size_t>(i)].text);
    if (!same) {
        box.clear();
        for (const Choice& item : list.items)
            box.addItem(QString::fromStdString(item.text));
    }
    box.setCurrentIndex(list.selected);
    markInvalid(box, list.invalid, why);
}

void showText(QLineEdit& edit, const QString& text)
{
    if (edit.text() == text)
        return;
    edit.setText(text);
    if (!edit.hasFocus())
        edit.setCursorPosition(0); // what is too long shows its beginning
}

ListBox::ListBox(QWidget* parent) : QComboBox(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
}

void ListBox::wheelEvent(QWheelEvent* event)
{
    event->ignore();
    for (QWidget* below = parentWidget(); below && !below->isWindow();
         below = below->parentWidget())
        if (auto* area = qobject_cast<QAbstractScrollArea*>(below)) {
            QCoreApplication::sendEvent(area->verticalScrollBar(), event);
            return;
        }
}

namespace {

class EscFilter final : public QObject {
public:
    EscFilter(QLineEdit& edit, std::function<void()> cancel)
        : QObject(&edit), m_edit(edit), m_cancel(std::move(cancel))
    {
        edit.installEventFilter(this);
        edit.setAcceptDrops(false); // a file that is dropped is opened, not typed
    }

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::ShortcutOverride && !m_edit.isModified()) {
            // Nothing has been typed: the keys mean the program's own steps.
            const auto* pressed = static_cast<QKeyEvent*>(event);
            if (pressed->matches(QKeySequence::Undo) || pressed->matches(QKeySequence::Redo)) {
                event->ignore();
                return true;
            }
        }
        const bool key =
            event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
        if (!key || !m_edit.isModified() || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
            return false;
        event->accept();
        if (event->type() == QEvent::KeyPress) {
            m_cancel();
            m_edit.setModified(false);
            m_edit.selectAll();
        }
        return true;
    }

private:
    QLineEdit& m_edit;
    std::function<void()> m_cancel;
};

} // namespace

void cancelByEsc(QLineEdit& edit, const std::function<void()>& cancel)
{
    new EscFilter(edit, cancel); // the entry owns it
}

QPoint placeBeside(QSize window, const QRect& keepFree, const QRect& screen)
{
    const auto onScreen = [&](int x, int y) {
        return QRect(
            QPoint(std::clamp(x, screen.left(),
                              std::max(screen.left(), screen.right() + 1 - window.width())),
                   std::clamp(y, screen.top(),
                              std::max(screen.top(), screen.bottom() + 1 - window.height()))),
            window);
    };
    const auto covered = [&](const QRect& place) {
        const QRect common = place.intersected(keepFree);
        return static_cast<qint64>(common.width()) * common.height();
    };
    const QRect places[] = {onScreen(keepFree.right() + 1, keepFree.top()),
                            onScreen(keepFree.left(), keepFree.bottom() + 1),
                            onScreen(keepFree.left() - window.width(), keepFree.top()),
                            onScreen(keepFree.left(), keepFree.top() - window.height())};
    return std::min_element(std::begin(places), std::end(places),
                            [&](const QRect& a, const QRect& b) { return covered(a) < covered(b); })
        ->topLeft();
}

QSize frameMargins(const QWidget& window)
{
    return {0, window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window)};
}

BusyPointer::BusyPointer()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

BusyPointer::~BusyPointer()
{
    QGuiApplication::restoreOverrideCursor();
}

NumberEdit::NumberEdit(QWidget* parent) : QLineEdit(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    cancelByEsc(*this, [this] { emit cancelled(); });
}

QSize NumberEdit::sizeHint() const
{
    const QSize standard = QLineEdit::sizeHint();
    return {fontMetrics().horizontalAdvance("-00000.000"), standard.height()};
}

ColumnArea::ColumnArea(QWidget* column, QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    setFocusPolicy(Qt::NoFocus);
    setWidget(column);
}

bool ColumnArea::eventFilter(QObject* watched, QEvent* event)
{
    const bool filtered = QScrollArea::eventFilter(watched, event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show)
        fitWidth();
    return filtered;
}

void ColumnArea::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    fitWidth();
}

void ColumnArea::fitWidth()
{
    const QSize needed = widget()->minimumSizeHint();
    const int bar = needed.height() > height() ? verticalScrollBar()->sizeHint().width() : 0;
    setFixedWidth(needed.width() + bar);
}

QFrame* lineDivider(QWidget* parent)
{
    auto* line = new QFrame(parent);
    line->setObjectName("LineDivider");
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    line->setForegroundRole(QPalette::Link);
    return line;
}

} // namespace orva::ui
