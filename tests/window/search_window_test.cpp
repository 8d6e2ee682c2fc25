#include "window_fixture.h"

#include <QAccessible>
#include <QAction>
#include <QDialog>
#include <QItemSelectionModel>
#include <QTableWidget>

namespace orva::ui {
namespace {

/// Drives the search dialog while it is open.
class SearchWindow : public Window {
protected:
    void search(const std::function<void(QDialog&)>& drive)
    {
        QTimer::singleShot(0, window.get(), [this, drive] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog && dialog->objectName() == "frmOptimize");
            drive(*dialog);
            if (dialog->isVisible())
                dialog->findChild<QAbstractButton*>("cmdCancel")->click();
        });
        click("Optimize_cmd");
    }
    static QString text(const QDialog& dialog, const char* name)
    {
        return dialog.findChild<QLabel*>(name)->text();
    }
    static void waitFor(const std::function<bool()>& what) { EXPECT_TRUE(comes(what)); }
};

TEST_F(SearchWindow, ASuggestionIsHungByAClickAndTakenBackByUndo)
{
    control<QTabWidget>("Main_SSTab")->setCurrentIndex(0);
    enter("RoomHeight_txt", "5"); // few arrays fit
    control<QTabWidget>("Main_SSTab")->setCurrentIndex(1);
    const LineArray before = array();
    const auto suggest = [this](const std::function<void(QDialog&)>& drive) {
        QTimer::singleShot(0, window.get(), [drive] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog && dialog->objectName() == "frmSuggest");
            drive(*dialog);
            ASSERT_FALSE(dialog->isVisible());
        });
        click("cmdSuggest");
    };
    suggest([&](QDialog& dialog) {
        auto& table = *dialog.findChild<QTableWidget*>("tblSuggestions");
        auto* stop = dialog.findChild<QAbstractButton*>("cmdStopSuggest");
        waitFor([&] { return !stop->isEnabled(); });
        ASSERT_GT(table.rowCount(), 1);
        for (const int row : {0, 1}) {
            QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                              table.visualItemRect(table.item(row, 0)).center());
            EXPECT_EQ(table.item(row, 0)->text().section(' ', 0, 0),
                      QString::number(array().boxCount()));
            EXPECT_TRUE(window->editor().setupValid());
            SetupForm entries = window->editor().setup();
            entries.RefreshFromClass(array());
            EXPECT_EQ(window->editor().setup(), entries);
        }
        EXPECT_EQ(table.accessibleName(), dialog.windowTitle());
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_NE(array(), before);
    window->findChild<QAction*>("mnuUndo")->trigger();
    EXPECT_EQ(array(), before) << "both at once";
    suggest([&](QDialog& dialog) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_TRUE(dialog.isVisible()) << "what was found stays to be seen";
        dialog.findChild<QAbstractButton*>("cmdCloseSuggest")->click();
    });
    EXPECT_EQ(array(), before);
    control<QAbstractButton>("Lock_chk")->click();
    EXPECT_FALSE(control("cmdSuggest")->isEnabled());
}

TEST(TimeLeft, IsInMinutesAndStartedSeconds)
{
    for (const auto& [seconds, text] :
         {std::pair(0.0, "0:00"), std::pair(59.2, "1:00"), std::pair(61.0, "1:01"),
          std::pair(3725.0, "62:05"), std::pair(1e300, "16666666:40")})
        EXPECT_EQ(minutesAndSeconds(seconds), text);
}

