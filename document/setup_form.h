#pragma once

#include "document/choice_list.h"
#include "model/line_array.h"

#include <array>
#include <string>
#include <vector>

namespace orva {

/// The state of every list of the Setup page and the rules by which an edit travels through them.
/// Positions count from 0, the top box; joint j lies below position j.
///
/// What a file holds and the lists lack (a count above a list's end, an unknown code, an angle or
/// pin that does not exist) is shown as an extra red entry and kept as long as it is selected.
class SetupForm {
public:
    static constexpr int kPositions = LineArray::kPositions;
    static constexpr int kJoints = kPositions - 1;

    ChoiceList cmbNumSpk;  ///< mid/high boxes
    ChoiceList cmbNumBass; ///< bass boxes
    ChoiceList cmbNumGer;  ///< straight boxes
    ChoiceList cmbNumSch;  ///< trapezoidal boxes
    std::array<ChoiceList, kPositions> cmbType;
    std::array<ChoiceList, kJoints> cmbAngle;
    ChoiceList PinNumber_cmb;
    bool stacked = false;
    bool pinMode = true;
    double box1Angle = 0; ///< degrees as people see them: positive = up

    /// What the warning box reports, in the order of the flags.
    struct Invalid {
        bool straight = false;
        bool trapezoidal = false;
        bool angles = false;
        bool midHigh = false;
        bool bass = false;

        bool any() const { return straight || trapezoidal || angles || midHigh || bass; }
        friend bool operator==(const Invalid&, const Invalid&) = default;
    };
    Invalid SetupInvalid;

    /// Fills every list from the array, marks what is wrong and corrects nothing.
    void RefreshFromClass(const LineArray& array);

    /// What the user chose, by its number in the list; the lists that depend on it follow.
    /// With `autoCorrect` they are corrected where need be, without it marked.
    void chooseType(int position, int index, bool autoCorrect);
    void chooseAngle(int joint, int index, bool autoCorrect);
    void chooseNumGer(int index, bool autoCorrect);
    void chooseNumSch(int index, bool autoCorrect);
    void chooseNumSpk(int index, bool autoCorrect);
    void chooseNumBass(int index, bool autoCorrect);

    /// Mends every entry that is invalid, wherever it came from; only a box of unknown kind stays.
    void correct();

    /// Derives angle and count lists again after a change at position `changed` (an angle: joint
    /// + 1), of a straight or trapezoidal count (-1), or of a mid/high or bass count (-2).
    void UpdateSetupLists(int changed, bool autoCorrect);

    /// Writes the lists into the array and calculates its geometry. False when the array did not
    /// take a value; what could be taken has been.
    bool UpdateLineArray(LineArray& array) const;

    /// Of an invalid setup, writes what hangs on no invalid entry: mounting, pin or angle of the
    /// first box, and the valid angles between boxes that are those of the array.
    void updateIndependent(LineArray& array) const;

    /// Whether an entry in use is one that only a file can bring. It is kept on saving.
    bool holdsUnknown() const;

    /// Whether the numbers of straight and trapezoidal boxes, from which the centre of gravity has
    /// its total weight, are not those of the column.
    bool countsDiffer() const;

    /// Calls `visit` with every list, always in the same order.
    template<typename Form, typename Visit>
    static void eachList(Form& form, Visit visit)
    {
        for (auto* list : {&form.cmbNumSpk, &form.cmbNumBass, &form.cmbNumGer, &form.cmbNumSch,
                           &form.PinNumber_cmb})
            visit(*list);
        for (auto& list : form.cmbType)
            visit(list);
        for (auto& list : form.cmbAngle)
            visit(list);
    }
    static constexpr std::size_t kLists = 5 + kPositions + kJoints;

    /// All but the lists.
    struct Rest {
        bool stacked;
        bool pinMode;
        double box1Angle;
        Invalid SetupInvalid;
        std::int16_t system;
        int total;
    };
    Rest rest() const;
    void setRest(const Rest& rest);

    /// Positions in use.
    int total() const;
    /// The kind that is chosen at a position; none for a code that the system does not know.
    std::optional<BoxKind> kindAt(int position) const;
    /// Straight and trapezoidal boxes are counted apart.
    bool countsKinds() const { return system().countsKinds; }
    /// The model name of the kind of box in this system.
    std::string_view modelName(BoxKind kind) const;

    /// The first-box angle as it is kept: within a turn, one decimal.
    static double validAngle(double degrees);

    friend bool operator==(const SetupForm&, const SetupForm&) = default;

private:
    const SystemRecord& system() const { return systemRecord(m_system); }
    int placed(std::optional<BoxKind> kind, int positions) const;
    bool isBass(int position) const { return kindAt(position) == BoxKind::Bass; }
    AngleBounds boundsAt(int joint) const;
    Choice typeChoice(std::int16_t code) const;
    ChoiceList typeList(const Choice& selected) const;
    ChoiceList typeList(BoxKind kind) const;
    ChoiceList& type(int position) { return cmbType[static_cast<std::size_t>(position)]; }
    ChoiceList& angle(int joint) { return cmbAngle[static_cast<std::size_t>(joint)]; }
    const ChoiceList& type(int position) const
    {
        return cmbType[static_cast<std::size_t>(position)];
    }
    const ChoiceList& angle(int joint) const { return cmbAngle[static_cast<std::size_t>(joint)]; }

    void updateAngleList(int joint, bool correct);
    void updateAngleMark();
    void reportCounts();
    void correctCounts();
    void removeMidHigh(int positions);
    void removeBass(int positions);
    void insertBass(int positions);
    void selectFirstAngle(int joint);
    void selectOnly(int joint, std::int16_t index);
    std::int16_t firstEntry(std::int16_t kept) const;

    std::int16_t m_system = kStandardSystem;
    int m_total = 0; ///< positions in use before a count changed
};

} // namespace orva
