#pragma once

#include "app/state/memory_settings.h"
#include "main/main_window.h"
#include "shell/calculator_window.h"
#include "shell/options_dialog.h"
#include "shell/recover_dialog.h"
#include "shell/small_dialogs.h"
#include "widgets/controls.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace orva::ui {

/// Waits for what is calculated, at most ORVA_PATIENCE_MS, or as given; whether it came.
inline bool comes(const std::function<bool()>& what, int usualMs = 60000)
{
    const int askedMs = qEnvironmentVariableIntValue("ORVA_PATIENCE_MS");
    return QTest::qWaitFor(what, askedMs > 0 ? askedMs : usualMs);
}

/// The main window with a new project, on its second page.
class Window : public testing::Test {
protected:
    void SetUp() override
    {
        session.state().settings.ShowNewQuery = false;
        ASSERT_TRUE(LoadSystemData(session.state(), ORVA_BINARY_DIR "/bin"));
        window = std::make_unique<MainWindow>(session);
        window->resize(1280, 720);
        window->begin();
        window->show();
        control<QTabWidget>("Main_SSTab")->setCurrentIndex(1);
        QTest::qWait(1);
    }

    template<typename Control = QWidget>
    Control* control(const char* name)
    {
        auto* found = window->findChild<Control*>(name);
        EXPECT_TRUE(found) << name;
        return found;
    }
    void choose(const char* name, const char* text)
    {
        auto* box = control<QComboBox>(name);
        const int index = box->findText(text);
        ASSERT_GE(index, 0) << name << " has no " << text;
        box->setFocus();
        box->setCurrentIndex(index);
        emit box->activated(index);
    }
    void enter(const char* name, const char* text)
    {
        auto* edit = control<QLineEdit>(name);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    void click(const char* name)
    {
        QTest::mouseClick(control<QAbstractButton>(name), Qt::LeftButton);
    }
    /// Where a point of the room lies in a section.
    static QPoint pixel(DrawingWidget& view, const Point& at)
    {
        const Scale& scale = view.scale();
        return QPointF((at.x - scale.left) / scale.width * view.width(),
                       (-at.y - scale.top) / scale.height * view.height())
            .toPoint();
    }
    static void moveTo(DrawingWidget& view, QPoint to, Qt::KeyboardModifiers keys = {},
                       Qt::MouseButtons buttons = Qt::NoButton)
    {
        QMouseEvent move(QEvent::MouseMove, QPointF(to), view.mapToGlobal(QPointF(to)),
                         Qt::NoButton, buttons, keys);
        QApplication::sendEvent(&view, &move);
    }
    const LineArray& array() const { return window->editor().array(); }
    const Room& room() const { return window->editor().room(); }
    bool red(const char* name) { return control(name)->property("invalid").toBool(); }
    QString said(const char* name)
    {
        control<DrawingWidget>(name)->picture();
        return control(name)->accessibleDescription();
    }
    /// Shows the dialogs that ask for nothing, one after the other.
    void eachDialog(const std::function<void(QWidget&)>& visit)
    {
        OptionsDialog options(session, window.get());
        AboutDialog about(session, window.get());
        CalculatorWindow calculator(session, window.get());
        SystemDialog system(session, window.get());
        std::vector<LeftBehind> left;
        left.push_back({{}, {}, {}, {{}, "/a/folder/of/projects/theatre.lad"}});
        RecoverDialog recover(session, left, window.get());
        for (QWidget* dialog :
             std::initializer_list<QWidget*>{&options, &about, &calculator, &system, &recover}) {
            SCOPED_TRACE(dialog->objectName().toStdString());
            dialog->show();
            QTest::qWait(10);
            visit(*dialog);
            dialog->hide();
        }
    }
    /// Answers the next message and keeps its text.
    void answer(QMessageBox::StandardButton button)
    {
        QTimer::singleShot(0, window.get(), [this, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(box);
            asked = (box->text() + "\n" + box->informativeText()).trimmed();
            box->button(button)->click();
        });
    }

    MemorySettings store;
    QTemporaryDir programFolder;
    Session session{store, {programFolder.path().toStdString()}};
    std::unique_ptr<MainWindow> window;
    QString asked;
};

} // namespace orva::ui
