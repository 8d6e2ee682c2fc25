#include "lang/number_text.h"
#include "lang/string_table.h"
#include "model/line_array.h"

#include <cmath>

namespace orva {

namespace {

constexpr const char* kLineEnd = "\r\n";

std::string figure(double value)
{
    return plainText(value, 2);
}

} // namespace

std::string LineArray::GSGetPrintout(const TextOptions& options) const
{
    const auto text = [&](Text id) { return std::string(MlGetString(options.language, id)); };
    const auto length = [&](double metres) { return figure(metres * options.lengthFactor()); };
    const auto weightLine = [&](Text label, double kg) {
        return text(label) + figure(kg) + text(Text::SheetKg) + kLineEnd;
    };
    const std::string unit(lengthUnit(options));
    const SystemRecord& record = system();
    const float tilt = GFFirstAngle();

    std::string sheet;
    if (Mounting && tilt < 0)
        sheet += text(Text::UptiltNote) + kLineEnd + text(Text::UptiltStrap) + kLineEnd + kLineEnd;

    sheet += text(Text::SheetPickPoint) + length(CradleCoord[0]) + text(Text::SheetY) +
             length(CradleCoord[1]) + unit + '\t' + text(Text::SheetPin) +
             std::to_string(GIPinPoint() + 1) + kLineEnd;
    sheet += text(record.cradleAngleLabel) + figure(-tilt) + "°" + kLineEnd;

    for (const std::int16_t code :
         {record.TypeCodeGerade, record.TypeCodeSchräg, record.TypeCodeBass})
        if (const Text label = record.riggingText(*record.kindOf(code)).weightLabel;
            label != Text::None)
            sheet += weightLine(label, GFGetSpeakerByType(code));
    sheet += weightLine(record.cableWeightLabel, GFGetCableWeight());

    if (Mounting)
        sheet += text(record.frameWeightLine) + kLineEnd;
    sheet += weightLine(Text::SheetTotalWeight, totalWeightKg());
    if (!Mounting)
        sheet += kLineEnd;
    if (overloaded())
        sheet +=
            weightLine(Text::OverloadWarning, record.maxWeightKg) + std::string(67, '!') + kLineEnd;

    const std::array<float, 4> bounds = GFAGetBounds();
    sheet += text(Text::SheetHeight) + length(std::abs(bounds[1] - bounds[3])) + unit + kLineEnd +
             kLineEnd;

    const int boxes = boxCount();
    for (int line = 0; line < boxes; ++line) {
        const int position = Mounting ? line : boxes - 1 - line;
        if (line > 0) {
            const int lower = Mounting ? position : position + 1; // of the two that the joint joins
            const float splay = splayAngle(AllAngle[static_cast<std::size_t>(lower)]);
            sheet += "\t\t" + text(Text::SheetAngle) + figure(splay) + "°" + kLineEnd;
        }
        if (const std::optional<BoxKind> kind = kindAt(position)) {
            const RiggingText& names = record.riggingText(*kind);
            sheet += text(Text::SheetBox) + std::to_string(position + 1) + '\t' +
                     std::string(names.model) +
                     std::string(MlGetString(options.language, names.kind)) + kLineEnd;
        }
    }
    return sheet;
}

} // namespace orva
