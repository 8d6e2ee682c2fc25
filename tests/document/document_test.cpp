#include "document/document.h"
#include "document/section_handle.h"
#include "document/setup_edit.h"
#include "document/state_bytes.h"
#include "document/variants_edit.h"

#include <random>

#include <gtest/gtest.h>
#include <malloc.h>

namespace orva {
namespace {

constexpr StepName kSplay{Text::StepSplay, 5};

/// Some edit of a project, as a user makes it.
bool editSomething(DocumentState& state, std::mt19937& random)
{
    SetupForm& setup = state.setup;
    const bool correct = random() % 2 == 0;
    const auto choice = [&](const ChoiceList& list) {
        return static_cast<int>(random() % std::max<std::size_t>(1, list.items.size()));
    };
    const int position = static_cast<int>(random() % static_cast<unsigned>(setup.total()));
    const auto at = static_cast<std::size_t>(position);
    switch (random() % 12) {
    case 0:
        setup.chooseType(position, choice(setup.cmbType[at]), correct);
        break;
    case 1:
        if (at < setup.cmbAngle.size())
            setup.chooseAngle(position, choice(setup.cmbAngle[at]), correct);
        break;
    case 2:
        setup.chooseNumSpk(choice(setup.cmbNumSpk), correct);
        break;
    case 3:
        setup.chooseNumBass(choice(setup.cmbNumBass), correct);
        break;
    case 4:
        setup.stacked = !setup.stacked;
        break;
    case 5:
        setup.box1Angle = static_cast<double>(random() % 90) / 10;
        break;
    case 6:
        state.project.array.GBSetCradleCoord({static_cast<float>(random() % 20), 7});
        break;
    case 7:
        state.project.subArray.SubPos[random() % 10] = static_cast<float>(random() % 30);
        return true;
    case 8:
        return keepAs(state, random() % Variants::kMost);
    case 9:
        return makeCurrent(state, random() % Variants::kMost);
    case 10:
        return nameVariant(state, random() % Variants::kMost, "Größe " + std::to_string(random()));
    default:
        return state.project.room.GBSetProjectName(std::to_string(random() % 100));
    }
    return applySetup(state, correct);
}

TEST(Document, UndoneEditsGiveEveryStateBackAndRedoneOnesToo)
{
    for (unsigned seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        Document document;
        document.open(newDocument(seed % 2 == 0 ? kStandardSystem : kCompactSystem, true),
                      {"a.lad"});
        std::vector<DocumentState> states = {document.state()};
        for (int step = 0; step < 200; ++step) {
            const Changes changes = document.edit(
                kSplay, [&](DocumentState& state) { return editSomething(state, random); });
            if (!changes.any())
                continue;
            states.push_back(document.state());
            const Result<DocumentState> read = readState(writeState(document.state()), "r");
            ASSERT_TRUE(read) << read.error().text();
            ASSERT_EQ(*read, document.state());
        }
        ASSERT_GT(states.size(), 10U);
        for (std::size_t i = states.size() - 1; i > 0; --i) {
            ASSERT_TRUE(document.modified() || states[i] == states[0]);
            ASSERT_TRUE(document.undoName() == kSplay);
            document.undo();
            ASSERT_EQ(document.state(), states[i - 1]) << i;
        }
        EXPECT_FALSE(document.modified()) << "undone changes are none";
        EXPECT_FALSE(document.undoName());
        EXPECT_FALSE(document.undo().any());
        for (std::size_t i = 1; i < states.size(); ++i) {
            document.redo();
            ASSERT_EQ(document.state(), states[i]) << i;
        }
        EXPECT_FALSE(document.redoName());
    }
}

TEST(Document, VariantsKeepWholeSetupsAndChangePlaces)
{
    Document document;
    document.open(newDocument(kStandardSystem, true), {});
    const DocumentState first = document.state();
    const auto edit = [&](const std::function<bool(DocumentState&)>& change) {
        return document.edit(kSplay, change);
    };
    EXPECT_FALSE(edit([](DocumentState& state) { return makeCurrent(state, 1); }).any());
    EXPECT_FALSE(edit([](DocumentState& state) { return keepAs(state, 0); }).any());
    const Changes kept = edit([](DocumentState& state) { return keepAs(state, 1); });
    EXPECT_TRUE(kept.variants && !kept.array && !kept.setup);
    DocumentState opened = documentOf(document.state().project);
    const DocumentState asOpened = opened;
    EXPECT_TRUE(makeCurrent(opened, 1) && makeCurrent(opened, 0));
    EXPECT_EQ(opened.setup, asOpened.setup) << "the lists of each come from its array";
    edit([](DocumentState& state) { // a setup that is not valid
        state.setup.chooseType(0, 1, false);
        state.setup.chooseNumSpk(3, false);
        state.project.subArray.SubPos[0] = 5;
        return applySetup(state, false);
    });
    const DocumentState edited = document.state();
    EXPECT_NE(edited.setup, first.setup);
    const Changes changed = edit([](DocumentState& state) { return makeCurrent(state, 1); });
    EXPECT_TRUE(changed.variants && changed.setup && changed.subArray);
    EXPECT_EQ(document.state().project.array, first.project.array);
    EXPECT_EQ(document.state().setup, first.setup);
    EXPECT_EQ(document.state().project.variants.kept[0]->array, edited.project.array);
    const auto read = readState(writeState(document.state()), "state");
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, document.state()) << "lists that are not valid included";
    for (const int beyond : {-2, static_cast<int>(first.setup.cmbType[0].items.size())}) {
        DocumentState damaged = first;
        damaged.setup.cmbType[0].selected = beyond;
        EXPECT_FALSE(readState(writeState(damaged), "state")) << beyond;
    }
    edit([](DocumentState& state) { return makeCurrent(state, 0); });
    EXPECT_EQ(document.state().setup, edited.setup);
    EXPECT_EQ(document.state().project.subArray, edited.project.subArray);
    edit([](DocumentState& state) {
        return nameVariant(state, 1, "N\xC3\xA4her\n" + std::string(100, 'x'));
    });
    const std::string& name = document.state().project.variants.names[1];
    EXPECT_EQ(name.size(), Variants::kLongestName);
    EXPECT_EQ(variantTitle(document.state().project.variants, 1).substr(0, 9), "B: N\xC3\xA4her");
    for (int step = 0; step < 5; ++step)
        document.undo();
    EXPECT_EQ(document.state(), first);
}

TEST(Document, AHandleTypesTheEndOfAnAreaAsItIsShown)
{
    DocumentState state = newDocument(kStandardSystem, true);
    ASSERT_TRUE(state.project.room.GBSetAudienceArea1(
        SegmentFigures{5, 1.7F, 20.12345F, 2.98765F, 4.9F, 15.2F}));
    const DocumentState start = state;
    EXPECT_TRUE(moveHandle(state, start, {HandleKind::AreaStart, 1}, {{1, 0}}, true));
    const SegmentFigures moved = state.project.room.GFAGetAudienceArea1();
    EXPECT_EQ(std::vector(moved.begin(), moved.begin() + 4),
              (std::vector<float>{6, 1.7F, 20.123F, 2.988F}));
}

TEST(Document, SaysWhatChanged)
{
    const auto text = [](const Changes& changes) {
        return std::string(changes.room ? "r" : "") + (changes.texts ? "t" : "") +
               (changes.array ? "a" : "") + (changes.subArray ? "u" : "") +
               (changes.setup ? "s" : "");
    };
    const std::tuple<const char*, std::function<bool(DocumentState&)>, const char*> cases[] = {
        {"nothing", [](DocumentState&) { return true; }, ""},
        {"refused", [](DocumentState& s) { return !s.project.room.GBSetNumAreas(1); }, ""},
        {"room", [](DocumentState& s) { return s.project.room.GBSetNumAreas(2); }, "r"},
        {"text", [](DocumentState& s) { return s.project.room.GBSetComment("x"); }, "t"},
        {"sub array", [](DocumentState& s) { return (s.project.subArray.SubPos[1] = 1) == 1; },
         "u"},
        {"cradle",
         [](DocumentState& s) {
             return s.project.array.GBSetCradleCoord({2, 2});
         },
         "a"},
        {"splay",
         [](DocumentState& s) {
             s.setup.chooseAngle(10, 0, true);
             return applySetup(s, true);
         },
         "as"}};
    for (const auto& [what, change, wanted] : cases) {
        Document document;
        document.open(newDocument(kStandardSystem, true), {""});
        EXPECT_EQ(text(document.edit(kSplay, change)), wanted) << what;
        EXPECT_EQ(document.modified(), *wanted != 0) << what;
    }
}

TEST(Document, AGestureIsOneStep)
{
    Document document;
    document.open(newDocument(kStandardSystem, true), {"a.lad"});
    const auto move = [&](float x, Gesture gesture) {
        document.edit(
            {Text::StepCradle},
            [&](DocumentState& state) {
                return state.project.array.GBSetCradleCoord({x, 5});
            },
            gesture);
    };
    const DocumentState first = document.state();
    const Gesture drag = document.newGesture();
    for (const float x : {2.F, 3.F, 4.F})
        move(x, drag);
    move(5, document.newGesture());
    move(6, {});
    move(7, {});
    EXPECT_FALSE(document.cancel(drag).any()) << "not the last one";
    for (const float x : {6.F, 5.F, 4.F}) {
        document.undo();
        EXPECT_EQ(document.gLineArray().GFAGetCradleCoord()[0], x);
    }
    EXPECT_TRUE(document.cancel(drag).any());
    EXPECT_EQ(document.state(), first);
    EXPECT_FALSE(document.redoName()) << "what was cancelled is gone";
    move(8, {});
    document.markSaved(document.state(), {"b.lad"});
    document.undo();
    EXPECT_TRUE(document.modified());
    document.redo();
    EXPECT_FALSE(document.modified());
    EXPECT_EQ(document.path(), "b.lad");
}

TEST(Document, ManyStepsStaySmall)
{
    std::mt19937 random(3);
    Document document;
    document.open(newDocument(kStandardSystem, true), {""});
    const auto inUse = [] { return mallinfo2().uordblks; };
    const std::size_t before = inUse();
    for (int step = 0; step < 10000; ++step)
        document.edit(kSplay, [&](DocumentState& state) {
            state.setup.chooseAngle(static_cast<int>(random() % 11), static_cast<int>(random() % 5),
                                    true);
            return applySetup(state, true);
        });
    EXPECT_LT(inUse() - before, 20U << 20U);
}

} // namespace
} // namespace orva
