#include "main/step_places.h"

#include "widgets/controls.h"

#include <algorithm>

namespace orva::ui {

namespace {

struct Place {
    Text step;
    PageTab page;
    const char* control; ///< ending in "(": an element, by the step's number from 1
};
constexpr Place kPlaces[] = {{Text::StepSplay, SetupTab, "cmbAngle("},
                             {Text::StepBoxType, SetupTab, "cmbType("},
                             {Text::StepMidHigh, SetupTab, "cmbNumSpk"},
                             {Text::StepStraight, SetupTab, "cmbNumGer"},
                             {Text::StepTrapezoidal, SetupTab, "cmbNumSch"},
                             {Text::StepBass, SetupTab, "cmbNumBass"},
                             {Text::StepMounting, SetupTab, "Stacked_chk"},
                             {Text::StepPinMode, SetupTab, "PinAngle_opt(0)"},
                             {Text::StepPin, SetupTab, "PinNumber_cmb"},
                             {Text::StepFirstAngle, SetupTab, "box1Angle_txt"},
                             {Text::StepAutoAim, SetupTab, "cmdAuto"},
                             {Text::StepCradle, SetupTab, "Cradle_txt(0)"},
                             {Text::StepBassBox, SetupTab, "optBassYesNo(0)"},
                             {Text::StepRoomSize, RoomTab, "RoomWidth_txt"},
                             {Text::StepReference, RoomTab, "refX_txt"},
                             {Text::StepFoh, RoomTab, "FOHX_txt"},
                             {Text::StepAreaCount, RoomTab, "numAreas_cmb"},
                             {Text::StepArea, RoomTab, "txtXone("},
                             {Text::StepProjectText, RoomTab, "ProjectName_txt"},
                             {Text::StepSubPosition, SubArrayTab, "SubArray_txt("},
                             {Text::StepOpeningAngle, SubArrayTab, "OpenAng_txt"},
                             {Text::StepSearch, SetupTab, "cmbAngle(0)"}};

} // namespace

StepPlace placeOf(const StepName& step)
{
    const auto* place = std::find_if(std::begin(kPlaces), std::end(kPlaces),
                                     [&](const Place& known) { return known.step == step.text; });
    if (place == std::end(kPlaces))
        return {SetupTab, {}};
    QString control = place->control;
    if (control.endsWith('('))
        control += QString::number(step.number - 1) + ')';
    return {place->page, control};
}

} // namespace orva::ui
