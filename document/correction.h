#pragma once

#include "document/history.h"

namespace orva {

/// What the rules of the setup changed beside what the user did in a step: counts that followed or
/// went back, angles that their boxes did not allow. None where they changed nothing else.
std::optional<std::vector<Message>> correctionsIn(const SetupForm& before, const SetupForm& after,
                                                  const StepName& step);

} // namespace orva
