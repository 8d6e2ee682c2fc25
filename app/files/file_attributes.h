#pragma once

#include "app/files/disk.h"

namespace orva {

/// Gives the open file `descriptor` owner, group, mode and extended attributes of the file `old`
/// with the state `was`. What cannot be kept, each with the reason: "the owner (fchown: ...)"; no
/// rights are then given that go with it (set-user-id).
std::vector<Message> keepAttributes(Disk& disk, const Disk::Path& old, const struct stat& was,
                                    int descriptor);

} // namespace orva
