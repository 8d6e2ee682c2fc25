#pragma once

#include "model/result.h"

#include <QMessageBox>

namespace orva::ui {

/// The program's title, as in captions of messages.
inline constexpr const char* kProgramTitle = "ORVA";

/// Shows a message with an OK button.
void showMessage(QWidget* parent, const QString& text, const QString& title = kProgramTitle);

/// Shows a message with more below it.
void showMessage(QWidget* parent, const QString& text, const QString& title, const QString& more);

/// A yes-no question. Esc and closing it are no answer: exec() gives QMessageBox::Cancel then.
class Question final : public QMessageBox {
public:
    Question(QWidget* parent, const QString& text, StandardButtons buttons);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
};

} // namespace orva::ui
