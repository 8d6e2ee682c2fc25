#include "drawing/curve_drawing.h"

#include "drawing/scale.h"
#include "engine/area_figures.h"
#include "lang/message.h"
#include "lang/number_text.h"
#include "lang/string_table.h"
#include "model/vector_math.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace orva {

namespace {

constexpr double kLeftMargin = 50;
constexpr double kRightMargin = 20;

struct Extremes {
    float smallest;
    float largest;
};

/// Of the finite levels; none where there is none.
std::optional<Extremes> extremesOf(std::span<const float> levels, std::optional<Extremes> known)
{
    for (const float level : levels) {
        if (!std::isfinite(level))
            continue;
        if (!known)
            known = {level, level};
        known->smallest = std::min(known->smallest, level);
        known->largest = std::max(known->largest, level);
    }
    return known;
}

/// Draws the runs of finite levels; `at` says where a level of a given number lies.
template<typename At>
void drawRuns(DrawingSurface& surface, std::span<const float> levels, Role colour, double width,
              At at, int dash = 0)
{
    std::vector<Point> run;
    const auto length = static_cast<std::size_t>(dash);
    for (std::size_t i = 0; i <= levels.size(); ++i) {
        const bool drawn = length == 0 || i / length % 2 == 0;
        if (i < levels.size() && drawn && std::isfinite(levels[i])) {
            run.push_back(at(i, levels[i]));
            continue;
        }
        if (!run.empty())
            surface.polyline(run, colour, width);
        run.clear();
    }
}

} // namespace

double curveEnd(double pictureWidth)
{
    return std::max(1.0, pictureWidth - kLeftMargin - kRightMargin);
}

int curvePoints(double pictureWidth)
{
    return static_cast<int>(curveEnd(pictureWidth) / 2 + 1);
}

CurveScale CurveScale::of(std::span<const float> levels)
{
    const Extremes extremes = extremesOf(levels, std::nullopt).value_or(Extremes{0, 0});
    const double bottom = std::floor(extremes.smallest / 10) * 10;
    const double top = std::ceil(extremes.largest / 10) * 10;
    return {bottom, std::max(top, bottom + 10)};
}

void LevelRange::add(std::span<const float> levels)
{
    if (least.empty())
        least = largest = {levels.begin(), levels.end()};
    for (std::size_t point = 0; point < levels.size(); ++point) {
        least[point] = std::min(least[point], levels[point]);
        largest[point] = std::max(largest[point], levels[point]);
    }
}

CurveScale CurvePicture::scale() const
{
    std::vector<float> all;
    for (const Curve& curve : curves)
        all.insert(all.end(), curve.levels.begin(), curve.levels.end());
    if (range)
        for (const std::vector<float>* edge : {&range->least, &range->largest})
            all.insert(all.end(), edge->begin(), edge->end());
    return CurveScale::of(all);
}

CurvePoint CurvePicture::placeAt(Point point, double pictureWidth) const
{
    return {point.x / curveEnd(pictureWidth) * lengthM, scale().bottomDb - point.y};
}

Point CurvePicture::pointAt(CurvePoint place, double pictureWidth) const
{
    const double pixelsPerMetre = lengthM > 0 ? curveEnd(pictureWidth) / lengthM : 0;
    return {place.alongM * pixelsPerMetre, scale().bottomDb - place.levelDb};
}

