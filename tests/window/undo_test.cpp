#include "window_fixture.h"

#include <QMenu>
#include <QRandomGenerator>

namespace orva::ui {
namespace {

class Undo : public Window {
protected:
    const DocumentState& state() const { return window->editor().document().state(); }
    QAction* action(const char* name) { return window->findChild<QAction*>(name); }
    QString status() { return control<QLabel>("lblStatusText")->text(); }

    /// Chooses or types something, anywhere, as a user would.
    void doSomething(QRandomGenerator& random)
    {
        auto* tabs = control<QTabWidget>("Main_SSTab");
        tabs->setCurrentIndex(static_cast<int>(random.bounded(4)));
        QList<QWidget*> controls;
        for (QWidget* widget : tabs->currentWidget()->findChildren<QWidget*>())
            if (widget->isVisible() && widget->isEnabled() &&
                (qobject_cast<QComboBox*>(widget) || qobject_cast<NumberEdit*>(widget)))
                controls += widget;
        if (controls.isEmpty())
            return;
        QWidget* chosen = controls[random.bounded(controls.size())];
        if (auto* list = qobject_cast<QComboBox*>(chosen)) {
            const int index = static_cast<int>(random.bounded(list->count()));
            list->setCurrentIndex(index);
            emit list->activated(index);
            return;
        }
        auto* edit = static_cast<QLineEdit*>(chosen);
        if (edit->isReadOnly())
            return;
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, QString::number(static_cast<int>(random.bounded(40)) - 5));
        QTest::keyClick(edit, Qt::Key_Return);
    }
};

TEST_F(Undo, TakesBackAndShowsWhatItChanged)
{
    EXPECT_FALSE(action("mnuUndo")->isEnabled());
    const DocumentState first = state();
    choose("cmbAngle(4)", "3°");
    const DocumentState changed = state();
    EXPECT_EQ(action("mnuUndo")->text(), "&Undo: Splay angle 5");
    control<QTabWidget>("Main_SSTab")->setCurrentIndex(3);
    action("mnuUndo")->trigger();
    EXPECT_EQ(state(), first);
    EXPECT_EQ(control<QTabWidget>("Main_SSTab")->currentIndex(), 1);
    EXPECT_TRUE(control("cmbAngle(4)")->hasFocus());
    EXPECT_EQ(status(), "Undone: Splay angle 5");
    EXPECT_FALSE(window->isWindowModified());
    action("mnuRedo")->trigger();
    EXPECT_EQ(state(), changed);
    EXPECT_TRUE(window->isWindowModified());

    control<QAbstractButton>("Lock_chk")->click();
    ASSERT_TRUE(window->editor().view().locked);
    action("mnuUndo")->trigger();
    EXPECT_EQ(state(), first);
    EXPECT_FALSE(window->editor().view().locked) << "the step was of what the lock holds";
    EXPECT_EQ(status(), "Undone: Splay angle 5; the setup is no longer locked");

    enter("Cradle_txt(1)", "7");
    control<QTabWidget>("Main_SSTab")->setCurrentIndex(0);
    action("mnuUndo")->trigger();
    EXPECT_TRUE(control("Cradle_txt(1)")->hasFocus()) << "the one of the two that changed";
    const QString height = control<QLineEdit>("Cradle_txt(1)")->text();
    enter("Cradle_txt(1)", "7");
    control("Cradle_txt(1)")->setFocus();
    action("mnuUndo")->trigger();
    EXPECT_EQ(control<QLineEdit>("Cradle_txt(1)")->text(), height) << "though it has the focus";

    control<QTabWidget>("Main_SSTab")->setCurrentIndex(0);
    enter("FOHX_txt", "15");
    QTest::keyClick(control("FOHX_txt"), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(state(), first) << "the entry lets go of keys that it has no use for";
}

TEST_F(Undo, SaysWhatTheRulesCorrected)
{
    choose("cmbAngle(10)", "7.5°");
    choose("cmbType(11)", "VM 412 S");
    EXPECT_TRUE(status().contains("splay angle 11 corrected")) << status().toStdString();
    EXPECT_TRUE(status().contains("Number of straight boxes now 7")) << status().toStdString();
    choose("cmbNumGer", "3"); // the column has 7
    EXPECT_EQ(status(), "Number of straight boxes back to 7");
    EXPECT_EQ(control<QComboBox>("cmbNumGer")->currentText(), "7");
    choose("cmbNumSpk", "14");
    choose("cmbNumBass", "20");
    EXPECT_TRUE(status().startsWith("Number of bass boxes: 20 do not fit, now 18"))
        << status().toStdString();
    action("mnuUndo")->trigger();
    action("mnuUndo")->trigger();
    action("mnuUndo")->trigger();
    choose("cmbAngle(0)", "0°");
    session.state().settings.AutoCorrect = false;
    choose("cmbNumSch", "1");
    EXPECT_EQ(state().setup.cmbNumSch.value(), 1);
}

TEST_F(Undo, RandomEditsAndAsManyUndosAreTheFirstState)
{
    for (unsigned seed = 1; seed <= 5; ++seed) {
        session.state().settings.AutoCorrect = seed % 2 == 0;
        window = std::make_unique<MainWindow>(session);
        window->begin();
        window->show();
        QRandomGenerator random(seed);
        std::vector<DocumentState> states = {state()};
        for (int edit = 0; edit < 200; ++edit) {
            doSomething(random);
            if (state() != states.back())
                states.push_back(state());
        }
        // What is typed may be more steps than one.
        std::size_t at = states.size() - 1;
        while (action("mnuUndo")->isEnabled()) {
            action("mnuUndo")->trigger();
            at -= at > 0 && state() == states[at - 1] ? 1 : 0;
        }
        EXPECT_EQ(at, 0U) << seed << ": the first state that did not come back";
        while (action("mnuRedo")->isEnabled()) {
            action("mnuRedo")->trigger();
            at += at + 1 < states.size() && state() == states[at + 1] ? 1 : 0;
        }
        EXPECT_EQ(at, states.size() - 1) << seed;
        EXPECT_EQ(state(), states.back());
    }
}

} // namespace
} // namespace orva::ui