TEST_F(SearchWindow, EscPausesAndThenCancels)
{
    search([](QDialog& dialog) {
        EXPECT_FALSE(dialog.findChild<QAbstractButton*>("cmdCommit")->isEnabled());
        dialog.findChild<QAbstractButton*>("chkArea")->click();
        auto* points = dialog.findChild<QLineEdit*>("txtNumPts");
        points->setFocus();
        points->selectAll();
        QTest::keyClicks(points, "10000");
        auto* begin = dialog.findChild<QAbstractButton*>("cmdOptimize");
        begin->click();
        waitFor([&] { return text(dialog, "lblTested").toULongLong() > 0; });
        QTest::keyClick(&dialog, Qt::Key_Escape);
        waitFor([&] { return begin->text() == "Continue Calc."; });
        EXPECT_TRUE(dialog.isVisible());
        const auto tested = text(dialog, "lblTested").toULongLong();
        EXPECT_EQ(dialog.findChild<QComboBox*>("cmbConfigs")->count(), 4);
        EXPECT_NE(text(dialog, "lblTimeLeft"), "_");
        begin->click();
        EXPECT_GE(text(dialog, "lblTested").toULongLong(), tested) << "nothing is tested anew";
        waitFor([&] { return text(dialog, "lblTested").toULongLong() > tested; });
        begin->click();
        waitFor([&] { return begin->text() == "Continue Calc."; });
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(SearchWindow, ResultsAreShownAndTaken)
{
    search([this](QDialog& dialog) {
        auto* curve = control<DrawingWidget>("AreaSpl_pbx");
        const QImage opened = curve->picture().toImage();
        bool baseline = false;
        for (int x = 60; x < opened.width() && !baseline; ++x)
            for (int y = opened.height() / 2; y < opened.height(); ++y)
                baseline = baseline || opened.pixelColor(x, y) == QColor(Qt::red);
        EXPECT_TRUE(baseline) << "drawn on opening";
        dialog.findChild<QAbstractButton*>("chkNeighbor")->click();
        dialog.findChild<QAbstractButton*>("cmdOptimize")->click();
        waitFor([&] { return dialog.windowTitle().contains("Select desired configuration."); });
        EXPECT_EQ(text(dialog, "lblTested"), text(dialog, "lblToTest"));
        EXPECT_EQ(text(dialog, "lblComp"), "100%");
        EXPECT_EQ(text(dialog, "lblTimeLeft"), "0:00");
        EXPECT_TRUE(dialog.findChild<QAbstractButton*>("chkShowSetup")->isChecked());
        dialog.findChild<QComboBox*>("cmbConfigs")->setCurrentIndex(1);
        dialog.findChild<QAbstractButton*>("cmdCommit")->click();
    });
    EXPECT_TRUE(window->isWindowModified());
}

TEST_F(SearchWindow, TheNewPartFoldsOutAndCountsOnlyThen)
{
    control<QTabWidget>("Main_SSTab")->setCurrentIndex(0);
    choose("numAreas_cmb", "3");
    control<QTabWidget>("Main_SSTab")->setCurrentIndex(1);
    const LineArray before = window->editor().array();
    search([&](QDialog& dialog) {
        const auto press = [&](const char* name) {
            dialog.findChild<QAbstractButton*>(name)->click();
        };
        const auto type = [&](const char* name, const char* figure) {
            auto* entry = dialog.findChild<QLineEdit*>(name);
            entry->setFocus();
            entry->selectAll();
            QTest::keyClicks(entry, figure);
            QTest::keyClick(entry, Qt::Key_Return);
        };
        const QString given = text(dialog, "lblToTest");
        EXPECT_FALSE(dialog.findChild<QWidget*>("optMeasure(2)")->isVisible());
        press("cmdMore");
        EXPECT_FALSE(
            QAccessible::queryAccessibleInterface(dialog.findChild<QWidget*>("txtPerDoubling"))
                ->text(QAccessible::Name)
                .isEmpty());
        press("optMeasure(2)");
        press("chkSearchArea(2)");
        EXPECT_FALSE(dialog.findChild<QWidget*>("optMeasure(0)")->isEnabled())
            << "no fit line over several areas";
        press("chkFreePin");
        press("chkFreeHeight");
        type("txtHeight(0)", "6");
        type("txtHeight(1)", "5");
        EXPECT_FALSE(dialog.findChild<QWidget*>("cmdOptimize")->isEnabled());
        type("txtHeight(1)", "7.5");
        type("txtHeight(2)", "0,5");
        EXPECT_TRUE(dialog.findChild<QWidget*>("cmdOptimize")->isEnabled());
        EXPECT_EQ(text(dialog, "lblArea"), "1, 3");
        EXPECT_GT(text(dialog, "lblToTest").toULongLong(), 44U * given.toULongLong());
        press("cmdMore");
        EXPECT_EQ(text(dialog, "lblToTest"), given);
        EXPECT_EQ(text(dialog, "lblArea"), "1");
        EXPECT_TRUE(dialog.findChild<QAbstractButton*>("optMeasure(1)")->isChecked());
        press("cmdMore");
        press("optMeasure(2)");
        press("chkQuickOnly");
        type("txtBudget", "300");
        press("cmdOptimize");
        waitFor([&] { return dialog.windowTitle().contains("Select desired configuration."); });
        auto* table = dialog.findChild<QTableWidget*>("tblResults");
        ASSERT_EQ(table->rowCount(), 4);
        EXPECT_EQ(table->columnCount(), 8);
        EXPECT_EQ(text(dialog, "lblTested"), "300");
        table->selectRow(1);
        EXPECT_EQ(dialog.findChild<QComboBox*>("cmbConfigs")->currentIndex(), 1);
        const auto lines = [this] {
            return control<DrawingWidget>("AreaSpl_pbx")->svg().count("<polyline");
        };
        const auto all = lines();
        table->selectionModel()->select(table->model()->index(2, 0),
                                        QItemSelectionModel::Select | QItemSelectionModel::Rows);
        EXPECT_EQ(lines(), all - 2) << "of several that are selected only those";
        const double height = table->item(1, 5)->text().toDouble();
        EXPECT_GE(height, 6);
        EXPECT_LE(height, 7.5);
        press("cmdCommit");
        EXPECT_NEAR(window->editor().array().GFAGetCradleCoord()[1], height, 0.01);
    });
    EXPECT_NE(window->editor().array(), before);
    window->findChild<QAction*>("mnuUndo")->trigger();
    EXPECT_EQ(window->editor().array(), before) << "one step";
}

TEST_F(SearchWindow, TheFitLineStaysWhereItIsWhenTheWindowIsWidened)
{
    auto* curve = control<DrawingWidget>("AreaSpl_pbx");
    click("chkDrawLine");
    const auto drag = [&](QPoint from, QPoint to) {
        QTest::mousePress(curve, Qt::LeftButton, {}, from);
        QTest::mouseMove(curve, to);
        QTest::mouseRelease(curve, Qt::LeftButton, {}, to);
    };
    drag({50 + 20, 60}, {50 + 60, 80});
    QStringList targets;
    for (const int width : {1280, 1600, 1280}) {
        window->resize(width, 720);
        QTest::qWait(30);
        search([&](QDialog& dialog) {
            targets += text(dialog, "lblX1") + " " + text(dialog, "lblX2") + " " +
                       text(dialog, "lblDeltadB");
        });
    }
    EXPECT_EQ(targets[0], targets[1]);
    EXPECT_EQ(targets[0], targets[2]);
    auto& picture = *control<DrawingWidget>("AreaSpl_pbx");
    QTest::mousePress(curve, Qt::LeftButton, {}, {50 + 30, 60});
    QTest::qWait(5);
    const QImage pressed = picture.picture().toImage();
    QTest::mouseRelease(curve, Qt::LeftButton, {}, {50 + 90, 70});
    EXPECT_NE(picture.picture().toImage(), pressed);
    drag({50 + 20, 60}, {50 + 60, 80});
    EXPECT_NE(targets[0].section(' ', 1, 1), "15") << "not the whole area";
    drag({70, 60}, {71, 60}); // less than two pixels
    search([&](QDialog& dialog) { EXPECT_EQ(text(dialog, "lblX2"), "15"); });
}

} // namespace
} // namespace orva::ui
