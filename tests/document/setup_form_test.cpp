#include "document/setup_form.h"
#include "model/project.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

/// A form with the option that its edits follow.
struct Form : SetupForm {
    bool autoCorrect = true;

    void chooseType(int position, int index)
    {
        SetupForm::chooseType(position, index, autoCorrect);
    }
    void chooseAngle(int joint, int index) { SetupForm::chooseAngle(joint, index, autoCorrect); }
    void chooseNumGer(int index) { SetupForm::chooseNumGer(index, autoCorrect); }
    void chooseNumSch(int index) { SetupForm::chooseNumSch(index, autoCorrect); }
    void chooseNumSpk(int index) { SetupForm::chooseNumSpk(index, autoCorrect); }
    void chooseNumBass(int index) { SetupForm::chooseNumBass(index, autoCorrect); }
    void UpdateSetupLists(int changed) { SetupForm::UpdateSetupLists(changed, autoCorrect); }
};

Form formOf(const LineArray& array, bool autoCorrect)
{
    Form form;
    form.autoCorrect = autoCorrect;
    form.RefreshFromClass(array);
    return form;
}

Form newForm(std::int16_t system, bool autoCorrect)
{
    return formOf(newProject(system).array, autoCorrect);
}

/// The boxes in use as letters (S, T, F or C, B), a digit after each for the joint below: the angle
/// in steps of 1.5 degrees.
std::string shape(const Form& form)
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

std::string flags(const Form& form)
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
            const Form form = formOf(array, autoCorrect);
            LineArray again = array;
            EXPECT_TRUE(form.UpdateLineArray(again));
            EXPECT_EQ(again, array);
            EXPECT_FALSE(form.SetupInvalid.any());
            EXPECT_EQ(form.holdsUnknown(), array == odd);
        }
    const Form form = formOf(odd, true);
    EXPECT_TRUE(form.cmbType[3].invalid);
    EXPECT_TRUE(form.cmbAngle[4].invalid);
    EXPECT_TRUE(form.PinNumber_cmb.invalid);
    EXPECT_EQ(formOf(angled, true).box1Angle, 12.3);
}

/// A new array of the system with one splay angle, above `position`, that a file brought.
LineArray withAngle(std::int16_t system, std::size_t position, std::int16_t angle)
{
    LineArray array = newProject(system).array;
    LineArray::Positions angles = array.GIAGetAllAngle();
    angles[position] = angle;
    array.GBSetAllAngle(angles);
    return array;
}

TEST(SetupForm, AForbiddenSplayAngleFromAFileIsShownRedUntilAnEdit)
{
    struct Case {
        const char* what;
        std::size_t position;
        std::int16_t angle;
        bool autoCorrect;
        const char* read; ///< the first joints
        const char* flags;
        const char* edited; ///< after an edit beside the joint
        const char* editedFlags;
    };
    const Case cases[] = {{"small: the first", 3, 5, true, "S0S0S5!T1S", "a", "S0S0S3T1S", ""},
                          {"large: the last", 3, 6, true, "S0S0S6!T1S", "a", "S0S0S3T1S", ""},
                          {"nothing but 0", 2, 3, true, "S0S3!S1T1S", "a", "S0S0S1T1S", ""},
                          {"allowed", 3, 2, true, "S0S0S2T1S", "", "S0S0S2T1S", ""},
                          {"off: it stays", 3, 5, false, "S0S0S5!T1S", "a", "S0S0S5!T1S", "a"},
                          {"off: allowed", 3, 3, false, "S0S0S3T1S", "", "S0S0S3T1S", ""}};
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        const LineArray array = withAngle(kStandardSystem, test.position, test.angle);
        Form form = formOf(array, test.autoCorrect);
        EXPECT_EQ(shape(form).substr(0, std::string(test.read).size()), test.read);
        EXPECT_EQ(flags(form), test.flags);
        LineArray again = array;
        EXPECT_TRUE(form.UpdateLineArray(again));
        EXPECT_EQ(again, array) << "read, not corrected";
        form.chooseType(static_cast<int>(test.position), form.cmbType[test.position].selected);
        EXPECT_EQ(shape(form).substr(0, std::string(test.edited).size()), test.edited);
        EXPECT_EQ(flags(form), test.editedFlags);
    }
    // A small one goes to the first of the list, a large one to the last.
    const std::pair<std::int16_t, std::int16_t> corrected[] = {{0, 3}, {2, 3}};
    for (const auto& [angle, kept] : corrected) {
        Form form = formOf(withAngle(kStandardSystem, 11, angle), true); // T on T: 3 to 6
        EXPECT_EQ(flags(form), "a");
        form.chooseType(11, 1);
        LineArray array = newProject(kStandardSystem).array;
        ASSERT_TRUE(form.UpdateLineArray(array));
        EXPECT_EQ(array.GIAGetAllAngle()[11], kept);
    }
    EXPECT_EQ(flags(formOf(withAngle(kStandardSystem, 12, 0), true)), "") << "not in use";
    EXPECT_EQ(flags(formOf(withAngle(kCompactSystem, 7, 0), true)), "");
}

