#include "widgets/messages.h"

#include "app/files/log.h"

#include <QCloseEvent>
#include <QKeyEvent>

namespace orva::ui {

void showMessage(QWidget* parent, const QString& text, const QString& title)
{
    QMessageBox box(QMessageBox::Information, title, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

void showMessage(QWidget* parent, const QString& text, const QString& title, const QString& more)
{
    QMessageBox box(QMessageBox::Warning, title, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(more);
    qCWarning(logMessages, "%s: %s", qPrintable(text), qPrintable(more));
    box.exec();
}

Question::Question(QWidget* parent, const QString& text, StandardButtons buttons)
    : QMessageBox(QMessageBox::Question, kProgramTitle, text, buttons, parent)
{
    setTextFormat(Qt::PlainText);
    setDefaultButton(QMessageBox::Yes);
}

// Where there is a No and no Cancel, the base class takes both for No.
void Question::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Cancel))
        done(QMessageBox::Cancel);
    else
        QMessageBox::keyPressEvent(event);
}

void Question::closeEvent(QCloseEvent* event)
{
    event->accept();
    done(QMessageBox::Cancel);
}

} // namespace orva::ui