namespace {

/// Distances under the ticks, as many as fit.
void drawDistances(DrawingSurface& surface, const CurvePicture& picture,
                   const DrawingOptions& options)
{
    const double end = curveEnd(surface.pixelWidth());
    const double shown = picture.lengthM * options.text.lengthFactor();
    if (!(shown > 0))
        return;
    for (const double at : labelledDistances(surface, shown, end, options)) {
        const std::string label = plainText(at, 1);
        surface.print({at / shown * end - surface.textSize(label).x / 2, 7 * surface.pixelY()},
                      label);
    }
}

/// Mean with 3 dB to either side, largest and smallest level of a curve.
void drawSpread(DrawingSurface& surface, const Curve& curve, double bottomDb,
                const DrawingOptions& options)
{
    const auto least = std::min_element(curve.levels.begin(), curve.levels.end());
    const auto largest = std::max_element(curve.levels.begin(), curve.levels.end());
    if (least == curve.levels.end() || !std::isfinite(*least))
        return;
    const double mean = areaFigures(curve.levels)->mean;
    const double right = 2 * static_cast<double>(curve.levels.size());
    const double edge = curveEnd(surface.pixelWidth()) + kRightMargin;
    for (const double over : {-3.0, 0.0, 3.0})
        surface.line({0, bottomDb - mean - over}, {right, bottomDb - mean - over}, Role::Leader,
                     over == 0 ? 2 : 1);
    const std::string text =
        Message(Text::MeanOfArea, {fixedText(mean, 1)}).text(options.text.language);
    const Point size = surface.textSize(text);
    // beside the curve where there is room, else above the line
    if (right + size.x + 4 < edge)
        surface.print({right + 4, bottomDb - mean - size.y / 2}, text);
    else
        surface.print({right - size.x, bottomDb - mean - 1.1 * size.y}, text);
    for (const auto extreme : {largest, least}) {
        const Point at{2 * static_cast<double>(extreme - curve.levels.begin()),
                       bottomDb - *extreme};
        const std::string level = fixedText(*extreme, 1);
        surface.line({at.x, at.y - 3 * surface.pixelY()}, {at.x, at.y + 3 * surface.pixelY()},
                     curve.colour, 2);
        const Point figure = surface.textSize(level);
        surface.print({at.x + figure.x + 4 < edge ? at.x + 4 : at.x - figure.x - 4,
                       extreme == largest ? at.y - figure.y : at.y},
                      level);
    }
}

/// "98.2 dB at 5 m, -0.4 dB per m", above the first end of the fit line.
void drawFitFigures(DrawingSurface& surface, const CurvePicture& picture,
                    const DrawingOptions& options)
{
    const auto [first, second] = *picture.fitLine;
    const double metres = second.alongM - first.alongM;
    if (metres == 0)
        return;
    const double factor = options.text.lengthFactor();
    const std::string unit(lengthUnit(options.text));
    const std::string text =
        Message(Text::FitLineFigures,
                {fixedText(first.levelDb, 1), fixedText(first.alongM * factor, 1), unit,
                 fixedText((second.levelDb - first.levelDb) / metres / factor, 2), unit})
            .text(options.text.language);
    const Point at = picture.pointAt(first, surface.pixelWidth());
    surface.print({at.x, at.y - 1.2 * surface.textSize(text).y}, text, Role::FitLine);
}

void drawFigures(DrawingSurface& surface, const CurvePicture& picture,
                 const DrawingOptions& options)
{
    drawDistances(surface, picture, options);
    const double bottom = picture.scale().bottomDb;
    if (picture.range)
        for (const std::vector<float>* edge : {&picture.range->least, &picture.range->largest})
            drawRuns(
                surface, *edge, Role::Leader, 1,
                [&](std::size_t i, float level) {
                    return Point{2.0 * static_cast<double>(i), bottom - level};
                },
                3);
    double left = 0;
    for (const Curve& curve : picture.curves) {
        if (curve.area == picture.area)
            drawSpread(surface, curve, bottom, options);
        const std::string name = std::string(MlGetString(options.text.language, Text::CurveTitle)) +
                                 std::to_string(curve.area);
        surface.print({left, surface.scale().top}, name, curve.colour);
        left += surface.textSize(name + "    ").x;
    }
    if (picture.fitLine && !picture.baseline)
        drawFitFigures(surface, picture, options);
}

} // namespace

