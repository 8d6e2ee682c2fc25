// Whatever the store of settings holds, what is loaded from it is within its ranges: it is stored
// and loaded again as the same.
#include "app/state/memory_settings.h"
#include "require.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace orva;
    MemorySettings store;
    SaveSettings({}, store);
    std::string_view text(reinterpret_cast<const char*>(data), size);
    for (auto& [key, value] : store.values) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        value = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    const Settings loaded = LoadSettings(store);
    for (const float figure : {loaded.SPLResolution, loaded.Temperature, loaded.GridUnit_Room,
                               loaded.GridUnit_Rigging, loaded.GridUnit_Area, loaded.Humidity})
        require(std::isfinite(figure));
    MemorySettings again;
    SaveSettings(loaded, again);
    require(LoadSettings(again) == loaded);
    MemorySettings changed;
    SaveChangedSettings(loaded, {}, changed);
    require(LoadSettings(changed) == loaded && sameButForLooks(loaded, loaded));
    return 0;
}
