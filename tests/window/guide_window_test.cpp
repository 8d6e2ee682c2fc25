#include "engine/parallel.h"
#include "optimize/hang_map.h"
#include "window_fixture.h"

#include <QAction>

namespace orva::ui {
namespace {

class Guides : public Window {
protected:
    Hearing hearing()
    {
        return {*session.state().levelKernel(), session.state().speakerData.BandLevel,
                areaReceivers(window->editor().room()), window->editor().view().levels.choice()};
    }
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
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return guide->finished() && guide->map()->grid.CellW == 0.25F; }, 60000));
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
    control<QAbstractButton>("cmdHang")->click();
    QTest::qWait(1);
    EXPECT_EQ(view.picture().toImage(), before);
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
