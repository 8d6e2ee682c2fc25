#pragma once

#include "document/history.h"

namespace orva {

/// Whether the rules of the setup may change more in such a step than the user did.
bool mayCorrect(const StepName& step);

/// What they changed: counts that followed or went back, angles that their boxes did not allow.
std::vector<Message> correctionsIn(const SetupForm& before, const SetupForm& after,
                                   const StepName& step);

} // namespace orva
