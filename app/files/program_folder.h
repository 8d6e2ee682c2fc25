#pragma once

#include <filesystem>

namespace orva {

/// Where `bin` with the loudspeaker data and the manual lie: beside the program, or, of an
/// installed one, in its data folder.
std::filesystem::path programFolder(const std::filesystem::path& beside);

} // namespace orva
