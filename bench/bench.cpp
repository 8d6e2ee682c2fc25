// Fast against literal kernel in one process: the two take turns, medians of their slices count.
// Time per term (receiver, box and band), ratio to the literal kernel on one thread, and how far
// the levels differ where they are within 40 dB of the boxes' incoherent sum.
#include "app/state/application_state.h"
#include "drawing/room_drawing.h"
#include "drawing/spl_map_drawing.h"
#include "engine/fast_kernel.h"
#include "engine/levels.h"
#include "engine/line_spl.h"
#include "engine/literal_kernel.h"
#include "engine/spl_map.h"
#include "painting/picture.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iostream>

#include <nlohmann/json.hpp>

namespace {

using namespace orva;

constexpr int kSlices = 31;
constexpr LevelChoice kAllBands = {{0, kBands - 1}, LevelField::Continuous, true};
constexpr LevelChoice kOneBand = {{10, 10}, LevelField::Continuous, true};

double secondsOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values)
{
    std::nth_element(values.begin(), values.begin() + static_cast<long>(values.size() / 2),
                     values.end());
    return values[values.size() / 2];
}

struct Work {
    double terms; ///< of one run
    std::function<void()> run;
};

struct Errors {
    double p999 = 0;
    double max = 0;
};

struct Row {
    const char* name;
    double value; ///< ns per term, but for the drawing: percent of the time of its raw levels
    double ratio;
    Errors errors;
    const char* unit = "ns/term";
};

Row compare(const char* name, const Work& literal, const Work& fast, const Errors& errors)
{
    std::vector<double> literalNs;
    std::vector<double> fastNs;
    for (int slice = 0; slice < kSlices; ++slice) {
        literalNs.push_back(secondsOf(literal.run) / literal.terms * 1e9);
        fastNs.push_back(secondsOf(fast.run) / fast.terms * 1e9);
    }
    return {name, median(fastNs), median(literalNs) / median(fastNs), errors};
}

/// Keeps receivers within 40 dB of the incoherent sum.
Errors errorsOf(const std::vector<float>& literal, const std::vector<float>& fast,
                const std::vector<float>& incoherent)
{
    std::vector<double> errors;
    for (std::size_t i = 0; i < literal.size(); ++i)
        if (literal[i] > incoherent[i] - 40)
            errors.push_back(std::abs(static_cast<double>(fast[i]) - literal[i]));
    std::sort(errors.begin(), errors.end());
    return {errors[errors.size() * 999 / 1000], errors.back()};
}

class Bench {
public:
    Bench()
    {
        if (!LoadSystemData(m_state, ORVA_SOURCE_DIR "/data"))
            std::abort();
        makeCurrent(m_state, newProject(kStandardSystem));
        m_fast = m_state.levelKernel();
        m_literal = std::make_unique<LiteralKernel>(m_state.speakerData.directivity, m_state.air);
        m_grid = *PrepareMapGrid(m_state.project.room, 0.1F, 0.1F);
    }

    std::vector<Row> run()
    {
        const Work literalMap = {boxes() * 22 * 300 * 4, [this] { literalRows(); }};
        const auto fastWork = [this](int threads) {
            return Work{boxes() * 22 * 300 * 80, [this, threads] { fastMap(threads); }};
        };
        return {compare("map-22-1t", literalMap, fastWork(1), mapErrors()),
                compare("map-22-2t", literalMap, fastWork(2), mapErrors()),
                line("line-22-1t", kAllBands),
                line("line-1-1t", kOneBand),
                resum(),
                drawing()};
    }

private:
    double boxes() const { return m_state.project.array.boxCount(); }

    void fastMap(int threads)
    {
        m_cache.BandDone.fill(false); // the memory stays, as it does in the window
        CalcRawSPL(*m_fast, m_state.project.array, m_grid, kAllBands.bands, threads, {}, m_cache);
    }

    /// Four rows of the map, others each time.
    void literalRows()
    {
        MapGrid grid = m_grid;
        grid.top -= m_row * static_cast<double>(grid.CellH);
        grid.rows = 4;
        m_row = (m_row + 4) % m_grid.rows;
        RawSplCache cache;
        CalcRawSPL(*m_literal, m_state.project.array, grid, kAllBands.bands, 1, {}, cache);
    }

    std::vector<float> mapLevels(const LevelKernel& kernel, const LineArray& array)
    {
        RawSplCache cache;
        CalcRawSPL(kernel, array, m_grid, kAllBands.bands, 2, {}, cache);
        return CalcSummedSPL(cache, m_state.speakerData.BandLevel, m_grid, kAllBands, 1, {})
            ->levels;
    }

    Errors mapErrors()
    {
        std::vector<float> incoherent(m_grid.cells());
        for (std::size_t i = 0; i < incoherent.size(); ++i) {
            const int columns = m_grid.columns;
            const Point cell =
                m_grid.CellCentre(static_cast<int>(i) % columns, static_cast<int>(i) / columns);
            incoherent[i] = incoherentLevel(cell, kAllBands);
        }
        return errorsOf(mapLevels(*m_literal, m_state.project.array),
                        mapLevels(*m_fast, m_state.project.array), incoherent);
    }

    float incoherentLevel(Point receiver, const LevelChoice& choice)
    {
        const std::vector<float> factors = bandFactors(m_state.speakerData.BandLevel, choice);
        double power = 0;
        for (const Source& source : radiatingSources(m_state.project.array)) {
            std::vector<float> one(factors.size());
            std::vector<float*> planes;
            planes.reserve(one.size());
            for (float& figure : one)
                planes.push_back(&figure);
            m_fast->bandPowers(std::span(&source, 1), std::span(&receiver, 1), choice.bands,
                               planes);
            for (std::size_t b = 0; b < one.size(); ++b)
                power += static_cast<double>(factors[b]) * one[b];
        }
        return static_cast<float>(levelOfPower(power));
    }

