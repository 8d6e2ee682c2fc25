#include "app/files/file_attributes.h"

#include <cerrno>
#include <cstring>
#include <optional>

#include <unistd.h>

namespace orva {

namespace {

using Losses = std::vector<Message>;

Message loss(const Message& what, const char* call)
{
    return Message(Text::NotKept, {what, failedCall(call, errno)});
}

/// Whether the owner and the group are those that were.
bool keepOwner(Disk& disk, const struct stat& was, const struct stat& is, int descriptor,
               Losses& losses)
{
    const bool owner = was.st_uid == is.st_uid;
    const bool group = was.st_gid == is.st_gid;
    if ((owner && group) || disk.fchown(descriptor, was.st_uid, was.st_gid) == 0)
        return true;
    const int error = errno;
    const bool groupOnly =
        !owner && (group || disk.fchown(descriptor, static_cast<uid_t>(-1), was.st_gid) == 0);
    const Text what = owner ? Text::TheGroup : groupOnly ? Text::TheOwner : Text::OwnerAndGroup;
    losses.push_back(Message(Text::NotKept, {Message(what), failedCall("fchown", error)}));
    return false;
}

/// What a call gives that tells its size when it is asked for 0 bytes; none when it fails.
template<typename Call>
std::optional<std::string> wholeOf(Call call)
{
    const ssize_t size = call(nullptr, 0);
    if (size < 0)
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size), '\0');
    const ssize_t taken = size == 0 ? 0 : call(bytes.data(), bytes.size());
    if (taken < 0)
        return std::nullopt;
    bytes.resize(static_cast<std::size_t>(taken));
    return bytes;
}

void keepExtended(Disk& disk, const Disk::Path& old, int descriptor, Losses& losses)
{
    const auto names =
        wholeOf([&](char* to, std::size_t most) { return disk.listxattr(old, to, most); });
    if (!names && errno != ENOTSUP)
        losses.push_back(loss(Message(Text::ExtendedAttributes), "listxattr"));
    for (const char* name = names ? names->c_str() : ""; *name; name += std::strlen(name) + 1) {
        const auto value =
            wholeOf([&](char* to, std::size_t most) { return disk.getxattr(old, name, to, most); });
        if (!value)
            losses.push_back(loss(name, "getxattr"));
        else if (disk.fsetxattr(descriptor, name, *value) != 0)
            losses.push_back(loss(name, "fsetxattr"));
    }
}

} // namespace

Losses keepAttributes(Disk& disk, const Disk::Path& old, const struct stat& was, int descriptor)
{
    Losses losses;
    struct stat is = {};
    if (disk.fstat(descriptor, is) != 0)
        return {loss(Message(Text::OwnerGroupMode), "fstat")};
    constexpr mode_t kRights = 0777;
    constexpr mode_t kAllBits = 07777;
    const bool owned = keepOwner(disk, was, is, descriptor, losses);
    keepExtended(disk, old, descriptor, losses); // as long as the mode lets us
    if (disk.fchmod(descriptor, was.st_mode & (owned ? kAllBits : kRights)) != 0)
        losses.push_back(loss(Message(Text::TheMode), "fchmod"));
    return losses;
}

} // namespace orva
