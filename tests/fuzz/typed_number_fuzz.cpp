// A number as somebody types it is finite, stands in what was typed, and blanks round it mean
// nothing.
#include "lang/typed_number.h"
#include "require.h"

#include <cmath>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace orva;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string wide = " " + text + " ";
    const auto typed = typedNumber(text);
    const auto same = typedNumber(wide);
    require(typed.has_value() == same.has_value());
    require(!typed || (std::isfinite(typed->value) && typed->value == same->value &&
                       text.find(typed->unit) != std::string::npos));
    for (const auto figure : {typedFigure(text), typedAngle(text)})
        require(!figure || (typed && *figure == typed->value));
    return 0;
}
