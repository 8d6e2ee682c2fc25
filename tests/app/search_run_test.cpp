#include "app/forms/search_run.h"

#include <gtest/gtest.h>

namespace orva {
namespace {

class SearchRuns : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(LoadSystemData(state, ORVA_SOURCE_DIR "/data"));
        makeCurrent(state, newProject(kStandardSystem));
    }
    SearchRun newRun()
    {
        choice.neighbours = true;
        choice.levels = {{0, kBands - 1}, LevelField::Continuous, true};
        return {state, state.project, choice};
    }

    Workspace state;
    SearchChoice choice;
};

TEST_F(SearchRuns, BeginPauseContinueFinish)
{
    choice.points = 100;
    SearchRun run = newRun();
    const std::uint64_t count = *run.count();
    ASSERT_GT(count, 100U);
    EXPECT_EQ(run.progress().tested, 0U);
    EXPECT_FALSE(run.progress().secondsLeft);

    run.begin({});
    EXPECT_EQ(run.form().state(), SearchForm::State::Running);
    int asked = 0;
    run.work([&] { return ++asked > 60; });
    run.ended();
    EXPECT_EQ(run.form().state(), SearchForm::State::Paused);
    const SearchRun::Progress paused = run.progress();
    EXPECT_GT(paused.tested, 0U);
    EXPECT_LT(paused.tested, count);
    ASSERT_TRUE(paused.secondsLeft);
    EXPECT_GT(*paused.secondsLeft, 0);
    EXPECT_EQ(*run.progress().secondsLeft, *paused.secondsLeft) << "a pause costs no time";
    ASSERT_EQ(run.results().size(), 4U);
    EXPECT_EQ(run.results()[3].kind, SearchRun::Result::Kind::Original);
    EXPECT_EQ(run.results()[3].configuration.angles, state.project.array.GIAGetAllAngle());

    run.begin({});
    run.work([] { return false; });
    run.ended();
    EXPECT_EQ(run.form().state(), SearchForm::State::Finished);
    EXPECT_EQ(run.progress().tested, count) << "nothing twice";
    EXPECT_EQ(run.progress().secondsLeft, 0);
    EXPECT_LE(run.results()[0].rms, run.results()[1].rms);
    EXPECT_NEAR(run.progress().bestRms, run.results()[0].rms, 1e-4);
    EXPECT_EQ(run.arrayOf(0).GIAGetAllAngle(), run.results()[0].configuration.angles);
}

TEST_F(SearchRuns, AQuickSearchIsListedToo)
{
    choice.measure = Measure::FitToLine;
    choice.points = 50;
    SearchRun run = newRun();
    run.begin({.first = true});
    int asked = 0;
    run.work([&] { return ++asked > 10; });
    run.ended();
    EXPECT_FALSE(run.quick()) << "has not ended";
    ASSERT_FALSE(run.results().empty());
    const double soFar = run.results()[0].rms;
    run.begin({.first = true});
    run.work([] { return false; });
    run.ended();
    ASSERT_EQ(run.results().size(), 5U);
    EXPECT_EQ(run.results()[4].kind, SearchRun::Result::Kind::Quick);
    ASSERT_TRUE(run.quick());
    EXPECT_LE(run.results()[0].rms, soFar);
    EXPECT_EQ(run.quick()->proved, run.quick()->rms <= run.results()[0].rms);
}

TEST_F(SearchRuns, AQuickSearchAloneVariesPinHeightAndJointsOfSeveralAreas)
{
    state.project.room.GBSetNumAreas(2);
    choice.areas = {{1, 2}, {2, 0.5}};
    choice.measure = Measure::Even;
    choice.perDoublingDb = -3;
    choice.freedom = {true, *heightsBetween(5, 7, 0.5)};
    SearchRun run = newRun();
    choice.allJoints = true;
    run.choose(choice);
    run.begin({.only = true, .budget = 500});
    run.work([] { return false; });
    run.ended();
    EXPECT_EQ(run.form().state(), SearchForm::State::Finished);
    EXPECT_EQ(run.progress().tested, 500U);
    ASSERT_TRUE(run.better());
    EXPECT_FALSE(run.better()) << "told once";
    ASSERT_EQ(run.results().size(), 4U);
    const Configuration& best = run.results()[0].configuration;
    const LineArray found = run.arrayOf(0);
    EXPECT_TRUE(found.GBGetAngleOrPin());
    EXPECT_EQ(found.GFAGetCradleCoord()[1], best.heightM);
    EXPECT_EQ(found.GIAGetAllAngle(), best.angles);
    EXPECT_NE(found, state.project.array);
    EXPECT_EQ(run.arrayOf(3), state.project.array) << "as it was";
    EXPECT_FALSE(run.quick()->proved);
}

TEST_F(SearchRuns, ALargeSetIsListedFromBothSearchesAtAPause)
{
    choice.allJoints = true;
    SearchRun run = newRun();
    choice.neighbours = false;
    run.choose(choice);
    ASSERT_GT(*run.count(), QuickSearch::kWorthALook);
    run.begin({});
    int asked = 0;
    run.work([&] { return ++asked > 20'000 && run.progress().tested > 0; });
    run.ended();
    EXPECT_EQ(run.form().state(), SearchForm::State::Paused);
    ASSERT_EQ(run.results().size(), 4U) << "and no line for a quick search that was not asked for";
    EXPECT_LE(run.results()[0].rms, run.results()[1].rms);
    EXPECT_GT(run.progress().perSecond, 0);
}

} // namespace
} // namespace orva
