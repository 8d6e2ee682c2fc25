#pragma once

#include "document/setup_form.h"
#include "model/project.h"

#include <algorithm>
#include <string>

namespace orva {

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

inline Form formOf(const LineArray& array, bool autoCorrect)
{
    Form form;
    form.autoCorrect = autoCorrect;
    form.RefreshFromClass(array);
    return form;
}

inline Form newForm(std::int16_t system, bool autoCorrect)
{
    return formOf(newProject(system).array, autoCorrect);
}

/// The boxes in use as letters (S, T, F or C, B), a digit after each for the joint below: the angle
/// in steps of 1.5 degrees.
inline std::string shape(const Form& form)
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

inline std::string flags(const Form& form)
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

} // namespace orva
