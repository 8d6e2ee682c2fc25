#include "app/state/recent_files.h"

#include <QString>
#include <algorithm>

namespace orva {

namespace {

constexpr std::string_view kSection = "MRUFiles";

bool sameFile(const std::string& a, const std::string& b)
{
    return QString::fromStdString(a).compare(QString::fromStdString(b), Qt::CaseInsensitive) == 0;
}

} // namespace

void RecentFiles::AddToRecentFiles(const std::string& path)
{
    const auto known = std::find_if(m_paths.begin(), m_paths.end(), [&](const std::string& listed) {
        return sameFile(listed, path);
    });
    if (known != m_paths.end())
        m_paths.erase(known);
    m_paths.insert(m_paths.begin(), path);
    m_paths.resize(std::min(m_paths.size(), kMost));
}

void RecentFiles::remove(const std::string& path)
{
    std::erase_if(m_paths, [&](const std::string& listed) { return sameFile(listed, path); });
}

void RecentFiles::LoadRecentFiles(const SettingsStore& store)
{
    std::vector<std::string> stored;
    for (std::size_t i = 0; i < kMost; ++i) {
        const std::string path = store.value(kSection, std::to_string(i)).value_or("");
        if (path.empty())
            break;
        stored.push_back(path);
    }
    m_paths.clear();
    for (auto path = stored.rbegin(); path != stored.rend(); ++path)
        AddToRecentFiles(*path);
}

void RecentFiles::SaveRecentFiles(SettingsStore& store) const
{
    for (std::size_t i = 0; i < m_paths.size(); ++i)
        store.setValue(kSection, std::to_string(i), m_paths[i]);
}

void RecentFiles::change(SettingsStore& store, const std::function<void(RecentFiles&)>& edit)
{
    // What cannot be stored is told at the end of the program.
    (void)store.exchange([&] {
        LoadRecentFiles(store);
        const std::size_t before = m_paths.size();
        edit(*this);
        SaveRecentFiles(store);
        for (std::size_t removed = m_paths.size(); removed < before; ++removed)
            store.setValue(kSection, std::to_string(removed), "");
    });
}

} // namespace orva
