#pragma once

#include "model/project.h"
#include "model/result.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace orva {

/// Bytes of a project file of version 2. What follows them in a file is not read, but for the
/// variants behind their mark, which other readers pass over:
///     8 characters kVariantsMark
///     i16 version of the block, 1
///     i32 bytes that follow
///     i16 current variant, 0..3
///     4 times: i16 bytes of the name, 0..64; the name, UTF-8;
///         i16 whether a setup is kept, 0 or 1 (of the current one: 0); if so
///         160 bytes array, 44 bytes sub array, as before
constexpr std::size_t kProjectFileBytes = 632;

constexpr std::string_view kVariantsMark = "ORVA-VAR";
/// More than any project with its variants has.
constexpr std::size_t kLargestProjectFile = kProjectFileBytes + 2048;

struct LoadedProject {
    Project project;
    int version = 2;      ///< of the file: 0, 1 or 2
    std::size_t size = 0; ///< bytes that were read
};

/// The whole project or an Error{what, where}; never half a project. `name` stands for the file in
/// the error. Versions 0 and 1 are converted; a compact array without a box is given one.
Result<LoadedProject> readProject(std::span<const std::byte> bytes, std::string_view name);

/// A project file of version 2: kProjectFileBytes, and the variants where there are any.
std::vector<std::byte> writeProject(const Project& project);

/// Appends the 30-byte header of version 2.
void WriteProjectHeader(ByteWriter& out);

/// Reads 30 bytes; the format version 0, 1 or 2, or why they are no project header.
Result<int> ReadProjectHeader(ByteReader& in);

} // namespace orva
