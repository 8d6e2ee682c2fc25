#include "document/setup_edit.h"

#include "lang/number_text.h"

namespace orva {

bool applySetup(DocumentState& state, bool autoCorrect)
{
    SetupForm& setup = state.setup;
    LineArray& array = state.project.array;
    if (autoCorrect)
        setup.correct();
    if (setup.SetupInvalid.any()) {
        setup.updateIndependent(array);
    } else if (!setup.UpdateLineArray(array)) {
        setup.RefreshFromClass(array);
        return false;
    }
    // An angle brings its closest pin with it.
    if (!setup.pinMode && !setup.stacked && !array.fault())
        setup.PinNumber_cmb.select(Choice::number(array.GIPinPoint() + 1));
    return true;
}

bool choosePin(DocumentState& state, int pin, bool autoCorrect)
{
    state.setup.pinMode = true;
    state.setup.PinNumber_cmb.select(Choice::number(pin + 1));
    const bool applied = applySetup(state, autoCorrect);
    state.setup.box1Angle = roundedTo(-state.project.array.GFFirstAngle(), 1);
    return applied;
}

bool aimFirstBox(DocumentState& state, double angleDeg, bool autoCorrect)
{
    state.setup.pinMode = false;
    state.setup.box1Angle = SetupForm::validAngle(angleDeg);
    return applySetup(state, autoCorrect);
}

DocumentState documentOf(Project project)
{
    DocumentState state{std::move(project), {}};
    state.project.array.GFACalcCOM();
    state.setup.RefreshFromClass(state.project.array);
    for (std::size_t i = 0; i < Variants::kMost; ++i)
        if (const auto& kept = state.project.variants.kept[i])
            state.keptSetups[i].emplace().RefreshFromClass(kept->array);
    return state;
}

DocumentState newDocument(std::int16_t system, bool autoCorrect)
{
    constexpr double kFirstAngle = -1.4;
    DocumentState state = documentOf(newProject(system));
    state.setup.UpdateSetupLists(-2, autoCorrect);
    state.setup.box1Angle = kFirstAngle;
    return state;
}

} // namespace orva
