// What the project reader takes must be written and read again as the same project, and its array
// must stand every calculation.
#include "model/project_file.h"
#include "require.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace orva;
    auto loaded = readProject(std::as_bytes(std::span(data, size)), "fuzz.lad");
    if (!loaded) {
        require(!loaded.error().what.text().empty() && !loaded.error().where.empty());
        return 0;
    }
    Project& project = loaded->project;
    const auto again = readProject(writeProject(project), "again.lad");
    require(again && again->version == 2 && again->project == project);

    LineArray& array = project.array;
    const bool calculable = !array.fault();
    const int boxes = array.GIGetNumSpeakers() + array.GIGetNumBass();
    require(calculable == (!array.angleFault() && boxes <= LineArray::kPositions));
    const FloatPair center = array.GFACalcCOM();
    require(std::isfinite(center[0]) && std::isfinite(center[1]));
    (void)array.GFAGetOriginPTSandAng(true);
    (void)array.GFAGetBounds();
    (void)array.GFAGetCOMPTS();
    require(array.IAGetAngleBounds().size() + 1 == static_cast<std::size_t>(array.boxCount()));
    require(!array.GSGetPrintout({Language::German, false}).empty());
    require(project.room.GSGetProjectName().size() >= 50);
    return 0;
}
