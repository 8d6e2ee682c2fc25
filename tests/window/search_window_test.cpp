#include "window_fixture.h"

#include <QDialog>

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
    static void waitFor(const std::function<bool()>& what)
    {
        EXPECT_TRUE(QTest::qWaitFor(what, 60000));
    }
};

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
    EXPECT_NE(targets[0].section(' ', 1, 1), "15") << "not the whole area";
    drag({70, 60}, {71, 60}); // less than two pixels
    search([&](QDialog& dialog) { EXPECT_EQ(text(dialog, "lblX2"), "15"); });
}

} // namespace
} // namespace orva::ui
