#pragma once

#include <string>
#include <string_view>

namespace orva {

/// A name for a project's file, proposed to the user: the project's name without what would lead to
/// another folder (separators, dots in front) and without control characters, and the extension
/// (".lad"). Empty for a name of which nothing is left.
std::string proposedFileName(std::string_view projectName, std::string_view extension);

/// The path with the extension added unless it ends in it, in any letter case.
std::string withExtension(std::string path, std::string_view extension);

} // namespace orva
