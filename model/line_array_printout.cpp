#include "lang/number_text.h"
#include "lang/string_table.h"
#include "model/line_array.h"

#include <cmath>

namespace orva {

namespace {

constexpr const char* kLineEnd = "\r\n";

/// Rows of the string table.
enum Row {
    kUptiltNote = 177,
    kUptiltMeans = 178,
    kPickPointX = 179,
    kPickPointY = 180,
    kPinPoint = 181,
    kTotalWeight = 187,
    kHeight = 188,
    kBox = 189,
    kAngle = 190,
    kTooHeavy = 249,
    kKilograms = 250
};

std::string figure(double value)
{
    return plainText(value, 2);
}

} // namespace

std::string LineArray::GSGetPrintout(const TextOptions& options) const
{
    const auto text = [&](int id) { return std::string(MlGetString(options.language, id)); };
    const auto length = [&](double metres) { return figure(metres * options.lengthFactor()); };
    const auto weightLine = [&](int label, double kg) {
        return text(label) + figure(kg) + text(kKilograms) + kLineEnd;
    };
    const std::string unit(lengthUnit(options));
    const SystemRecord& record = system();
    const float tilt = GFFirstAngle();

    std::string sheet;
    if (Mounting && tilt < 0)
        sheet += text(kUptiltNote) + kLineEnd + text(kUptiltMeans) + kLineEnd + kLineEnd;

    sheet += text(kPickPointX) + length(CradleCoord[0]) + text(kPickPointY) +
             length(CradleCoord[1]) + unit + '\t' + text(kPinPoint) +
             std::to_string(GIPinPoint() + 1) + kLineEnd;
    sheet += text(record.cradleAngleLabel) + figure(-tilt) + "°" + kLineEnd;

    for (const std::int16_t code :
         {record.TypeCodeGerade, record.TypeCodeSchräg, record.TypeCodeBass})
        if (const int label = record.riggingText(*record.kindOf(code)).weightLabel)
            sheet += weightLine(label, GFGetSpeakerByType(code));
    sheet += weightLine(record.cableWeightLabel, GFGetCableWeight());

    const double frame = Mounting ? record.frameWeightKg : 0;
    const double total = roundedTo(GFGetSpeakerWeight() + frame + GFGetCableWeight(), 2);
    if (Mounting)
        sheet += text(record.frameWeightLine) + kLineEnd;
    sheet += weightLine(kTotalWeight, total);
    if (!Mounting)
        sheet += kLineEnd;
    if (total > record.maxWeightKg)
        sheet += weightLine(kTooHeavy, record.maxWeightKg) + std::string(67, '!') + kLineEnd;

    const std::array<float, 4> bounds = GFAGetBounds();
    sheet += text(kHeight) + length(std::abs(bounds[1] - bounds[3])) + unit + kLineEnd + kLineEnd;

    const int boxes = boxCount();
    for (int line = 0; line < boxes; ++line) {
        const int position = Mounting ? line : boxes - 1 - line;
        if (line > 0) {
            const int lower = Mounting ? position : position + 1; // of the two that the joint joins
            const float splay = splayAngle(AllAngle[static_cast<std::size_t>(lower)]);
            sheet += "\t\t" + text(kAngle) + figure(splay) + "°" + kLineEnd;
        }
        if (const std::optional<BoxKind> kind = kindAt(position)) {
            const RiggingText& names = record.riggingText(*kind);
            sheet += text(kBox) + std::to_string(position + 1) + '\t' + std::string(names.model) +
                     (names.kind ? text(names.kind) : std::string()) + kLineEnd;
        }
    }
    return sheet;
}

} // namespace orva
