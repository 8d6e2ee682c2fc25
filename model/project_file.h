#pragma once

#include "model/project.h"
#include "model/result.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace orva {

/// Bytes of a project file of version 2; what follows them in a file is not read.
constexpr std::size_t kProjectFileBytes = 632;

struct LoadedProject {
    Project project;
    int version = 2; ///< of the file: 0, 1 or 2
};

/// The whole project or an Error{what, where}; never half a project. `name` stands for the file in
/// the error. Versions 0 and 1 are converted; a compact array without a box is given one.
Result<LoadedProject> readProject(std::span<const std::byte> bytes, std::string_view name);

/// A project file of version 2, exactly kProjectFileBytes long.
std::vector<std::byte> writeProject(const Project& project);

/// Appends the 30-byte header of version 2.
void WriteProjectHeader(ByteWriter& out);

/// Reads 30 bytes; the format version 0, 1 or 2, or why they are no project header.
Result<int> ReadProjectHeader(ByteReader& in);

} // namespace orva
