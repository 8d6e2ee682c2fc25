#pragma once

#include "document/history.h"

namespace orva {

/// Brings the array of a state in line with its setup: with `autoCorrect` the lists are corrected
/// first; a valid setup goes into the array, of an invalid one what hangs on no invalid entry.
/// False when the array did not take a value; the setup is then what the array is.
bool applySetup(DocumentState& state, bool autoCorrect);

/// Hangs the array from that pin (from 0); the angle that angle mode starts with follows.
bool choosePin(DocumentState& state, int pin, bool autoCorrect);

/// Tilts the first box to that angle (as people see it), in angle mode.
bool aimFirstBox(DocumentState& state, double angleDeg, bool autoCorrect);

/// A new project as it is first shown. (What the lists bring is what an edit would leave.)
DocumentState newDocument(std::int16_t system, bool autoCorrect);

/// A state with that project, its setup as the array says, nothing corrected.
DocumentState documentOf(Project project);

} // namespace orva
