#include "app/files/program_folder.h"

namespace orva {

std::filesystem::path programFolder(const std::filesystem::path& beside)
{
    const std::filesystem::path installed = beside.parent_path() / "share" / "orva";
    return !exists(beside / "bin") && exists(installed / "bin") ? installed : beside;
}

} // namespace orva
