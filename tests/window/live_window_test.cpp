#include "window_fixture.h"

namespace orva::ui {
namespace {

class Live : public Window {
protected:
    const ViewState::Map& map() const { return window->editor().view().map; }
    /// The picture is made, and the map has its chosen cells.
    std::vector<float> levels()
    {
        control<DrawingWidget>("Main_pbx")->picture();
        EXPECT_TRUE(comes([this] { return !map().coarse; }));
        control<DrawingWidget>("Main_pbx")->picture();
        EXPECT_TRUE(map().shown);
        return map().shown ? map().shown->levels : std::vector<float>();
    }
    void press(const char* name) { control<QAbstractButton>(name)->click(); }
    void nextAngle(const char* name)
    {
        auto* list = control<QComboBox>(name);
        list->setCurrentIndex((list->currentIndex() + 1) % list->count());
        emit list->activated(list->currentIndex());
    }
    std::vector<float> calculated()
    {
        press("chkLive");
        EXPECT_FALSE(map().shown) << "what follows belongs to the other way";
        click("CalcBand_cmd");
        std::vector<float> found = map().shown->levels;
        press("chkLive");
        return found;
    }
};

TEST_F(Live, TheMapFollowsWithoutLockAndEqualsCalculate)
{
    EXPECT_FALSE(control<QAbstractButton>("chkLive")->isChecked());
    press("chkLive");
    EXPECT_EQ(store.value("Options", "LiveMap"), "True");
    const std::vector<float> first = levels();
    EXPECT_FALSE(window->editor().view().locked);
    EXPECT_FALSE(control("CalcBand_cmd")->isEnabled());
    EXPECT_EQ(first, calculated());

    nextAngle("cmbAngle(8)");
    const std::vector<float> second = levels();
    EXPECT_NE(second, first);
    EXPECT_EQ(second, calculated());
    const QString curve = said("AreaSpl_pbx");
    press("chkAWeight");
    EXPECT_NE(said("AreaSpl_pbx"), curve);
    const std::vector<float> unweighted = levels();
    EXPECT_NE(unweighted, second);
    EXPECT_EQ(unweighted, calculated());
    press("MapType_opt(2)");
    EXPECT_EQ(levels(), calculated());

    window->findChild<QAction*>("mnuUndo")->trigger();
    EXPECT_EQ(levels(), calculated());
    window->findChild<QAction*>("mnuRedo")->trigger();
    levels();
    EXPECT_EQ(control<QLabel>("lblStatusText")->text(), "Redone: Splay angle 9")
        << "the map does not talk it away";
    emit window->findChild<ProjectCommands*>()->statusChanged(Text::FileWritten, "map.csv");
    EXPECT_EQ(control<QLabel>("lblStatusText")->text(),
              session.text(Text::FileWritten).arg("map.csv"));
    window->findChild<QAction*>("mnuUndo")->trigger();
    press("MapType_opt(0)");
    press("chkAWeight");
    EXPECT_EQ(levels(), first);
    press("Lock_chk");
    EXPECT_TRUE(window->editor().view().locked);
    EXPECT_EQ(levels(), first);
    press("Lock_chk");
    EXPECT_FALSE(window->editor().view().locked);
    choose("cmbNumSpk", "14");
    EXPECT_EQ(levels(), calculated());
}

TEST_F(Live, WhatTakesLongerIsCoarseFirstAndTheLastStateWins)
{
    press("chkLive");
    session.state().settings.SPLResolution = 0.02F;
    enter("RoomWidth_txt", "60");
    enter("RoomHeight_txt", "20");
    control<DrawingWidget>("Main_pbx")->picture();
    ASSERT_TRUE(map().coarse);
    EXPECT_EQ(control<QLabel>("lblStatusText")->text(), "Coarse map; the finer one follows");
    EXPECT_LT(map().shown->levels.size(), window->editor().room().size().width * 500);
    for (int edit = 0; edit < 3; ++edit)
        nextAngle("cmbAngle(3)");
    control<DrawingWidget>("Main_pbx")->picture();
    const std::vector<float> last = levels();
    EXPECT_EQ(control<QLabel>("lblStatusText")->text(), "");
    EXPECT_EQ(last, calculated());
    enter("FOHX_txt", "21");
    EXPECT_EQ(levels(), last);
    nextAngle("cmbAngle(3)");
    control<DrawingWidget>("Main_pbx")->picture();
    window.reset(); // while the finer one is on its way
}

} // namespace
} // namespace orva::ui
