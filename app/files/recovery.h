#pragma once

#include "app/files/file_access.h"
#include "document/document.h"

#include <chrono>

namespace orva {

/// A file that one process holds locked as long as it lives, whatever ends it.
class HeldLock {
public:
    HeldLock() = default;
    HeldLock(HeldLock&& other) noexcept;
    HeldLock& operator=(HeldLock&& other) noexcept;
    ~HeldLock();

    /// Makes the file where it is not there. Holds nothing where another process holds it, or
    /// where there can be no file.
    static HeldLock take(const std::filesystem::path& file);
    explicit operator bool() const { return m_descriptor >= 0; }
    /// Ends it and removes the file.
    void remove();

private:
    std::filesystem::path m_file;
    int m_descriptor = -1;
};

/// A state that is not saved, and its file, as they lie in a recovery file.
struct Unsaved {
    DocumentState state;
    DocumentFile file;
};

/// With a check that finds damage.
std::string recoveryBytes(const Unsaved& unsaved);
Result<Unsaved> readRecovery(std::string_view bytes, std::string_view name);

/// The recovery file of one window: it is this process's own until its end, and stays behind when
/// that comes unasked.
class RecoveryFile {
public:
    /// In that folder, which is made when need be.
    explicit RecoveryFile(std::filesystem::path folder) : m_folder(std::move(folder)) {}
    /// Removes it: a proper end.
    ~RecoveryFile() { remove(); }
    RecoveryFile(const RecoveryFile&) = delete;
    RecoveryFile& operator=(const RecoveryFile&) = delete;

    Result<Done> write(std::string_view bytes);
    void remove();

private:
    Result<Done> prepare();

    std::filesystem::path m_folder;
    HeldLock m_lock;
    std::filesystem::path m_file;
};

/// What a process left behind that is gone. Nobody else is offered it as long as this lives.
struct LeftBehind {
    HeldLock lock;
    std::filesystem::path file;
    std::chrono::system_clock::time_point written;
    Unsaved unsaved;
};

struct Found {
    std::vector<LeftBehind> left; ///< the latest first
    std::vector<Message> damaged; ///< files that could not be read and where they are now
};

/// Looks for such files; rests of proper ends are removed. Damaged ones get the ending ".damaged".
Found findLeftBehind(const std::filesystem::path& folder);

/// It has been recovered, or is not wanted.
void removeLeftBehind(LeftBehind& left);

} // namespace orva
