#pragma once

#include "app/files/file_access.h"

#include <variant>

namespace orva {

/// More of a project file is not compared.
constexpr std::size_t kMostCompared = 1U << 20U;

/// The file holds something else than was expected; nothing was written. None: it is not there.
struct ChangedOutside {
    std::optional<std::string> now;
};

/// Writes a file, but not over one that is write-protected, nor over one that holds something else
/// than `expected` (none: that there is no file); without it over any.
using SaveOutcome = std::variant<Saved, ChangedOutside, Error>;
SaveOutcome saveOver(const std::filesystem::path& path, std::string_view bytes,
                     const std::optional<std::optional<std::string>>& expected,
                     Disk& disk = systemDisk());

} // namespace orva