void DrawCurves(DrawingSurface& surface, const CurvePicture& picture, const DrawingOptions& options)
{
    const double lengthM = picture.lengthM;
    const CurveScale levels = picture.scale();
    const double range = levels.topDb - levels.bottomDb;
    surface.clear();
    surface.setScale({-kLeftMargin, -1.11 * range, surface.pixelWidth(), 1.3 * range});

    const double end = curveEnd(surface.pixelWidth());
    const double textHeight = surface.textHeight();
    const auto labelAt = [&](double above) { return fixedText(levels.bottomDb + above, 0) + "dB"; };
    const auto tooWide = [&](double above) { return surface.textSize(labelAt(above)).x > 38; };
    while ((tooWide(0) || tooWide(range)) && surface.textHeight() > 6)
        surface.setTextHeight(surface.textHeight() - 1);
    for (int line = 0; line * 5 <= range; ++line) {
        const double above = line * 5;
        const bool labelled = line % 2 == 0 || picture.detailed;
        surface.line({labelled ? -6.0 : -3.0, -above}, {end, -above}, Role::Grid);
        if (!labelled)
            continue;
        const std::string label = labelAt(above);
        surface.print({-45, -above - surface.textSize(label).y / 2}, label);
    }
    surface.setTextHeight(textHeight);
    surface.line({0, 0}, {0, -range}, Role::Grid);
    // distance along the area
    const double spacing = options.GridUnit_Area / options.text.lengthFactor();
    const double pixelsPerMetre = lengthM > 0 ? end / lengthM : 0;
    if (spacing * pixelsPerMetre >= 2)
        for (int i = 0; i * spacing <= lengthM; ++i) {
            const double tick = (i % 5 == 0 ? 6 : 3) * surface.pixelY();
            surface.line({i * spacing * pixelsPerMetre, 0}, {i * spacing * pixelsPerMetre, tick},
                         Role::Grid);
        }

    const std::string title = std::string(MlGetString(options.text.language, Text::CurveTitle)) +
                              std::to_string(picture.area);
    const Point size = surface.textSize(title);
    const double room = 0.11 * range - size.y; // above the highest grid line
    if (!picture.detailed)                     // else the curves have names
        surface.print({surface.scale().left + (surface.scale().width - size.x) / 2,
                       surface.scale().top + std::max(0.0, room / 2)},
                      title);
    for (const Curve& curve : picture.curves)
        drawRuns(
            surface, curve.levels, curve.colour, curve.width,
            [&](std::size_t i, float level) {
                return Point{2.0 * static_cast<double>(i), -(level - levels.bottomDb)};
            },
            curve.dash);
    if (picture.detailed)
        drawFigures(surface, picture, options);
    if (picture.baseline) {
        surface.line({0, 0}, {end, 0}, Role::FitLine, 2);
        const std::string name(MlGetString(options.text.language, Text::BaselineName));
        const Point size = surface.textSize(name);
        surface.print({end - size.x, -1.1 * size.y}, name, Role::FitLine);
    } else if (picture.fitLine)
        surface.line(picture.pointAt(picture.fitLine->first, surface.pixelWidth()),
                     picture.pointAt(picture.fitLine->second, surface.pixelWidth()), Role::FitLine,
                     2);
}

int profilePoints(double metresPerPixel, const Segment& area)
{
    constexpr double kMost = 8192; // more than any screen shows, whatever was typed
    return static_cast<int>(std::clamp(area.lengthM / metresPerPixel / 2 + 1, 1.0, kMost));
}

void DrawProfiles(DrawingSurface& surface, const Room& room,
                  std::span<const std::vector<float>> profiles)
{
    std::optional<Extremes> extremes;
    for (const std::vector<float>& profile : profiles)
        extremes = extremesOf(profile, extremes);
    if (!extremes)
        return;
    const double range = static_cast<double>(extremes->largest) - extremes->smallest;
    for (std::size_t i = 0; i < profiles.size(); ++i) {
        const Segment area = room.area(static_cast<int>(i) + 1);
        const double direction = area.angleDeg * kRadiansPerDegree;
        const Point along = {std::cos(direction), -std::sin(direction)};
        const double step = area.lengthM / static_cast<double>(profiles[i].size());
        drawRuns(surface, profiles[i], Role::Profile, 1, [&](std::size_t k, float level) {
            const double height =
                range > 0 ? (level - (extremes->smallest - 0.1 * range)) * 20 / range : 2;
            const double distance = static_cast<double>(k) * step;
            // left of the direction, y down
            return Point{area.start.x + distance * along.x + along.y * height * surface.pixelX(),
                         -area.start.y + distance * along.y - along.x * height * surface.pixelY()};
        });
    }
}

} // namespace orva
