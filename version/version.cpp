#include "version/version.h"

#include "engine/levels.h"
#include "orva_commit.h"

namespace orva {

std::string versionText(std::string_view program)
{
    return std::string(program) + " " ORVA_VERSION " (commit " ORVA_COMMIT ", " + vectorTarget() +
           ")";
}

} // namespace orva
