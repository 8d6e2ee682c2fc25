// Writes the sample projects theatre.lad and club.lad into a folder.
#include "app/state/application_state.h"
#include "model/vector_math.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <initializer_list>
#include <iostream>
#include <vector>

namespace {

using namespace orva;

/// The figure that a user would type: two decimals.
float typed(double value)
{
    return static_cast<float>(std::round(value * 100) / 100);
}

SegmentFigures area(double x1, double y1, double x2, double y2)
{
    return {typed(x1),
            typed(y1),
            typed(x2),
            typed(y2),
            typed(VectorAngle180(x2 - x1, y2 - y1)),
            typed(std::hypot(x2 - x1, y2 - y1))};
}

/// The array's boxes all of one kind or as `types` says, with these splay angles from the top.
void setBoxes(LineArray& array, const std::vector<std::int16_t>& types,
              const std::vector<std::int16_t>& splay, std::int16_t pin)
{
    LineArray::Positions allTypes{};
    LineArray::Positions allAngles{};
    std::copy(types.begin(), types.end(), allTypes.begin());
    std::copy(splay.begin(), splay.end(), allAngles.begin() + 1);
    allAngles[0] = pin;
    const auto trapezoidal = static_cast<std::int16_t>(std::count(types.begin(), types.end(), 1));
    const auto boxes = static_cast<std::int16_t>(types.size());
    array.GBSetAllType(allTypes);
    array.GBSetAllAngle(allAngles);
    array.GBSetNumSchräg(trapezoidal);
    array.GBSetNumGerade(static_cast<std::int16_t>(boxes - trapezoidal));
    array.GBSetNumSpeakers(boxes);
    array.GFACalcCOM();
}

struct Venue {
    FloatPair dims;
    FloatPair foh;
    SegmentFigures area1;
    SegmentFigures area2;
    SegmentFigures area3;
    const char* name;
    const char* author;
    const char* comment;
};

bool setVenue(Room& room, const Venue& venue)
{
    return room.GBSetRoomDims(venue.dims) && room.GBSetFOH(venue.foh) && room.GBSetNumAreas(3) &&
           room.GBSetAudienceArea1(venue.area1) && room.GBSetAudienceArea2(venue.area2) &&
           room.GBSetAudienceArea3(venue.area3) && room.GBSetProjectName(venue.name) &&
           room.GBSetAuthorName(venue.author) && room.GBSetComment(venue.comment);
}

bool write(const Project& project, const std::filesystem::path& file)
{
    const Result<Saved> written = saveProject(project, file);
    if (!written)
        std::cerr << "make_examples: " << written.error().text() << '\n';
    return static_cast<bool>(written);
}

bool writeTheatre(const std::filesystem::path& file)
{
    Project project = newProject(kStandardSystem);
    project.array.GBSetCradleCoord({1.5F, 11.3F});
    project.array.GBSetBassBoxCoord({1.5F, 0});
    setBoxes(project.array, {0, 0, 0, 0, 0, 1, 0, 1, 1, 1, 1, 1}, {0, 0, 0, 0, 1, 2, 2, 4, 5, 6, 6},
             4);
    return setVenue(project.room,
                    {.dims = {34, 13},
                     .foh = {22, 3.1F},
                     .area1 = area(6, 1.2, 16, 1.2),
                     .area2 = area(16, 1.2, 29, 3.9),
                     .area3 = area(21, 7, 32, 10.3),
                     .name = "Town theatre, main hall",
                     .author = "ORVA",
                     .comment = "Sample project: stalls, rising rear stalls and balcony; "
                                "twelve boxes of the standard system over the portal."}) &&
           write(project, file);
}

bool writeClub(const std::filesystem::path& file)
{
    Project project = newProject(kCompactSystem);
    project.array.GBSetCradleCoord({0.5F, 4.6F});
    project.array.GBSetBassBoxCoord({0.5F, 0});
    setBoxes(project.array, {0, 0, 0, 0, 0, 0}, {1, 2, 4, 6, 6}, 4);
    return setVenue(project.room,
                    {.dims = {22, 6},
                     .foh = {14, 2.1F},
                     .area1 = area(2.5, 1.7, 12, 1.7),
                     .area2 = area(12, 2.1, 17, 2.1),
                     .area3 = area(15, 3.9, 20.5, 4.3),
                     .name = "Harbour club",
                     .author = "ORVA",
                     .comment = "Sample project: dance floor, raised rear and gallery; "
                                "six boxes of the compact system."}) &&
           write(project, file);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: make_examples FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    return writeTheatre(folder / "theatre.lad") && writeClub(folder / "club.lad") ? 0 : 1;
}
