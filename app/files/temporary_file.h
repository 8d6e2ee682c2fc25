#pragma once

#include "app/files/disk.h"

#include <optional>

namespace orva {

/// Names of files that wait beside the file `name` for its place: "name.XXXXXX", of which a digit
/// is the `attempt` (0 to 9), four characters the process and a capital letter the check of it all.
constexpr int kTemporaryAttempts = 10;
std::string temporaryName(const std::string& name, pid_t process, int attempt);

/// The process that made a temporary file of `name`; none for any other file.
std::optional<pid_t> temporaryWriter(std::string_view file, const std::string& name);

/// A new temporary file beside `target`, locked. -1 and `errno` when there can be none.
int makeTemporary(Disk& disk, const Disk::Path& target, mode_t mode, Disk::Path& made);

/// A name for a temporary file beside `target` that is not there.
std::optional<Disk::Path> freeTemporary(Disk& disk, const Disk::Path& target);

/// Removes the temporary files of `target` whose process is gone: rests of killed saves.
void removeRests(Disk& disk, const Disk::Path& target);

} // namespace orva
