// Every stroke of every drawing, in pixels, as tests/drawing/expected has it.
#include "drawing/array_drawing.h"
#include "drawing/curve_drawing.h"
#include "drawing/room_view.h"
#include "drawing/spectrum_drawing.h"
#include "drawing/sub_array_drawing.h"
#include "drawing/triangle_drawing.h"
#include "expected_text.h"
#include "lang/number_text.h"
#include "model/project_file.h"
#include "recording_surface.h"

#include <cstdio>

namespace orva {
namespace {

Project example(const std::string& name)
{
    const std::string file = ORVA_SOURCE_DIR "/examples/" + name + ".lad";
    const std::string bytes = contentOf(file);
    return readProject(std::as_bytes(std::span(bytes)), file)->project;
}

std::string figure(double value)
{
    constexpr double kOffTies = 3e-7; // else the last bit of a sum would decide how it is rounded
    return ' ' + fixedText(value + kOffTies, 2);
}

std::string hex(Colour colour)
{
    std::array<char, 8> digits{};
    (void)std::snprintf(digits.data(), digits.size(), "%06x", static_cast<unsigned>(colour));
    return ' ' + std::string(digits.data());
}

/// A stroke in pixels; of a long line its ends and its middle.
std::string strokeOf(const RecordingSurface::Call& call, const RecordingSurface& surface)
{
    std::string said = call.what + hex(call.colour) + (call.size == 0 ? "" : figure(call.size));
    const std::size_t count = call.points.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (count > 8 && i != 0 && i != count / 2 && i + 1 != count)
            continue;
        const Point at = call.points[i];
        said += figure((at.x - call.scale.left) / call.scale.width * surface.pixelWidth()) +
                figure((at.y - call.scale.top) / call.scale.height * surface.pixelHeight());
    }
    return said + (count > 8 ? " of " + std::to_string(count) : "") + ' ' + call.text + '\n';
}

std::string drawingOf(const RecordingSurface& surface)
{
    std::string said;
    for (const RecordingSurface::Call& call : surface.calls)
        said += strokeOf(call, surface);
    if (surface.cellColours.empty())
        return said;
    said += "cells " + std::to_string(surface.columnEdges.size()) + " x " +
            std::to_string(surface.rowEdges.size()) + figure(surface.columnEdges.front()) +
            figure(surface.columnEdges.back()) + figure(surface.rowEdges.front()) +
            figure(surface.rowEdges.back());
    for (std::size_t i = 0; i < 12; ++i)
        said += hex(surface.cellColours[i * (surface.cellColours.size() - 1) / 11]);
    return said + '\n';
}

using Draw = std::function<void(DrawingSurface&)>;

std::string drawn(double width, double height, const Draw& draw)
{
    RecordingSurface surface(width, height);
    draw(surface);
    return drawingOf(surface);
}

const DrawingOptions kFeet{{Language::German, false}, 10, 1, 3};

TEST(ExpectedDrawing, Arrays)
{
    std::string said;
    for (const char* name : {"theatre", "club"})
        for (const DrawingOptions& options : {DrawingOptions{}, kFeet})
            said += drawn(300, 500, [&](DrawingSurface& surface) {
                DrawRiggingView(surface, example(name).array, options);
            });
    LineArray stack = example("theatre").array;
    stack.GBSetMounting(false);
    stack.GFACalcCOM();
    said += drawn(300, 300, [&](DrawingSurface& surface) { DrawRiggingView(surface, stack, {}); });
    compareWithKept("drawing/expected/arrays.txt", said);
}

TEST(ExpectedDrawing, Rooms)
{
    const Project project = example("club");
    std::string said;
    RoomViewContent content;
    content.bassBox = {true, {3, 2}, true};
    content.fohDb = 101.26F;
    for (std::size_t area = 0; area < 3; ++area)
        content.profiles.push_back({98, 101, 99.5F - static_cast<float>(area), 103});
    const auto draw = [&](const DrawingOptions& options) {
        said += drawn(800, 400, [&](DrawingSurface& surface) {
            DrawRoomView(surface, project.room, project.array, content, 344, options);
        });
    };
    draw({});
    content.bassBox.showDelay = false;
    content.aWeighted = true;
    draw(kFeet);

    const MapGrid grid = *PrepareMapGrid(project.room, 1, 1);
    SummedMap map{{}, 110, 83};
    for (int row = 0; row < grid.rows; ++row)
        for (int column = 0; column < grid.columns; ++column)
            map.levels.push_back(110 - static_cast<float>(column) - 0.7F * static_cast<float>(row));
    content = {};
    content.grid = &grid;
    content.map = &map;
    content.audienceMeanDb = 99;
    DrawingOptions even;
    even.map = {MapColours::Even, MapRange::Audience, true};
    draw({});
    draw(even);
    for (float& level : map.levels)
        level -= 100;
    map.max -= 100;
    map.min -= 100;
    content.figures = MapFigures::Differences;
    draw({});
    content.figures = MapFigures::Evenness;
    draw(even);
    compareWithKept("drawing/expected/rooms.txt", said);
}

TEST(ExpectedDrawing, Curves)
{
    std::string said;
    CurvePicture picture{1, 21.7, {}, {}};
    for (const int area : {1, 2}) {
        Curve curve{{}, area == 1 ? Role::Curve : Role::Result1, 1.0 * area, 3 * (area - 1), area};
        for (int point = 0; point < 180; ++point)
            curve.levels.push_back(99 + static_cast<float>(area) -
                                   0.03F * static_cast<float>(point % 100));
        curve.levels[90] = -INFINITY;
        picture.curves.push_back(curve);
    }
    const auto draw = [&](const DrawingOptions& options) {
        said += drawn(420, 180,
                      [&](DrawingSurface& surface) { DrawCurves(surface, picture, options); });
    };
    draw({});
    picture.fitLine = {{2, 98}, {18, 95}};
    picture.range = LevelRange{};
    picture.range->add(picture.curves[0].levels);
    for (float& level : picture.curves[0].levels)
        level += 1.5F;
    picture.range->add(picture.curves[0].levels);
    picture.detailed = true;
    draw(kFeet);
    picture.baseline = true;
    draw({});
    picture.baseline = false;
    picture.curves.resize(1);
    picture.curves[0].levels.resize(60); // there is room beside it
    draw({});
    compareWithKept("drawing/expected/curves.txt", said);
}

TEST(ExpectedDrawing, SpectrumAndStrip)
{
    std::vector<Spectrum> spectra{{"FOH", {}, Role::Result1}, {"12.3 m", {}, Role::Result2}};
    Strip strip;
    for (std::size_t band = 0; band < kBands; ++band) {
        const auto up = static_cast<float>(band);
        spectra[0].levels[band] = 80 + up;
        spectra[1].levels[band] = band == 7 ? -INFINITY : 95 - up / 2;
        for (int point = 0; point < 30; ++point)
            strip.levels[band].push_back(90 + up - 0.2F * static_cast<float>(point));
    }
    strip.levels[3].assign(30, -INFINITY);
    strip = Strip::of(strip.levels, 21.7, "Area 1");
    std::string said;
    for (const std::size_t count : {0, 1, 2})
        said += drawn(420, 180, [&](DrawingSurface& surface) {
            DrawSpectrum(surface, std::span(spectra).first(count), "Point somewhere");
        });
    for (const DrawingOptions& options : {DrawingOptions{}, kFeet})
        said +=
            drawn(420, 180, [&](DrawingSurface& surface) { DrawStrip(surface, strip, options); });
    for (int x = 5; x < 420; x += 37)
        for (int y = 4; y < 180; y += 31)
            if (const auto place = stripPlaceAt(strip, {1.0 * x, 1.0 * y}, 420, 180))
                said += std::to_string(place->band) + ',' + std::to_string(place->point) + ' ';
    compareWithKept("drawing/expected/spectra.txt", said);
}

TEST(ExpectedDrawing, SubArrayAndTriangles)
{
    SubArray subArray;
    subArray.SubPos = {-5, -4, -3, -2, -1, 1, 2, 3, 4, 6};
    subArray.openingAngleDeg = 70;
    std::string said = drawn(600, 300, [&](DrawingSurface& surface) {
        DrawSubArray(surface, subArray, subArrayFigures(subArray, 344));
    });
    const std::array<double, 3> triangles[] = {
        {3, 4, 5}, {2, 2, 0.4}, {10, 4, 5}, {1, 0, 5}, {6, 3, 8}};
    for (const auto& sides : triangles)
        for (const DrawingOptions& options : {DrawingOptions{}, kFeet})
            said += drawn(200, 150, [&](DrawingSurface& surface) {
                DrawTriangle(surface, sides[0], sides[1], sides[2], options);
            });
    compareWithKept("drawing/expected/calculators.txt", said);
}

} // namespace
} // namespace orva
