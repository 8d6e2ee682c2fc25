#include "main/step_places.h"

#include "widgets/controls.h"

#include <algorithm>

namespace orva::ui {

namespace {

enum Page { Location, Setup, Rigging, SubArrayPage };

struct Place {
    Text step;
    Page page;
    const char* control; ///< ending in "(": an element, by the step's number from 1
};
constexpr Place kPlaces[] = {{Text::StepSplay, Setup, "cmbAngle("},
                             {Text::StepBoxType, Setup, "cmbType("},
                             {Text::StepMidHigh, Setup, "cmbNumSpk"},
                             {Text::StepStraight, Setup, "cmbNumGer"},
                             {Text::StepTrapezoidal, Setup, "cmbNumSch"},
                             {Text::StepBass, Setup, "cmbNumBass"},
                             {Text::StepMounting, Setup, "Stacked_chk"},
                             {Text::StepPinMode, Setup, "PinAngle_opt(0)"},
                             {Text::StepPin, Setup, "PinNumber_cmb"},
                             {Text::StepFirstAngle, Setup, "box1Angle_txt"},
                             {Text::StepAutoAim, Setup, "cmdAuto"},
                             {Text::StepCradle, Setup, "Cradle_txt(0)"},
                             {Text::StepBassBox, Setup, "optBassYesNo(0)"},
                             {Text::StepRoomSize, Location, "RoomWidth_txt"},
                             {Text::StepReference, Location, "refX_txt"},
                             {Text::StepFoh, Location, "FOHX_txt"},
                             {Text::StepAreaCount, Location, "numAreas_cmb"},
                             {Text::StepArea, Location, "txtXone("},
                             {Text::StepProjectText, Location, "ProjectName_txt"},
                             {Text::StepSubPosition, SubArrayPage, "SubArray_txt("},
                             {Text::StepOpeningAngle, SubArrayPage, "OpenAng_txt"},
                             {Text::StepSearch, Setup, "cmbAngle(0)"}};

} // namespace

StepPlace placeOf(const StepName& step)
{
    const auto* place = std::find_if(std::begin(kPlaces), std::end(kPlaces),
                                     [&](const Place& known) { return known.step == step.text; });
    if (place == std::end(kPlaces))
        return {Setup, {}};
    QString control = place->control;
    if (control.endsWith('('))
        control += QString::number(step.number - 1) + ')';
    return {place->page, control};
}

} // namespace orva::ui
