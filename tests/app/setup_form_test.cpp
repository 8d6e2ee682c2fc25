#include "app/setup_form.h"
#include "model/project.h"

#include <functional>

#include <gtest/gtest.h>

namespace orva {
namespace {

SetupForm formOf(const LineArray& array, bool autoCorrect)
{
    SetupForm form;
    form.AutoCorrect = autoCorrect;
    form.RefreshFromClass(array);
    return form;
}

SetupForm newForm(std::int16_t system, bool autoCorrect)
{
    return formOf(newProject(system).array, autoCorrect);
}

/// The boxes in use as letters (S, T, F or C, B), a digit after each for the joint below: the angle
/// in steps of 1.5 degrees.
std::string shape(const SetupForm& form)
{
    std::string text;
    for (int i = 0; i < form.total(); ++i) {
        const auto at = static_cast<std::size_t>(i);
        const std::string& model = form.cmbType[at].text();
        text += model == "VM 415 C" ? 'B' : model.back();
        if (i + 1 == form.total())
            continue;
        const auto& all = LineArray::GSALookupAngles();
        const auto found = std::find(all.begin(), all.end(), form.cmbAngle[at].text());
        text += found == all.end() ? "?" : std::to_string(found - all.begin());
        text += form.cmbAngle[at].invalid ? "!" : "";
    }
    return text;
}

std::string flags(const SetupForm& form)
{
    const SetupForm::Invalid& invalid = form.SetupInvalid;
    std::string text;
    text += invalid.midHigh ? "m" : "";
    text += invalid.straight ? "s" : "";
    text += invalid.trapezoidal ? "t" : "";
    text += invalid.bass ? "b" : "";
    text += invalid.angles ? "a" : "";
    return text;
}

const char* const kNewStandard = "S0S0S1T1S1T2S2T2S3T4T5T";
const char* const kNewCompact = "C0C1C2C3C3C5C6C";

struct EditCase {
    const char* what;
    std::int16_t system;
    bool autoCorrect;
    std::function<void(SetupForm&)> edit;
    const char* shape;
    const char* counts; ///< mid/high, straight, trapezoidal, bass
    const char* flags;
};

TEST(SetupForm, EditsTravelThroughTheLists)
{
    const auto type = [](int position, int index) {
        return [=](SetupForm& form) { form.chooseType(position, index); };
    };
    const auto midHigh = [](int count) {
        return [=](SetupForm& form) { form.chooseNumSpk(count - 1); };
    };
    const auto bass = [](int count) { return [=](SetupForm& form) { form.chooseNumBass(count); }; };
    const EditCase cases[] = {
        {"nothing", 0, true, [](SetupForm& form) { form.UpdateSetupLists(-2); }, kNewStandard,
         "12 6 6 0", ""},
        {"a type on top, still allowed", 0, true, type(0, 1), "T0S0S1T1S1T2S2T2S3T4T5T", "12 5 7 0",
         ""},
        {"a small angle snaps to the first", 0, true, type(2, 1), "S0S0T3T1S1T2S2T2S3T4T5T",
         "12 5 7 0", ""},
        {"a large angle snaps to the last", 0, true, type(10, 0), "S0S0S1T1S1T2S2T2S3T3S3T",
         "12 7 5 0", ""},
        {"a type to bass", 0, true, type(0, 2), "F0S0S1T1S1T2S2T2S3T4T5T", "11 5 6 1", ""},
        {"counts of kinds follow the types", 0, true, [](SetupForm& form) { form.chooseNumGer(3); },
         kNewStandard, "12 6 6 0", ""},
        {"two more", 0, true, midHigh(14), "S0S0S1T1S1T2S2T2S3T4T5T3T3S", "14 7 7 0", ""},
        {"fewer", 0, true, midHigh(2), "S0S", "2 2 0 0", ""},
        {"a single box", 0, true, midHigh(1), "S", "1 1 0 0", ""},
        {"bass enters at position 0", 0, true, bass(2), "F0F0S0S0S1T1S1T2S2T2S3T4T5T", "12 6 6 2",
         ""},
        {"bass leaves from position 0", 0, true,
         [](SetupForm& form) {
             form.chooseNumBass(3);
             form.chooseNumBass(1);
         },
         "F0S0S0S1T1S1T2S2T2S3T4T5T", "12 6 6 1", ""},
        {"fewer mid/high, bass stays", 0, true,
         [](SetupForm& form) {
             form.chooseType(11, 2);
             form.chooseNumSpk(9);
         },
         "S0S0S1T1S1T2S2T2S3T4F", "10 6 4 1", ""},
        {"32 boxes at most", 0, true,
         [](SetupForm& form) {
             form.chooseNumSpk(23);
             form.chooseNumBass(20);
         },
         nullptr, "24 12 12 8", ""},
        {"32 boxes at most, mid/high", 0, true,
         [](SetupForm& form) {
             form.chooseNumBass(20);
             form.chooseNumSpk(23);
         },
         nullptr, "12 6 6 20", ""},
        {"no mid/high left: one comes", 0, true,
         [](SetupForm& form) {
             form.chooseNumSpk(0);
             form.chooseType(0, 2);
         },
         "F0S", "1 1 0 1", ""},
        {"compact: bass on top", 1, true, bass(1), "B0C0C1C2C3C3C5C6C", "8 8 0 1", ""},
        {"compact: one more", 1, true, midHigh(9), "C0C1C2C3C3C5C6C3C", "9 9 0 0", ""},
        {"compact: type to bass", 1, true, type(4, 1), "C0C1C2C0B0C5C6C", "7 7 0 1", ""},

        {"off: an angle stays, red", 0, false, type(2, 1), "S0S0T1!T1S1T2S2T2S3T4T5T", "12 6 6 0",
         "a"},
        {"off: and is plain again", 0, false,
         [](SetupForm& form) {
             form.chooseType(2, 1);
             form.chooseType(2, 0);
         },
         kNewStandard, "12 6 6 0", ""},
        {"off: an allowed angle for the red one", 0, false,
         [](SetupForm& form) {
             form.chooseType(2, 1);
             form.chooseAngle(2, 0);
         },
         "S0S0T3T1S1T2S2T2S3T4T5T", "12 6 6 0", ""},
        {"off: bass where mid/high is counted", 0, false, type(0, 2), "F0S0S1T1S1T2S2T2S3T4T5T",
         "12 6 6 0", "mb"},
        {"off: a count above mid/high", 0, false, midHigh(4), "S0S0S1T", "4 6 6 0", "st"},
        {"off: bass counted, none placed", 0, false, bass(1), nullptr, "12 6 6 1", "mb"},
        {"off: compact", 1, false, type(0, 1), "B0C1C2C3C3C5C6C", "8 8 0 0", "mb"},
    };
    for (const EditCase& test : cases) {
        SCOPED_TRACE(test.what);
        SetupForm form = newForm(test.system, test.autoCorrect);
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

TEST(SetupForm, EveryTypeAtEveryJointKeepsTheArrayValid)
{
    for (const std::int16_t system : {kStandardSystem, kCompactSystem})
        for (int position = 0; position < 12; ++position)
            for (int index = 0; index < 3; ++index) {
                SetupForm form = newForm(system, true);
                form.chooseNumSpk(11);
                form.chooseNumBass(2);
                form.chooseType(position, index);
                LineArray array = newProject(system).array;
                ASSERT_TRUE(form.UpdateLineArray(array));
                const auto bounds = array.IAGetAngleBounds();
                for (std::size_t joint = 0; joint < bounds.size(); ++joint) {
                    const std::int16_t angle = array.GIAGetAllAngle()[joint + 1];
                    EXPECT_GE(angle, bounds[joint][0]) << position << " " << index;
                    EXPECT_LE(angle, bounds[joint][1]) << position << " " << index;
                }
                EXPECT_EQ(array.boxCount(), form.total());
            }
}

TEST(SetupForm, TheArrayComesBackAsItWas)
{
    LineArray odd = newProject(0).array; // what a file can bring and the lists lack
    LineArray::Positions types = odd.GIAGetAllType();
    LineArray::Positions angles = odd.GIAGetAllAngle();
    types[3] = 9;
    angles[5] = 12;
    angles[0] = 77;
    odd.GBSetAllType(types);
    odd.GBSetAllAngle(angles);
    LineArray stacked = newProject(1).array;
    stacked.GBSetMounting(false);
    LineArray angled = newProject(0).array;
    angles = angled.GIAGetAllAngle();
    angles[0] = -123;
    angled.GBSetAllAngle(angles);
    angled.GBSetAngleOrPin(false);

    for (const bool autoCorrect : {true, false})
        for (const LineArray& array : {newProject(0).array, newProject(1).array, odd, angled}) {
            const SetupForm form = formOf(array, autoCorrect);
            LineArray again = array;
            EXPECT_TRUE(form.UpdateLineArray(again));
            EXPECT_EQ(again, array);
            EXPECT_FALSE(form.SetupInvalid.any());
            EXPECT_EQ(form.holdsUnknown(), array == odd);
        }
    const SetupForm form = formOf(odd, true);
    EXPECT_TRUE(form.cmbType[3].invalid);
    EXPECT_TRUE(form.cmbAngle[4].invalid);
    EXPECT_TRUE(form.PinNumber_cmb.invalid);
    EXPECT_EQ(formOf(angled, true).box1Angle, 12.3);
}

TEST(SetupForm, SaysWhenTheNumbersAreNotThoseOfTheColumn)
{
    for (const std::int16_t system : {kStandardSystem, kCompactSystem})
        for (const bool autoCorrect : {true, false})
            EXPECT_FALSE(newForm(system, autoCorrect).countsDiffer()) << system;
    for (const bool autoCorrect : {true, false}) {
        SetupForm form = newForm(kStandardSystem, autoCorrect);
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

TEST(SetupForm, AnyEditCorrectsAllThatAFileBrought)
{
    LineArray array = newProject(kStandardSystem).array;
    LineArray::Positions angles = array.GIAGetAllAngle();
    angles[10] = 0;  // two trapezoidal boxes splay more
    angles[11] = 77; // no angle at all
    angles[0] = 40;  // no pin
    array.GBSetAllAngle(angles);
    array.GBSetNumGerade(2); // not those of the column
    const SetupForm loaded = formOf(array, true);
    EXPECT_TRUE(loaded.PinNumber_cmb.invalid);
    EXPECT_TRUE(loaded.cmbAngle[9].invalid);
    EXPECT_TRUE(loaded.cmbAngle[10].invalid) << "loading corrects nothing";
    EXPECT_TRUE(loaded.holdsUnknown());
    for (const bool byJoint : {true, false}) {
        SetupForm form = loaded;
        if (byJoint)
            form.chooseAngle(0, 1);
        form.correct();
        for (int joint = 0; joint + 1 < form.total(); ++joint)
            EXPECT_FALSE(form.cmbAngle[static_cast<std::size_t>(joint)].invalid) << joint;
        EXPECT_EQ(form.PinNumber_cmb.text(), "11") << "the nearest one";
        EXPECT_FALSE(form.holdsUnknown() || form.SetupInvalid.any() || form.countsDiffer());
    }
    SetupForm kept = formOf(array, false);
    const SetupForm before = kept;
    kept.correct();
    EXPECT_EQ(kept, before) << "without auto-correction";
}

TEST(SetupForm, OfAnInvalidSetupTheRestReachesTheArray)
{
    LineArray array = newProject(kStandardSystem).array;
    SetupForm form = formOf(array, false);
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
