#include "setup_form_fixture.h"

#include <functional>
#include <random>

#include <gtest/gtest.h>

namespace orva {
namespace {

const char* const kNewStandard = "S0S0S1T1S1T2S2T2S3T4T5T";
const char* const kNewCompact = "C0C1C2C3C3C5C6C";

struct EditCase {
    const char* what;
    std::int16_t system;
    bool autoCorrect;
    std::function<void(Form&)> edit;
    const char* shape;
    const char* counts; ///< mid/high, straight, trapezoidal, bass
    const char* flags;
};

TEST(SetupForm, EditsTravelThroughTheLists)
{
    const auto type = [](int position, int index) {
        return [=](Form& form) { form.chooseType(position, index); };
    };
    const auto midHigh = [](int count) {
        return [=](Form& form) { form.chooseNumSpk(count - 1); };
    };
    const auto bass = [](int count) { return [=](Form& form) { form.chooseNumBass(count); }; };
    const EditCase cases[] = {
        {"nothing", 0, true, [](Form& form) { form.UpdateSetupLists(-2); }, kNewStandard,
         "12 6 6 0", ""},
        {"a type on top, still allowed", 0, true, type(0, 1), "T0S0S1T1S1T2S2T2S3T4T5T", "12 5 7 0",
         ""},
        {"a small angle snaps to the first", 0, true, type(2, 1), "S0S0T3T1S1T2S2T2S3T4T5T",
         "12 5 7 0", ""},
        {"a large angle snaps to the last", 0, true, type(10, 0), "S0S0S1T1S1T2S2T2S3T3S3T",
         "12 7 5 0", ""},
        {"a type to bass", 0, true, type(0, 2), "F0S0S1T1S1T2S2T2S3T4T5T", "11 5 6 1", ""},
        {"counts of kinds follow the types", 0, true, [](Form& form) { form.chooseNumGer(3); },
         kNewStandard, "12 6 6 0", ""},
        {"two more", 0, true, midHigh(14), "S0S0S1T1S1T2S2T2S3T4T5T3T3S", "14 7 7 0", ""},
        {"fewer", 0, true, midHigh(2), "S0S", "2 2 0 0", ""},
        {"a single box", 0, true, midHigh(1), "S", "1 1 0 0", ""},
        {"bass enters at position 0", 0, true, bass(2), "F0F0S0S0S1T1S1T2S2T2S3T4T5T", "12 6 6 2",
         ""},
        {"bass leaves from position 0", 0, true,
         [](Form& form) {
             form.chooseNumBass(3);
             form.chooseNumBass(1);
         },
         "F0S0S0S1T1S1T2S2T2S3T4T5T", "12 6 6 1", ""},
        {"fewer mid/high, bass stays", 0, true,
         [](Form& form) {
             form.chooseType(11, 2);
             form.chooseNumSpk(9);
         },
         "S0S0S1T1S1T2S2T2S3T4F", "10 6 4 1", ""},
        {"32 boxes at most", 0, true,
         [](Form& form) {
             form.chooseNumSpk(23);
             form.chooseNumBass(20);
         },
         nullptr, "24 12 12 8", ""},
        {"32 boxes at most, mid/high", 0, true,
         [](Form& form) {
             form.chooseNumBass(20);
             form.chooseNumSpk(23);
         },
         nullptr, "12 6 6 20", ""},
        {"no mid/high left: one comes", 0, true,
         [](Form& form) {
             form.chooseNumSpk(0);
             form.chooseType(0, 2);
         },
         "F0S", "1 1 0 1", ""},
        {"bass above a trapezoidal box, at its first angle", 0, true,
         [](Form& form) {
             form.chooseType(0, 1);
             form.chooseNumBass(2);
         },
         "F0F3T0S0S1T1S1T2S2T2S3T4T5T", "12 5 7 2", ""},
        {"bass leaves from between: the joint there begins again", 0, true,
         [](Form& form) {
             form.chooseType(3, 2);
             form.chooseNumBass(0);
         },
         "S0S0S0S1T2S2T2S3T4T5T", "11 6 5 0", ""},
        {"bass leaves from the end", 0, true,
         [](Form& form) {
             form.chooseType(11, 2);
             form.chooseNumBass(0);
         },
         "S0S0S1T1S1T2S2T2S3T4T", "11 6 5 0", ""},
        {"the last joint follows its lower box", 0, true, type(11, 0), "S0S0S1T1S1T2S2T2S3T4T3S",
         "12 7 5 0", ""},
        {"the last joint's own angle", 0, true, [](Form& form) { form.chooseAngle(10, 3); },
         "S0S0S1T1S1T2S2T2S3T4T6T", "12 6 6 0", ""},
        {"trapezoidal counts follow the types too", 0, true,
         [](Form& form) { form.chooseNumSch(3); }, kNewStandard, "12 6 6 0", ""},
        {"choices that no list has", 0, true,
         [](Form& form) {
             form.chooseType(0, 3);
             form.chooseType(0, -1);
             form.chooseAngle(10, 4);
             form.chooseAngle(10, -1);
         },
         kNewStandard, "12 6 6 0", ""},
        {"compact: bass on top", 1, true, bass(1), "B0C0C1C2C3C3C5C6C", "8 8 0 1", ""},
        {"compact: one more", 1, true, midHigh(9), "C0C1C2C3C3C5C6C3C", "9 9 0 0", ""},
        {"compact: type to bass", 1, true, type(4, 1), "C0C1C2C0B0C5C6C", "7 7 0 1", ""},

        {"off: an angle stays, red", 0, false, type(2, 1), "S0S0T1!T1S1T2S2T2S3T4T5T", "12 6 6 0",
         "a"},
        {"off: and is plain again", 0, false,
         [](Form& form) {
             form.chooseType(2, 1);
             form.chooseType(2, 0);
         },
         kNewStandard, "12 6 6 0", ""},
        {"off: an allowed angle for the red one", 0, false,
         [](Form& form) {
             form.chooseType(2, 1);
             form.chooseAngle(2, 0);
         },
         "S0S0T3T1S1T2S2T2S3T4T5T", "12 6 6 0", ""},
        {"off: bass where mid/high is counted", 0, false, type(0, 2), "F0S0S1T1S1T2S2T2S3T4T5T",
         "12 6 6 0", "mb"},
        {"off: a count above mid/high", 0, false, midHigh(4), "S0S0S1T", "4 6 6 0", "st"},
        {"off: trapezoidal alone above mid/high", 0, false,
         [](Form& form) {
             form.chooseNumGer(2);
             form.chooseNumSpk(3);
         },
         "S0S0S1T", "4 2 6 0", "t"},
        {"off: straight alone above mid/high", 0, false,
         [](Form& form) {
             form.chooseNumSch(4);
             form.chooseNumSpk(4);
         },
         "S0S0S1T1S", "5 6 4 0", "s"},
        {"off: and within again", 0, false,
         [](Form& form) {
             form.chooseNumSpk(3);
             form.chooseNumGer(4);
             form.chooseNumSch(0);
         },
         "S0S0S1T", "4 4 0 0", ""},
        {"off: the last joint stays, red", 0, false, type(11, 0), "S0S0S1T1S1T2S2T2S3T4T5!S",
         "12 6 6 0", "a"},
        {"off: bass counted, none placed", 0, false, bass(1), nullptr, "12 6 6 1", "mb"},
        {"off: compact", 1, false, type(0, 1), "B0C1C2C3C3C5C6C", "8 8 0 0", "mb"},
    };
    for (const EditCase& test : cases) {
        SCOPED_TRACE(test.what);
        Form form = newForm(test.system, test.autoCorrect);
        EXPECT_EQ(shape(form), test.system == 0 ? kNewStandard : kNewCompact);
        test.edit(form);
        if (test.shape) {
            EXPECT_EQ(shape(form), test.shape);
        }
        EXPECT_EQ(form.cmbNumSpk.text() + " " + form.cmbNumGer.text() + " " +
                      form.cmbNumSch.text() + " " + form.cmbNumBass.text(),
                  test.counts);
        EXPECT_EQ(flags(form), test.flags);
        EXPECT_EQ(form.cmbNumSpk.invalid, form.SetupInvalid.midHigh);
        EXPECT_EQ(form.cmbNumBass.invalid, form.SetupInvalid.bass);
        EXPECT_LE(form.total(), 32);
    }
}

TEST(SetupForm, AnyRowOfCorrectedEditsIsValid)
{
    std::minstd_rand random(7);
    const auto any = [&](const ChoiceList& list) {
        return list.items.empty() ? 0 : static_cast<int>(random() % list.items.size());
    };
    for (int round = 0; round < 200; ++round) {
        Form form = newForm(round % 2 == 0 ? kStandardSystem : kCompactSystem, true);
        form.chooseNumSpk(any(form.cmbNumSpk));
        if (round % 4 > 1) { // as many as there may be: another kind pushes one out
            form.chooseNumSpk(static_cast<int>(form.cmbNumSpk.items.size()) - 1);
            form.chooseNumBass(static_cast<int>(form.cmbNumBass.items.size()) - 1);
        }
        for (int edit = 0; edit < 25; ++edit) {
            const int position = static_cast<int>(random()) % form.total();
            const auto at = static_cast<std::size_t>(position);
            switch (random() % 8) {
            case 0:
                form.chooseNumGer(any(form.cmbNumGer));
                break;
            case 1:
                form.chooseNumSch(any(form.cmbNumSch));
                break;
            case 2:
                form.chooseNumBass(any(form.cmbNumBass));
                break;
            case 3:
            case 4:
                if (position + 1 < form.total())
                    form.chooseAngle(position, any(form.cmbAngle[at]));
                break;
            default:
                form.chooseType(position, any(form.cmbType[at]));
            }
            LineArray array = newProject(form.rest().system).array;
            ASSERT_TRUE(form.UpdateLineArray(array)) << round << ' ' << edit;
            ASSERT_EQ(array.fault(), std::nullopt);
            ASSERT_EQ(array.boxCount(), form.total());
            const auto bounds = array.IAGetAngleBounds();
            for (std::size_t joint = 0; joint < bounds.size(); ++joint) {
                const std::int16_t angle = array.GIAGetAllAngle()[joint + 1];
                ASSERT_GE(angle, bounds[joint][0]) << round << ' ' << edit;
                ASSERT_LE(angle, bounds[joint][1]) << round << ' ' << edit;
            }
            ASSERT_FALSE(form.SetupInvalid.any());
            SetupForm::eachList(form, [&](const ChoiceList& list) {
                ASSERT_FALSE(list.invalid) << round << ' ' << edit;
            });
        }
    }
}

TEST(SetupForm, TheLastJointOfTheLongestArray)
{
    Form form = newForm(kStandardSystem, true);
    form.chooseNumSpk(23);
    form.chooseNumBass(8);
    ASSERT_EQ(form.total(), 32);
    form.chooseType(31, 1);
    form.chooseType(30, 1); // two trapezoidal boxes: 4.5° to 9°
    form.chooseAngle(30, 2);
    LineArray array = newProject(kStandardSystem).array;
    ASSERT_TRUE(form.UpdateLineArray(array));
    EXPECT_EQ(array.GIAGetAllAngle()[31], 5);
    EXPECT_EQ(array.GIAGetAllType()[31], 1);
    LineArray::Positions angles = array.GIAGetAllAngle();
    angles[31] = 2;
    array.GBSetAllAngle(angles);
    EXPECT_EQ(flags(formOf(array, true)), "a");
}

TEST(SetupForm, SaysWhenTheNumbersAreNotThoseOfTheColumn)
{
    for (const std::int16_t system : {kStandardSystem, kCompactSystem})
        for (const bool autoCorrect : {true, false})
            EXPECT_FALSE(newForm(system, autoCorrect).countsDiffer()) << system;
    for (const bool autoCorrect : {true, false}) {
        Form form = newForm(kStandardSystem, autoCorrect);
        form.chooseType(0, 1); // one straight box less, one trapezoidal more
        EXPECT_EQ(form.countsDiffer(), !autoCorrect);
    }
}

TEST(SetupForm, FirstAngleWithinATurn)
{
    const std::pair<double, double> cases[] = {{-3.26, -3.3}, {370, 10}, {-725.04, -5}, {0, 0}};
    for (const auto& [typed, kept] : cases)
        EXPECT_DOUBLE_EQ(SetupForm::validAngle(typed), kept) << typed;
}

TEST(SetupForm, OfAnInvalidSetupTheRestReachesTheArray)
{
    LineArray array = newProject(kStandardSystem).array;
    Form form = formOf(array, false);
    form.chooseType(2, 1); // a trapezoidal box: the joint below is no longer allowed
    ASSERT_TRUE(form.SetupInvalid.any());
    form.chooseAngle(8, 1);
    form.stacked = true;
    form.box1Angle = 4.5;
    const LineArray before = array;
    form.updateIndependent(array);
    EXPECT_FALSE(array.GBGetMounting());
    EXPECT_EQ(array.GIAGetAllAngle()[0], -45);
    EXPECT_NE(array.GIAGetAllAngle()[9], before.GIAGetAllAngle()[9]) << "a joint of its own";
    EXPECT_EQ(array.GIAGetAllAngle()[2], before.GIAGetAllAngle()[2]);
    EXPECT_EQ(array.GIAGetAllAngle()[3], before.GIAGetAllAngle()[3]);
    EXPECT_EQ(array.GIAGetAllType(), before.GIAGetAllType());
}

} // namespace
} // namespace orva
