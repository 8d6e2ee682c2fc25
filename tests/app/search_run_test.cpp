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
        area = state.project.room.area(1);
    }
    SearchRun newRun()
    {
        const auto aiming = GetAreaSpeakers(state.project.room, state.project.array, 1);
        return {state,
                state.project,
                1,
                *aiming,
                FitLineTarget::wholeArea(area),
                {{0, kBands - 1}, LevelField::Continuous, true}};
    }

    Workspace state;
    Segment area;
};

TEST_F(SearchRuns, BeginPauseContinueFinish)
{
    SearchRun run = newRun();
    run.chooseCandidates(true, true);
    const std::uint64_t count = *run.count();
    ASSERT_GT(count, 100U);
    EXPECT_EQ(run.progress().tested, 0U);
    EXPECT_FALSE(run.progress().secondsLeft);

    run.begin(Measure::SmoothArea, 100, false);
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
    EXPECT_EQ(run.results()[3].angles, state.project.array.GIAGetAllAngle());

    run.begin(Measure::SmoothArea, 100, false);
    run.work([] { return false; });
    run.ended();
    EXPECT_EQ(run.form().state(), SearchForm::State::Finished);
    EXPECT_EQ(run.progress().tested, count) << "nothing twice";
    EXPECT_EQ(run.progress().secondsLeft, 0);
    EXPECT_LE(run.results()[0].rms, run.results()[1].rms);
    EXPECT_NEAR(run.progress().bestRms, run.results()[0].rms, 1e-4);
    EXPECT_EQ(run.arrayOf(0).GIAGetAllAngle(), run.results()[0].angles);
}

TEST_F(SearchRuns, AQuickSearchIsListedToo)
{
    SearchRun run = newRun();
    run.chooseCandidates(true, true);
    run.begin(Measure::FitToLine, 50, true);
    int asked = 0;
    run.work([&] { return ++asked > 3; });
    run.ended();
    EXPECT_TRUE(run.results().empty()) << "stopped before anything was proved";
    run.begin(Measure::FitToLine, 50, true);
    run.work([] { return false; });
    run.ended();
    ASSERT_EQ(run.results().size(), 5U);
    EXPECT_EQ(run.results()[4].kind, SearchRun::Result::Kind::Quick);
    ASSERT_TRUE(run.quick());
    EXPECT_EQ(run.quick()->proved, run.quick()->rms <= run.results()[0].rms);
}

} // namespace
} // namespace orva
