#pragma once

#include "model/result.h"

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orva {

/// The bytes of a file, `limit` at most: what follows them is not read.
Result<std::string> readFile(const std::filesystem::path& path, std::size_t limit);

/// Writes a file so that after a crash, a full disk or a kill there is either the old file or the
/// whole new one: into a temporary file beside the target, flushed, renamed over it. A symbolic
/// link stays one. Refuses a target that is there and is no regular file.
Result<Done> writeFile(const std::filesystem::path& path, std::string_view bytes);

inline std::span<const std::byte> asBytes(std::string_view text)
{
    return std::as_bytes(std::span(text));
}

inline std::string_view asText(std::span<const std::byte> bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace orva
