#include "drawing/spectrum_drawing.h"

#include "drawing/diverging_colours.h"
#include "drawing/scale.h"
#include "engine/area_figures.h"
#include "lang/number_text.h"
#include "lang/string_table.h"

#include <algorithm>
#include <cmath>

namespace orva {

namespace {

constexpr double kLeft = 50;
constexpr double kRight = 20;

/// Where the bands or the strip are drawn, pixels.
struct Frame {
    double left;
    double top;
    double right;
    double bottom;

    double width() const { return right - left; }
    double height() const { return bottom - top; }
};

Frame frameOf(double pixelWidth, double pixelHeight, double right)
{
    constexpr double kTitle = 22;
    constexpr double kLabels = 24;
    return {kLeft, kTitle, std::max(kLeft + 1, pixelWidth - right),
            std::max(kTitle + 1, pixelHeight - kLabels)};
}

void printCentred(DrawingSurface& surface, Point at, const std::string& text)
{
    surface.print({at.x - surface.textSize(text).x / 2, at.y}, text);
}

} // namespace

std::string bandLabel(std::size_t band)
{
    const int hz = kNominalHz[band];
    return hz < 1000 ? std::to_string(hz) : plainText(hz / 1000.0, 2) + "k";
}

void DrawSpectrum(DrawingSurface& surface, std::span<const Spectrum> spectra,
                  const std::string& hint)
{
    surface.clear();
    ResetScale(surface);
    const Frame frame = frameOf(surface.pixelWidth(), surface.pixelHeight(), kRight);
    const double textHeight = surface.textSize("0").y;
    double largest = -std::numeric_limits<double>::infinity();
    for (const Spectrum& spectrum : spectra)
        for (const float level : spectrum.levels)
            if (std::isfinite(level))
                largest = std::max(largest, static_cast<double>(level));
    if (!std::isfinite(largest)) {
        printCentred(surface, {surface.pixelWidth() / 2, surface.pixelHeight() / 2 - textHeight},
                     hint);
        return;
    }
    constexpr double kRangeDb = 40;
    const double top = std::ceil(largest / 10) * 10;
    const auto heightOf = [&](double level) {
        return frame.bottom - (level - (top - kRangeDb)) / kRangeDb * frame.height();
    };
    constexpr int kLines = 4;
    for (int line = 0; line <= kLines; ++line) {
        const double level = top - kRangeDb + line * kRangeDb / kLines;
        surface.line({frame.left - 4, heightOf(level)}, {frame.right, heightOf(level)}, Role::Grid);
        const std::string label = fixedText(level, 0) + "dB";
        surface.print(
            {frame.left - 6 - surface.textSize(label).x, heightOf(level) - textHeight / 2}, label);
    }
    const double bandWidth = frame.width() / kBands;
    const double gap = std::min(bandWidth * 0.2, 6.0);
    const double barWidth = (bandWidth - gap) / static_cast<double>(spectra.size());
    const double least = surface.textSize("12.5k ").x;
    const auto every = static_cast<std::size_t>(std::ceil(least / std::max(bandWidth, 1.0)));
    for (std::size_t band = 0; band < kBands; ++band) {
        const double left = frame.left + static_cast<double>(band) * bandWidth;
        for (std::size_t i = 0; i < spectra.size(); ++i) {
            const double bar = left + gap / 2 + static_cast<double>(i) * barWidth;
            const double level = std::max<double>(spectra[i].levels[band], top - kRangeDb);
            if (std::isfinite(spectra[i].levels[band]))
                surface.fillRectangle({bar, heightOf(level)}, {bar + barWidth, frame.bottom},
                                      surface.colour(spectra[i].colour));
        }
        if (band % every == 0)
            printCentred(surface, {left + bandWidth / 2, frame.bottom + 3}, bandLabel(band));
    }
    surface.line({frame.left, frame.bottom}, {frame.right, frame.bottom}, Role::Ink);
    double at = frame.left;
    for (const Spectrum& spectrum : spectra) {
        surface.fillRectangle({at, 6}, {at + 10, 16}, surface.colour(spectrum.colour));
        surface.print({at + 14, 11 - textHeight / 2}, spectrum.name);
        at += 14 + surface.textSize(spectrum.name + "    ").x;
    }
}

Strip Strip::of(BandLevels levels, double lengthM, std::string title)
{
    Strip strip{std::move(title), lengthM, std::move(levels)};
    for (std::size_t band = 0; band < kBands; ++band) {
        const std::optional<AreaFigures> figures = areaFigures(strip.levels[band]);
        strip.means[band] = figures ? figures->mean : -std::numeric_limits<double>::infinity();
    }
    return strip;
}

namespace {

constexpr double kLegend = 70;

void drawStripLegend(DrawingSurface& surface, const Frame& frame)
{
    const double left = frame.right + 16;
    constexpr int kSteps = 48;
    std::vector<double> edges;
    for (int step = 0; step <= kSteps; ++step)
        edges.push_back(frame.top + frame.height() * step / kSteps);
    const std::array<double, 2> columns = {left, left + 12};
    surface.cells(columns, edges, [](std::size_t row, std::span<Colour> colours) {
        const double share = 1 - 2 * (static_cast<double>(row) + 0.5) / kSteps;
        std::fill(colours.begin(), colours.end(), divergingColour(share));
    });
    for (int mark = -1; mark <= 1; ++mark) {
        const std::string label =
            (mark > 0 ? "+" : "") + fixedText(mark * kStripRangeDb, 0) + (mark == 0 ? " dB" : "");
        surface.print({left + 16,
                       frame.top + frame.height() * (1 - mark) / 2 - surface.textSize(label).y / 2},
                      label);
    }
}

} // namespace

void DrawStrip(DrawingSurface& surface, const Strip& strip, const DrawingOptions& options)
{
    surface.clear();
    ResetScale(surface);
    const Frame frame = frameOf(surface.pixelWidth(), surface.pixelHeight(), kLegend);
    const double textHeight = surface.textSize("0").y;
    printCentred(surface, {surface.pixelWidth() / 2, 11 - textHeight / 2}, strip.title);
    const std::size_t points = strip.levels.front().size();
    std::vector<double> columns;
    std::vector<double> rows;
    for (std::size_t point = 0; point <= points; ++point)
        columns.push_back(frame.left +
                          frame.width() * static_cast<double>(point) / static_cast<double>(points));
    for (std::size_t band = 0; band <= kBands; ++band)
        rows.push_back(frame.top + frame.height() * static_cast<double>(band) / kBands);
    const Colour silent = surface.colour(Role::Grid);
    surface.cells(columns, rows, [&](std::size_t row, std::span<Colour> colours) {
        const std::size_t band = kBands - 1 - row;
        for (std::size_t point = 0; point < points; ++point) {
            const double over = strip.levels[band][point] - strip.means[band];
            colours[point] = std::isfinite(over) ? divergingColour(over / kStripRangeDb) : silent;
        }
    });
    const double bandHeight = frame.height() / kBands;
    const auto every = static_cast<std::size_t>(std::ceil(textHeight / std::max(bandHeight, 1.0)));
    for (std::size_t band = 0; band < kBands; band += every) {
        const std::string label = bandLabel(band);
        const double middle = frame.bottom - (static_cast<double>(band) + 0.5) * bandHeight;
        surface.print({frame.left - 5 - surface.textSize(label).x, middle - textHeight / 2}, label);
    }
    const double shown = strip.lengthM * options.text.lengthFactor();
    for (const double at : labelledDistances(surface, shown, frame.width(), options)) {
        const double x = frame.left + (shown > 0 ? at / shown : 0) * frame.width();
        surface.line({x, frame.bottom}, {x, frame.bottom + 3}, Role::Ink);
        printCentred(surface, {x, frame.bottom + 4}, plainText(at, 1));
    }
    drawStripLegend(surface, frame);
}

std::optional<StripPlace> stripPlaceAt(const Strip& strip, Point pixel, double pixelWidth,
                                       double pixelHeight)
{
    const Frame frame = frameOf(pixelWidth, pixelHeight, kLegend);
    const double along = (pixel.x - frame.left) / frame.width();
    const double up = (frame.bottom - pixel.y) / frame.height();
    if (along < 0 || along >= 1 || up < 0 || up >= 1)
        return std::nullopt;
    return StripPlace{
        static_cast<std::size_t>(up * kBands),
        static_cast<std::size_t>(along * static_cast<double>(strip.levels.front().size()))};
}

} // namespace orva
