#include "setup_form_fixture.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include <gtest/gtest.h>

namespace orva {
namespace {

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

} // namespace
} // namespace orva