    Row line(const char* name, const LevelChoice& choice)
    {
        const Segment area = m_state.project.room.area(1);
        const auto levels = [this, area, choice](const LevelKernel& kernel, int points) {
            return levelsAlong(kernel, m_state.speakerData.BandLevel, m_state.project.array, area,
                               choice, points)
                .levels;
        };
        const double terms = boxes() * choice.bands.count() * 200;
        const auto work = [&](const LevelKernel& kernel, int times) {
            return Work{terms * times, [levels, &kernel, times] {
                            for (int i = 0; i < times; ++i)
                                levels(kernel, 200);
                        }};
        };
        constexpr int kPoints = 20000;
        std::vector<float> incoherent;
        incoherent.reserve(kPoints);
        for (int i = 0; i < kPoints; ++i)
            incoherent.push_back(
                incoherentLevel({area.start.x + i * area.lengthM / kPoints, area.start.y}, choice));
        const Errors errors =
            errorsOf(levels(*m_literal, kPoints), levels(*m_fast, kPoints), incoherent);
        return compare(name, work(*m_literal, 1), work(*m_fast, 20), errors);
    }

    Row resum()
    {
        CalcRawSPL(*m_fast, m_state.project.array, m_grid, kAllBands.bands, 2, {}, m_cache = {});
        const double terms = 22.0 * 300 * 80;
        std::vector<std::vector<float>> raw(kBands); // levels in dB, as the formula has them
        for (std::size_t b = 0; b < kBands; ++b)
            for (const float power : m_cache.RawSpl[b])
                raw[b].push_back(static_cast<float>(levelOfPower(power)));
        const PerBand<float> weights = BandWeights(kAllBands.bands, kAllBands.aWeighted);
        std::vector<float> literal(m_grid.cells());
        const Work literalWork = {
            terms, [&] {
                for (std::size_t cell = 0; cell < literal.size(); ++cell) {
                    double power = 0;
                    for (std::size_t b = 0; b < kBands; ++b)
                        power +=
                            weights[b] * powerOfLevel(raw[b][cell] +
                                                      m_state.speakerData.BandLevel[b].Continuous);
                    literal[cell] = static_cast<float>(10 * std::log10(power));
                }
            }};
        std::vector<float> fast;
        const auto sum = [&] {
            fast = CalcSummedSPL(m_cache, m_state.speakerData.BandLevel, m_grid, kAllBands, 1, {})
                       ->levels;
        };
        literalWork.run();
        sum();
        const Errors errors = errorsOf(literal, fast, literal);
        return compare("resum-1t", literalWork,
                       {terms * 20,
                        [&] {
                            for (int i = 0; i < 20; ++i)
                                sum();
                        }},
                       errors);
    }

    /// A map picture of 1920 x 1080 cells, one a pixel, against the raw levels of all its bands.
    Row drawing()
    {
        Workspace state;
        makeCurrent(state, newProject(kStandardSystem));
        if (!state.project.room.GBSetRoomDims(FloatPair{32, 18}))
            std::abort();
        const MapGrid grid = *PrepareMapGrid(state.project.room, 18.0F / 1080, 18.0F / 1080);
        RawSplCache cache;
        std::vector<double> raw;
        std::vector<double> draw;
        // One surface that is painted again and again, as a window does it.
        pngPicture(1920, 1080, [&](DrawingSurface& surface) {
            GRoomSetup(surface, state.project.room);
            for (int slice = 0; slice < 7; ++slice) {
                cache.BandDone.fill(false);
                raw.push_back(secondsOf([&] {
                    CalcRawSPL(*m_fast, state.project.array, grid, kAllBands.bands, 1, {}, cache);
                }));
                const SummedMap map =
                    *CalcSummedSPL(cache, m_state.speakerData.BandLevel, grid, kAllBands, 1, {});
                draw.push_back(secondsOf([&] {
                    RenderSPLMap(surface, state.project.room, grid, map, {{}, map.max, {}});
                }));
            }
        });
        return {"draw-map",
                100 * median(draw) / median(raw),
                median(raw) / median(draw),
                {},
                "% of raw"};
    }

    Workspace m_state;
    std::shared_ptr<const LevelKernel> m_fast;
    std::unique_ptr<LevelKernel> m_literal;
    MapGrid m_grid;
    RawSplCache m_cache;
    int m_row = 0;
};

} // namespace

int main(int argc, char** argv) // NOLINT(bugprone-exception-escape): a benchmark may end so
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    std::printf("%-12s %10s %-8s %9s %14s %12s\n", "work", "value", "", "ratio", "error p99.9",
                "error max");
    for (const Row& row : Bench().run()) {
        std::printf("%-12s %10.3f %-8s %8.1fx %11.5f dB %9.5f dB\n", row.name, row.value, row.unit,
                    row.ratio, row.errors.p999, row.errors.max);
        list.push_back({{"name", row.name},
                        {"value", row.value},
                        {"unit", row.unit},
                        {"ratio", row.ratio},
                        {"errorP999", row.errors.p999},
                        {"errorMax", row.errors.max}});
    }
    if (argc > 1)
        std::ofstream(argv[1]) << list.dump(2) << '\n';
    return 0;
}
