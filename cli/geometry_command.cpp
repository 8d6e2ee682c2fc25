#include "cli/json.h"
#include "cli/prediction.h"

namespace orva {

namespace {

/// One list of figures per box, `perBox` of them, from an array that holds 32 of each in a row;
/// null at a position of unknown code.
template<std::size_t n>
Json perBox(const LineArray& array, const std::array<float, n>& figures)
{
    Json list = Json::array();
    for (int i = 0; i < array.boxCount(); ++i) {
        Json box;
        if (array.kindAt(i))
            for (auto at = static_cast<std::size_t>(i); at < n; at += LineArray::kPositions)
                box.push_back(jsonNumber(figures[at]));
        list.push_back(box);
    }
    return list;
}

Result<Done> printGeometry(const ProjectOptions& options, const Console& console)
{
    const Result<OpenProject> state = openForCalculation(options.file);
    if (!state)
        return state.error();
    LineArray array = state->project.array;
    const FloatPair centerOfMass = array.GFACalcCOM();
    const SystemRecord& system = array.system();

    Json pinAngles = Json::array();
    for (std::int16_t pin = 0; pin < system.cradle.pinCount(); ++pin)
        pinAngles.push_back(jsonNumber(array.GFAngleFromPin(pin)));

    const Json weight = {
        {"speakers", jsonNumber(array.GFGetSpeakerWeight())},
        {"straight", jsonNumber(array.GFGetSpeakerByType(system.TypeCodeGerade))},
        {"trapezoidal", jsonNumber(array.GFGetSpeakerByType(system.TypeCodeSchräg))},
        {"bass", jsonNumber(array.GFGetSpeakerByType(system.TypeCodeBass))},
        {"cable", jsonNumber(array.GFGetCableWeight())}};
    PendingFiles files;
    Json result = {{"firstAngle", jsonNumber(array.GFFirstAngle())},
                   {"pinPoint", array.GIPinPoint()},
                   {"pinRemainder", jsonNumber(array.GFPinPointRemainder())},
                   {"pinAngles", pinAngles},
                   {"centerOfMass", jsonNumbers(centerOfMass)},
                   {"bounds", jsonNumbers(array.GFAGetBounds())},
                   {"sources", perBox(array, array.GFAGetOriginPTSandAng(true))},
                   {"boxCentersOfGravity", perBox(array, array.GFAGetCOMPTS())},
                   {"angleBounds", array.IAGetAngleBounds()},
                   {"weight", weight}};
    addWarnings(result, state->contradictions);
    return deliver(console, jsonText(result), files, state->warnings);
}

} // namespace

void addGeometryCommand(CLI::App& program, Work& work)
{
    addProjectCommand(program, work, "geometry",
                      "print tilts, sources, centre of gravity, bounds, pins and weights as JSON",
                      printGeometry);
}

} // namespace orva
