#pragma once

#include "document/history.h"

namespace orva {

/// Whether the rules of the setup may change more in such a step than the user did.
bool mayCorrect(const StepName& step);

/// What they changed: counts that followed, went back or were cut to what fits, angles that their
/// boxes did not allow. The number of a count's step is what the user chose.
std::vector<Message> correctionsIn(const SetupForm& before, const SetupForm& after,
                                   const StepName& step);

} // namespace orva
