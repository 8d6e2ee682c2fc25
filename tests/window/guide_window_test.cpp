#include "engine/parallel.h"
#include "model/project_file.h"
#include "optimize/hang_map.h"
#include "window_fixture.h"

#include <QAction>
#include <QTableWidget>

namespace orva::ui {
namespace {

class Guides : public Window {
protected:
    Hearing hearing() { return window->editor().hearing(); }
    Evenness evenness() { return *evennessOf(hearing(), window->editor().array()); }
    void waitForSteps() { QTest::qWait(60); }
};

TEST_F(Guides, AStepDoesWhatItPromised)
{
    for (const char* mode : {"PinAngle_opt(0)", "PinAngle_opt(1)"}) {
        click(mode);
        waitForSteps();
        for (const int joint : {2, 4, 9})
            for (const bool up : {true, false}) {
                const auto steps = jointSteps(hearing(), window->editor().array(), coreCount());
                const auto& promised = up ? steps[joint].up : steps[joint].down;
                auto* button = control<QAbstractButton>(
                    qPrintable(elementName(up ? "cmdUp" : "cmdDown", joint)));
                ASSERT_EQ(button->isEnabled(), promised.has_value());
                if (!promised)
                    continue;
                const QString tip = button->toolTip();
                button->click();
                EXPECT_EQ(evenness(), *promised) << joint << up;
                EXPECT_TRUE(tip.contains(QString::number(promised->rms, 'f', 2)))
                    << tip.toStdString();
                waitForSteps();
            }
    }
    control<QAbstractButton>("Lock_chk")->click();
    EXPECT_FALSE(control("cmdUp(2)")->isEnabled());
    control<QAbstractButton>("Lock_chk")->click();
    waitForSteps();
    EXPECT_TRUE(control("cmdDown(4)")->isEnabled());
    choose("cmbNumSpk", "1");
    EXPECT_FALSE(control("cmdUp(0)")->isVisible());
}

TEST_F(Guides, AClickHangsTheArrayWhereItSaid)
{
    auto& view = *control<DrawingWidget>("Main_pbx");
    const QImage before = view.picture().toImage();
    const LineArray array = window->editor().array();
    control<QAbstractButton>("cmdHang")->click();
    const auto* guide = view.findChild<HangGuide*>();
    ASSERT_TRUE(comes([&] { return guide->finished() && guide->map()->grid.CellW == 0.25F; }));
    EXPECT_NE(view.picture().toImage(), before);
    const HangMap* map = guide->map();
    const std::size_t cell = *map->cellAt({6, 6});
    const QPoint at = pixel(view, map->placeOf(cell));
    QTest::mouseClick(&view, Qt::LeftButton, {}, at);
    EXPECT_NE(window->editor().array(), array);
    EXPECT_NEAR(evenness().rms, map->rms.levels[cell], 1e-5);
    EXPECT_NEAR(evenness().spread, map->spread[cell], 1e-5);
    const LineArray moved = window->editor().array();
    QTest::mouseClick(&view, Qt::LeftButton, {}, pixel(view, {6, 0.3}));
    EXPECT_EQ(window->editor().array(), moved) << "too low to hang there";
    window->findChild<QAction*>("mnuUndo")->trigger();
    EXPECT_EQ(window->editor().array(), array);
    ASSERT_TRUE(comes([&] { return guide->finished(); }));
    const auto best = bestPlace(hearing(), window->editor().document().state().project, *map);
    ASSERT_TRUE(best);
    QTest::mouseClick(&view, Qt::LeftButton, {}, pixel(view, best->place) + QPoint(4, -4));
    EXPECT_EQ(evenness(), best->evenness) << "near the best place: there";
    window->findChild<QAction*>("mnuUndo")->trigger();
    control<QAbstractButton>("cmdHang")->click();
    QTest::qWait(1);
    EXPECT_EQ(view.picture().toImage(), before);
}

TEST_F(Guides, VariantsAreChosenUndoneAndLocked)
{
    const Editor& editor = window->editor();
    const LineArray first = editor.array();
    EXPECT_FALSE(control("cmdVariant(1)")->isEnabled());
    EXPECT_FALSE(control("cmdKeep(0)")->isVisible());
    auto& curve = *control<DrawingWidget>("AreaSpl_pbx");
    const QImage alone = curve.picture().toImage();
    click("cmdKeep(1)");
    choose("cmbNumSpk", "8");
    const LineArray edited = editor.array();
    control<QTabWidget>("Curve_tab")->setCurrentIndex(4);
    auto* table = control<QTableWidget>("tblVariants");
    EXPECT_EQ(table->rowCount(), 2);
    const QString weight = table->item(1, table->columnCount() - 1)->text();
    EXPECT_NE(table->item(0, table->columnCount() - 1)->text(), weight);
    control<QTabWidget>("Curve_tab")->setCurrentIndex(0);
    QTest::qWait(1);
    EXPECT_NE(curve.picture().toImage(), alone);
    click("cmdVariant(1)");
    EXPECT_EQ(editor.array(), first);
    EXPECT_TRUE(control<QAbstractButton>("cmdVariant(1)")->isChecked());
    const Project project = editor.document().state().project;
    const auto loaded = readProject(writeProject(project), "p.lad");
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->project, project);
    control<QAbstractButton>("Lock_chk")->click();
    for (const char* button : {"cmdVariant(0)", "cmdKeep(0)", "cmdKeep(2)"})
        EXPECT_FALSE(control(button)->isEnabled()) << button;
    control<QAbstractButton>("Lock_chk")->click();
    auto* undo = window->findChild<QAction*>("mnuUndo");
    undo->trigger();
    EXPECT_EQ(editor.array(), edited);
    EXPECT_TRUE(control<QAbstractButton>("cmdVariant(0)")->isChecked());
    undo->trigger();
    undo->trigger();
    EXPECT_FALSE(control("cmdVariant(1)")->isEnabled());
    EXPECT_FALSE(window->isWindowModified());
    QTest::qWait(1);
    EXPECT_EQ(curve.picture().toImage(), alone);
}

TEST_F(Guides, AVariantWithoutAnArrayHasNoFiguresAndIsNotSaved)
{
    Editor& editor = window->editor();
    session.state().settings.AutoCorrect = false;
    editor.editSetup({Text::StepBoxType}, [](SetupForm& form) { form.chooseNumSpk(3, false); });
    ASSERT_FALSE(editor.setupValid());
    editor.keepAs(2);
    editor.undo(); // what is kept with it
    editor.undo();
    editor.keepAs(1);
    editor.editSetup({Text::StepBoxType}, [](SetupForm& form) { form.chooseNumSpk(3, false); });
    editor.chooseVariant(1);
    ASSERT_TRUE(editor.setupValid());
    EXPECT_FALSE(editor.keptPrediction(0));
    editor.compareWith(ViewState::Compared{0});
    EXPECT_FALSE(editor.comparedPrediction());
    answer(QMessageBox::Ok);
    window->findChild<QAction*>("mnuSave")->trigger();
    EXPECT_EQ(asked.left(20), "Variant A is invalid");
}

TEST_F(Guides, PagesThatWereHiddenShowWhatWasChosenMeanwhile)
{
    auto& tabs = *control<QTabWidget>("Curve_tab");
    for (const auto& [tab, name] : {std::pair(3, "tblRows"), {4, "tblVariants"}}) {
        auto* table = control<QTableWidget>(name);
        const auto texts = [&] {
            QStringList cells;
            for (int cell = 0; cell < table->columnCount(); ++cell)
                cells += table->item(0, cell)->text();
            return cells;
        };
        tabs.setCurrentIndex(tab);
        const QStringList before = texts();
        tabs.setCurrentIndex(0);
        control<QAbstractButton>("chkAWeight")->click();
        tabs.setCurrentIndex(tab);
        EXPECT_NE(texts(), before) << name;
    }
}

TEST_F(Guides, WhatNoLongerHoldsEnds)
{
    Editor& editor = window->editor();
    const auto end = [&](const std::function<void()>& by) {
        editor.setHanging(true);
        editor.compareWith(ViewState::Compared{{}, array(), room(), "other.lad"});
        by();
        return std::pair(!editor.view().hanging, !editor.view().compared);
    };
    EXPECT_EQ(end([&] { editor.setLocked(true); }), std::pair(true, false));
    editor.setLocked(false);
    EXPECT_EQ(end([&] { choose("cmbNumSpk", "6"); }), std::pair(false, false));
    EXPECT_EQ(end([&] {
                  editor.editRoom({Text::StepRoomSize}, [](Room& room) {
                      return room.GBSetRoomDims(FloatPair{45, 12});
                  });
              }),
              std::pair(false, true));
    editor.setHanging(false);
    EXPECT_EQ(end([&] { editor.SetNewProject(); }), std::pair(true, true));
}

TEST_F(Guides, TheDifferenceToAVariantIsShown)
{
    const Editor& editor = window->editor();
    auto& view = *control<DrawingWidget>("Main_pbx");
    auto& curve = *control<DrawingWidget>("AreaSpl_pbx");
    click("cmdKeep(1)");
    choose("cmbNumSpk", "6");
    QTest::qWait(1);
    const QImage before = view.picture().toImage();
    const QImage levels = curve.picture().toImage();
    choose("cmbCompare", "less B");
    EXPECT_TRUE(comes([&] { return view.picture().toImage() != before; }, 20000));
    EXPECT_NE(curve.picture().toImage(), levels);
    moveTo(view, pixel(view, {12, 3}));
    const Heard heard = *editor.heardAt(*editor.view().probe);
    const float kept =
        editor.keptPrediction(1)->levelAt(*editor.view().probe, editor.view().levels.choice());
    EXPECT_TRUE(control<QLabel>("lblStatusProbe")
                    ->accessibleName()
                    .contains(QString::number(heard.levelDb - kept, 'f', 1)) ||
                control<QLabel>("lblStatusProbe")
                    ->text()
                    .contains(QString::number(heard.levelDb - kept, 'f', 1)));
    click("cmdVariant(1)");
    QTest::qWait(1);
    EXPECT_FALSE(editor.comparedPrediction()) << "B is current";
    EXPECT_EQ(control<QComboBox>("cmbCompare")->currentIndex(), 0);
    window->findChild<QAction*>("mnuUndo")->trigger();
    choose("cmbCompare", "no comparison");
    QTest::qWait(1);
    EXPECT_EQ(view.picture().toImage(), before);
    EXPECT_EQ(curve.picture().toImage(), levels);
}

TEST_F(Guides, TheBestPlaceIsInsideAndNoneIsBetter)
{
    const Project project = window->editor().document().state().project;
    const auto map = hangMap(hearing(), project, 1, coreCount(), {});
    ASSERT_TRUE(map);
    const auto best = bestPlace(hearing(), project, *map);
    ASSERT_TRUE(best);
    LineArray hung = project.array;
    for (std::size_t cell = 0; cell < map->rms.levels.size(); ++cell) {
        const Point place = map->placeOf(cell);
        hung.GBSetCradleCoord({static_cast<float>(place.x), static_cast<float>(place.y)});
        EXPECT_EQ(std::isfinite(map->rms.levels[cell]),
                  fitsIn(project.room, extentOf(project.room, hung)));
        if (std::isfinite(map->rms.levels[cell])) {
            EXPECT_LE(best->evenness.rms, map->rms.levels[cell] + 1e-6);
        }
    }
}

} // namespace
} // namespace orva::ui
