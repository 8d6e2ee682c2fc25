#pragma once

#include <filesystem>

namespace orva {

/// Where what outlives a run of this user lies, recovery and log: `$XDG_STATE_HOME/ORVA`, else
/// `~/.local/state/ORVA`. It need not be there.
std::filesystem::path stateFolder();

} // namespace orva
