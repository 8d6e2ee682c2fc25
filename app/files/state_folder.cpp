#include "app/files/state_folder.h"

#include <cstdlib>

namespace orva {

std::filesystem::path stateFolder()
{
    const auto variable = [](const char* name) {
        const char* value = std::getenv(name);
        return std::filesystem::path(value ? value : "");
    };
    // A relative one does not count.
    const std::filesystem::path state = variable("XDG_STATE_HOME");
    return (state.is_absolute() ? state : variable("HOME") / ".local" / "state") / "ORVA";
}

} // namespace orva
