#include "shell/calculator_window.h"
#include "shell/options_dialog.h"
#include "window_fixture.h"

namespace orva::ui {
namespace {

/// A dialog or window of the menu, while it is open.
class Entry : public Window {
protected:
    static void type(QLineEdit* edit, const char* text, Qt::Key last)
    {
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, last);
    }
};

TEST_F(Entry, OptionsRestoreWhatIsNoNumber)
{
    OptionsDialog dialog(session, window.get());
    dialog.show();
    for (const auto& [name, shown] : {std::pair{"txtTemp", "21"},
                                      {"SPLRes_txt", "0.1"},
                                      {"txtGridSize(0)", "5"},
                                      {"txtGridSize(2)", "1"}}) {
        SCOPED_TRACE(name);
        auto* edit = dialog.findChild<QLineEdit*>(name);
        ASSERT_TRUE(edit);
        for (const char* typed : {"-", "word", "1.234,5"}) {
            type(edit, typed, Qt::Key_Return);
            EXPECT_EQ(edit->text(), shown) << typed;
        }
        type(edit, "7", Qt::Key_Escape);
        EXPECT_TRUE(dialog.isVisible()) << "Esc belongs to the entry";
        EXPECT_EQ(edit->text(), shown);
    }
    EXPECT_FALSE(dialog.findChild<QAbstractButton*>("pixelRes_chk")->isChecked());
    QTest::keyClick(dialog.findChild<QLineEdit*>("txtTemp"), Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(Entry, SidesOfTheTriangleAreWholeLengths)
{
    CalculatorWindow calculator(session, window.get());
    calculator.show();
    auto* side = calculator.findChild<QLineEdit*>("txtLength");
    const QString angle = calculator.findChild<QLineEdit*>("txtAngle")->text();
    for (const char* typed : {"-", "1.234,5", "word"}) {
        type(side, typed, Qt::Key_Return);
        EXPECT_EQ(side->text(), "14") << typed;
    }
    type(side, "9", Qt::Key_Escape);
    EXPECT_EQ(side->text(), "14");
    EXPECT_EQ(calculator.findChild<QLineEdit*>("txtAngle")->text(), angle);
    type(side, "-10ft", Qt::Key_Return);
    EXPECT_EQ(side->text(), "3.048");
    EXPECT_NE(calculator.findChild<QLineEdit*>("txtAngle")->text(), angle);
}

} // namespace
} // namespace orva::ui
