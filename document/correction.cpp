#include "document/correction.h"

#include <algorithm>
#include <array>

namespace orva {

namespace {

struct Count {
    Text step;
    ChoiceList SetupForm::*list;
};
constexpr std::array kCounts = {Count{Text::StepMidHigh, &SetupForm::cmbNumSpk},
                                Count{Text::StepStraight, &SetupForm::cmbNumGer},
                                Count{Text::StepTrapezoidal, &SetupForm::cmbNumSch},
                                Count{Text::StepBass, &SetupForm::cmbNumBass}};

/// The joints between the same boxes as before whose angle is another one.
std::vector<int> correctedJoints(const SetupForm& before, const SetupForm& after,
                                 const StepName& step)
{
    std::vector<int> joints;
    const bool shifted = before.total() != after.total();
    for (int joint = 0; joint + 1 < std::min(before.total(), after.total()) && !shifted; ++joint) {
        const auto at = static_cast<std::size_t>(joint);
        const bool own = step.text == Text::StepSplay && step.number == joint + 1;
        if (!own && before.cmbAngle[at].value() != after.cmbAngle[at].value())
            joints.push_back(joint + 1);
    }
    return joints;
}

} // namespace

bool mayCorrect(const StepName& step)
{
    return step.text == Text::StepSplay || step.text == Text::StepBoxType ||
           std::any_of(kCounts.begin(), kCounts.end(),
                       [&](const Count& count) { return count.step == step.text; });
}

std::vector<Message> correctionsIn(const SetupForm& before, const SetupForm& after,
                                   const StepName& step)
{
    std::vector<Message> said;
    for (const Count& count : kCounts) {
        const bool ofOneKind =
            count.list == &SetupForm::cmbNumGer || count.list == &SetupForm::cmbNumSch;
        if (ofOneKind && !after.countsKinds())
            continue; // nobody sees them
        const int was = (before.*count.list).value();
        const int is = (after.*count.list).value();
        if (step.text != count.step) {
            if (was != is)
                said.emplace_back(Text::CorrectedCount,
                                  std::vector<Message>{Message(count.step), number(is)});
        } else if (is != step.number) { // not what the user chose
            said.emplace_back(
                was == is ? Text::CorrectedBack : Text::CorrectedFit,
                std::vector<Message>{Message(count.step), number(is), number(step.number)});
        }
    }
    const std::vector<int> joints = correctedJoints(before, after, step);
    if (joints.size() == 1)
        said.emplace_back(Text::CorrectedAngle, std::vector<Message>{number(joints.front())});
    else if (!joints.empty())
        said.emplace_back(Text::CorrectedAngles,
                          std::vector<Message>{number(joints.front()), number(joints.back())});
    return said;
}

} // namespace orva
