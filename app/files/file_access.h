#pragma once

#include "app/files/disk.h"
#include "model/result.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orva {

/// The bytes of a regular file, `limit` at most: what follows them is not read. Anything else
/// (folder, pipe, device) is refused without waiting for it.
Result<std::string> readFile(const std::filesystem::path& path, std::size_t limit,
                             Disk& disk = systemDisk());

/// What a name stands for at the moment: the bytes of its file, none where there is no such file.
Result<std::optional<std::string>> contentOf(const std::filesystem::path& path, std::size_t limit,
                                             Disk& disk = systemDisk());

/// Whether both names mean the same file, be it there or not.
bool isSameFile(const std::filesystem::path& a, const std::filesystem::path& b);

/// Whether the open file is still the one of that name.
bool isStillNamed(int descriptor, const std::filesystem::path& path);

/// What a save that went well has to tell, each a line: what of an old file could not be kept.
struct Saved {
    std::vector<Message> notes;
};

/// Files that are written so that after a crash, a full disk or a kill there is either the old file
/// or the whole new one: into temporary files beside their targets, flushed, put in their places.
/// Until commit() nothing has changed; without it nothing does. A symbolic link stays one.
///
/// A new file has the rights of the process's mask. One that replaces another keeps its owner,
/// group, mode and extended attributes; where the system does not let it, the old file stays beside
/// it as "NAME.old" (or ".old2" and so on) and a note says so.
class PendingFiles {
public:
    explicit PendingFiles(Disk& disk = systemDisk()) : m_disk(disk) {}
    PendingFiles(const PendingFiles&) = delete;
    PendingFiles& operator=(const PendingFiles&) = delete;
    ~PendingFiles();

    /// Writes the temporary file. Refuses a target that is there and is no regular file, and one
    /// that was added before under any name.
    Result<Done> add(const std::filesystem::path& path, std::string_view bytes);
    /// All files take their places, or none does. (Only on a file system that can neither exchange
    /// two files nor link them does one that has taken its place stay when the next cannot.)
    Result<Saved> commit();

private:
    struct File {
        std::filesystem::path path;          ///< as it was given
        std::filesystem::path target;        ///< what it means
        std::optional<struct stat> replaced; ///< the old file, where there is one
        std::filesystem::path temporary;     ///< of the new bytes, until they are placed
        int descriptor = -1;                 ///< of the temporary file, open until commit()
        std::vector<Message> losses;         ///< attributes that were not to be kept
        std::filesystem::path old;           ///< where the old file is since the new one is placed
        bool placed = false;
    };

    Result<Done> write(File& file, std::string_view bytes);
    Result<Done> close(File& file);
    Result<Done> place(File& file);
    Result<Done> placeNew(File& file);
    Result<Done> placeByLink(File& file);
    Result<Done> setAside(File& file);
    Result<Done> syncFolder(const File& file);
    Result<Done> placeAll();
    void undo(File& file);
    void discard(File& file);

    Disk& m_disk;
    std::vector<File> m_files;
};

/// A single file of that kind.
Result<Saved> writeFile(const std::filesystem::path& path, std::string_view bytes,
                        Disk& disk = systemDisk());

inline std::span<const std::byte> asBytes(std::string_view text)
{
    return std::as_bytes(std::span(text));
}

inline std::string_view asText(std::span<const std::byte> bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace orva
