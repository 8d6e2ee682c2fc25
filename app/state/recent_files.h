#pragma once

#include "app/state/settings.h"

#include <string>
#include <vector>

namespace orva {

/// The project files used last, the latest first, as their full paths. Paths that differ only in
/// letter case are one file.
class RecentFiles {
public:
    static constexpr std::size_t kMost = 5;

    const std::vector<std::string>& paths() const { return m_paths; }

    /// Puts a path at the top; the last of too many drops out.
    void AddToRecentFiles(const std::string& path);

    void remove(const std::string& path);

    /// Up to the first missing or empty one of the stored paths, in their order.
    void LoadRecentFiles(const SettingsStore& store);
    /// Stored paths beyond those of the list stay as they are.
    void SaveRecentFiles(SettingsStore& store) const;
    /// Changes the stored list, which others may have changed, and takes it over.
    void change(SettingsStore& store, const std::function<void(RecentFiles&)>& edit);

private:
    std::vector<std::string> m_paths;
};

} // namespace orva
