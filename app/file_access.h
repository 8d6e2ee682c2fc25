#pragma once

#include "model/result.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orva {

/// The bytes of a file, `limit` at most: what follows them is not read.
Result<std::string> readFile(const std::filesystem::path& path, std::size_t limit);

/// Files that are written so that after a crash, a full disk or a kill there is either the old file
/// or the whole new one: into temporary files beside their targets, flushed, renamed over them.
/// Until commit() nothing has changed; without it nothing does. A symbolic link stays one.
class PendingFiles {
public:
    PendingFiles();
    PendingFiles(PendingFiles&&) noexcept;
    PendingFiles& operator=(PendingFiles&&) noexcept;
    ~PendingFiles();

    /// Writes the temporary file. Refuses a target that is there and is no regular file, and a name
    /// that is not UTF-8.
    Result<Done> add(const std::filesystem::path& path, std::string_view bytes);
    Result<Done> commit();

private:
    struct File;
    std::vector<std::unique_ptr<File>> m_files;
};

/// A single file of that kind.
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
