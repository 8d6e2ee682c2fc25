// Whatever the store of settings holds, what is loaded from it is within its ranges: it is stored
// and loaded again as the same.
#include "app/state/memory_settings.h"
#include "require.h"

#include <cmath>
#include <utility>
#include <vector>

namespace {

using namespace orva;

/// A store that expects its keys in the order in which they were first set: three times as many
/// inputs as with one that looks for names.
class OrderedSettings final : public SettingsStore {
public:
    std::optional<std::string> value(std::string_view, std::string_view key) const override
    {
        return rows[place(key)].second;
    }
    void setValue(std::string_view, std::string_view key, std::string_view text) override
    {
        if (m_first)
            rows.emplace_back(key, text);
        else
            rows[place(key)].second = text;
    }
    Result<Done> flush() override { return Done{}; }

    /// The keys begin again; from now on there are no others.
    void begin()
    {
        m_first = false;
        m_next = 0;
    }

    std::vector<std::pair<std::string, std::string>> rows; ///< key and text

private:
    std::size_t place(std::string_view key) const
    {
        require(m_next < rows.size() && rows[m_next].first == key);
        return m_next++;
    }

    bool m_first = true;
    mutable std::size_t m_next = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static OrderedSettings store;
    if (store.rows.empty())
        SaveSettings({}, store);
    std::string_view text(reinterpret_cast<const char*>(data), size);
    for (auto& [key, value] : store.rows) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        value = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    store.begin();
    const Settings loaded = LoadSettings(store);
    for (const float figure : {loaded.SPLResolution, loaded.Temperature, loaded.GridUnit_Room,
                               loaded.GridUnit_Rigging, loaded.GridUnit_Area, loaded.Humidity})
        require(std::isfinite(figure));
    store.begin();
    SaveSettings(loaded, store);
    store.begin();
    require(LoadSettings(store) == loaded && sameButForLooks(loaded, loaded));
    if (size % 8 != 0) // the rest is not about reading, and slow
        return 0;
    MemorySettings changed;
    SaveChangedSettings(loaded, {}, changed);
    require(LoadSettings(changed) == loaded);
    return 0;
}
