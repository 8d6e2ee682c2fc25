// What the reader of search results takes holds what it promises, and can be joined.
#include "optimize/search_part.h"

#include <cmath>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace orva;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto read = readPart(text, "fuzz.json");
    if (!read) {
        if (read.error().what.text().empty() || read.error().where != "fuzz.json")
            std::abort();
        return 0;
    }
    const SearchPart& part = read->part;
    bool sound = !part.best.empty() && part.best.size() <= Ranking::kMost && part.tested > 0 &&
                 part.first + part.tested <= read->configurations;
    for (const Ranked& entry : part.best) {
        sound = sound && std::isfinite(entry.rms) && entry.rms >= 0 && entry.number >= part.first &&
                entry.number - part.first < part.tested;
        for (int joint = read->range.first; joint <= read->range.last; ++joint) {
            const std::int16_t angle = entry.angles.at(static_cast<std::size_t>(joint) + 1);
            sound = sound && angle >= 0 && angle <= 6;
        }
    }
    if (!sound || !read->belongsTo(*read) || !mergeParts({part}))
        std::abort();
    return 0;
}