/// A new array with a count as only a file can bring it, at its place in the array block.
LineArray fromFile(std::int16_t system, std::size_t place, std::int16_t count)
{
    const LineArray array = newProject(system).array;
    ByteWriter out;
    array.GBWriteToFile(out);
    std::vector<std::byte> bytes = out.bytes();
    bytes[2 * place] = static_cast<std::byte>(count);
    LineArray read;
    ByteReader in(bytes, "array");
    EXPECT_TRUE(read.GBReadFromFile(in));
    read.GFACalcCOM();
    return read;
}

TEST(SetupForm, ListsEndWhereTheSystemDoesAndKeepWhatAFileBrought)
{
    using List = ChoiceList SetupForm::*;
    using Get = std::int16_t (LineArray::*)() const;
    const std::tuple<std::int16_t, std::size_t, List, Get, std::int16_t, std::int16_t> lists[] = {
        // system, place in the file, list, its last entry, what the setter keeps at most
        {0, 0, &SetupForm::cmbNumGer, &LineArray::GIGetNumGerade, 24, 24},
        {0, 1, &SetupForm::cmbNumSch, &LineArray::GIGetNumSchräg, 24, 24},
        {0, 2, &SetupForm::cmbNumSpk, &LineArray::GIGetNumSpeakers, 24, 24},
        {0, 3, &SetupForm::cmbNumBass, &LineArray::GIGetNumBass, 20, 20},
        {1, 2, &SetupForm::cmbNumSpk, &LineArray::GIGetNumSpeakers, 16, 24},
        {1, 3, &SetupForm::cmbNumBass, &LineArray::GIGetNumBass, 6, 20}};
    for (const auto& [system, place, list, get, last, most] : lists) {
        SCOPED_TRACE(std::to_string(system) + ' ' + std::to_string(place));
        Form fresh = newForm(system, true);
        fresh.UpdateSetupLists(-2);
        EXPECT_EQ((fresh.*list).items.back(), Choice::number(last));
        for (const int count : {last + 0, last + 1, 28}) {
            const LineArray array = fromFile(system, place, static_cast<std::int16_t>(count));
            const Form form = formOf(array, true);
            EXPECT_EQ((form.*list).value(), count);
            // what says how many boxes there are is right as long as the list has it
            EXPECT_EQ((form.*list).invalid, place != 2 || count > last);
            LineArray again = array;
            EXPECT_TRUE(form.UpdateLineArray(again));
            EXPECT_EQ(again, array) << "what a file brought is kept";
            LineArray other = newProject(system).array; // its setter cuts the count
            EXPECT_EQ(form.UpdateLineArray(other), count <= most);
            EXPECT_EQ((other.*get)(), std::min<int>(count, most));
        }
    }
    EXPECT_EQ(newForm(kStandardSystem, true).PinNumber_cmb.items.size(), 11U);
    EXPECT_EQ(newForm(kCompactSystem, true).PinNumber_cmb.items.size(), 14U);
    Form compact = newForm(kCompactSystem, false);
    compact.chooseNumSpk(10);
    EXPECT_EQ(compact.cmbNumGer.items.size(), 33U); // 0 to 32
    EXPECT_EQ(compact.cmbNumGer.value(), 11);

    Form form = newForm(kStandardSystem, false);
    form.chooseNumSpk(3); // four boxes: trapezoidal 0 to 4, and the 6 that was
    ChoiceList counts = ChoiceList::numbers(0, 4);
    counts.items.push_back(Choice::number(6));
    EXPECT_EQ(form.cmbNumSch.items, counts.items);
    EXPECT_TRUE(form.cmbNumSch.invalid && form.cmbNumGer.invalid);
    form.chooseNumSch(4);
    EXPECT_EQ(form.cmbNumSch.items.size(), 5U);
    EXPECT_FALSE(form.cmbNumSch.invalid);
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

TEST(SetupForm, PinAndAngleOfTheFirstBox)
{
    struct Case {
        const char* what;
        bool flown;
        bool pin;
        std::int16_t entry;
        double shown;       ///< degrees, positive = up
        const char* number; ///< pin that is shown, empty: any
    };
    LineArray hung = newProject(kStandardSystem).array; // hangs from the fifth pin
    hung.GFACalcCOM();
    const Case cases[] = {
        {"pin", true, true, 4, std::nearbyint(-10 * hung.GFFirstAngle()) / 10, "5"},
        {"no such pin", true, true, 11, 0, "? 11"},
        {"pin -1", true, true, -1, 0, "? -1"},
        {"angle", true, false, 25, -2.5, ""},
        {"stacked", false, false, -31, 3.1, ""},
        {"stacked in pin mode", false, true, 42, -4.2, ""}};
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        LineArray array = withAngle(kStandardSystem, 0, test.entry);
        array.GBSetMounting(test.flown);
        array.GBSetAngleOrPin(test.pin);
        array.GFACalcCOM();
        const Form form = formOf(array, true);
        EXPECT_EQ(form.stacked, !test.flown);
        EXPECT_EQ(form.pinMode, test.pin);
        EXPECT_NEAR(form.box1Angle, test.shown, 1e-6);
        if (*test.number) {
            EXPECT_EQ(form.PinNumber_cmb.text(), test.number);
        } else if (test.flown) {
            EXPECT_EQ(form.PinNumber_cmb.value(), array.GIPinPoint() + 1);
        }
        LineArray again = newProject(kStandardSystem).array;
        EXPECT_TRUE(form.UpdateLineArray(again));
        EXPECT_EQ(again.GBGetMounting(), test.flown);
        EXPECT_EQ(again.GBGetAngleOrPin(), test.pin);
        const bool unknown = test.number[0] == '?';
        EXPECT_EQ(again.GIAGetAllAngle()[0], unknown ? 4 : test.entry);
        EXPECT_EQ(again.GFFirstAngle(), again.Duplicate().GFFirstAngle()) << "geometry is ready";
        EXPECT_EQ(form.holdsUnknown(), unknown);
    }
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

TEST(SetupForm, AnyEditCorrectsAllThatAFileBrought)
{
    LineArray array = newProject(kStandardSystem).array;
    LineArray::Positions angles = array.GIAGetAllAngle();
    angles[10] = 0;  // two trapezoidal boxes splay more
    angles[11] = 77; // no angle at all
    angles[0] = 40;  // no pin
    array.GBSetAllAngle(angles);
    array.GBSetNumGerade(2); // not those of the column
    const Form loaded = formOf(array, true);
    EXPECT_TRUE(loaded.PinNumber_cmb.invalid);
    EXPECT_TRUE(loaded.cmbAngle[9].invalid);
    EXPECT_TRUE(loaded.cmbAngle[10].invalid) << "loading corrects nothing";
    EXPECT_TRUE(loaded.holdsUnknown());
    for (const bool byJoint : {true, false}) {
        Form form = loaded;
        if (byJoint)
            form.chooseAngle(0, 1);
        form.correct();
        for (int joint = 0; joint + 1 < form.total(); ++joint)
            EXPECT_FALSE(form.cmbAngle[static_cast<std::size_t>(joint)].invalid) << joint;
        EXPECT_EQ(form.PinNumber_cmb.text(), "11") << "the nearest one";
        EXPECT_FALSE(form.holdsUnknown() || form.SetupInvalid.any() || form.countsDiffer());
    }
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
