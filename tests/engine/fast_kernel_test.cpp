#include "engine/fast_kernel.h"
#include "engine/levels.h"
#include "engine/line_spl.h"
#include "engine/literal_kernel.h"
#include "engine/speaker_data_text.h"
#include "engine/spl_map.h"
#include "model/project.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <fstream>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <sstream>

#include <gtest/gtest.h>
#include <hwy/targets.h>

namespace orva {
namespace {

using Random = std::mt19937;

double uniform(Random& random, double low, double high)
{
    return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
}

Directivity shipped(const char* name)
{
    std::ifstream file(std::string(ORVA_SOURCE_DIR "/data/") + name);
    std::ostringstream text;
    text << file.rdbuf();
    return ReadSpeakerDataText(text.str(), {}, name)->directivity;
}

/// Up to 30 dB apart from step to step, the phase turning on by up to `phaseDeg`.
Directivity rough(Random& random, double phaseDeg)
{
    Directivity data;
    for (std::size_t band = 0; band < kBands; ++band) {
        double phase = 0;
        for (std::size_t step = 0; step < kAngleSteps; ++step) {
            data.DirMagnitude[band][step] = static_cast<float>(uniform(random, 0, 30));
            phase = std::fmod(phase + uniform(random, 0, phaseDeg), 360);
            data.DirPhase[band][step] = static_cast<float>(phase);
        }
    }
    return data;
}

LineArray randomArray(Random& random)
{
    LineArray array = newProject(static_cast<std::int16_t>(random() % 2)).array;
    const auto boxes = static_cast<std::int16_t>(1 + random() % 24);
    array.GBSetNumSpeakers(boxes);
    LineArray::Positions angles{};
    for (std::int16_t& angle : angles)
        angle = static_cast<std::int16_t>(random() % 7);
    angles[0] = static_cast<std::int16_t>(uniform(random, -400, 400));
    array.GBSetAngleOrPin(false);
    array.GBSetAllAngle(angles);
    array.GBSetMounting(random() % 4 != 0);
    array.GFACalcCOM();
    return array;
}

std::unique_ptr<FastKernel> fastKernel(const Directivity& data, const Air& air,
                                       const TablePrecision& precision = kShownPrecision)
{
    return std::make_unique<FastKernel>(DirectivityTable::make(data, precision),
                                        RadialTable::make(air, precision),
                                        std::make_unique<LiteralKernel>(data, air));
}

std::vector<double> powersOf(const LevelKernel& kernel, std::span<const Source> sources,
                             std::span<const Point> receivers, BandSpan bands)
{
    std::vector<std::vector<float>> planes(static_cast<std::size_t>(bands.count()),
                                           std::vector<float>(receivers.size()));
    std::vector<float*> to;
    to.reserve(planes.size());
    for (auto& plane : planes)
        to.push_back(plane.data());
    kernel.bandPowers(sources, receivers, bands, to);
    std::vector<double> powers(receivers.size());
    for (const auto& plane : planes)
        std::transform(plane.begin(), plane.end(), powers.begin(), powers.begin(), std::plus());
    return powers;
}

std::vector<float> levelsOf(const LevelKernel& kernel, std::span<const Source> sources,
                            std::span<const Point> receivers, BandSpan bands)
{
    const std::vector<double> powers = powersOf(kernel, sources, receivers, bands);
    std::vector<float> levels(powers.size());
    std::transform(powers.begin(), powers.end(), levels.begin(),
                   [](double power) { return static_cast<float>(levelOfPower(power)); });
    return levels;
}

/// Runs `test` for every set of vector instructions that this machine has.
template<typename Test>
void onEveryTarget(Test test)
{
    for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
        SCOPED_TRACE(hwy::TargetName(target));
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(target);
        test(hwy::TargetName(target));
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().DeInit();
}

constexpr int kReceivers = 200;

struct Case {
    std::vector<Source> sources;
    std::vector<Point> receivers;
    BandSpan bands;
    Directivity data;
    Air air;
};

/// Arrays, receivers to 200 m, bands and temperatures at random.
std::vector<Case> randomCases(int count)
{
    Random random(20261124);
    const Directivity directivities[] = {shipped("system.dat"), shipped("systemsm.dat"),
                                         rough(random, 60), rough(random, 179)};
    std::vector<Case> cases;
    for (int i = 0; i < count; ++i) {
        Case one;
        one.sources = radiatingSources(randomArray(random));
        for (int k = 0; k < kReceivers; ++k)
            one.receivers.push_back({uniform(random, -20, 200), uniform(random, -10, 30)});
        const int from = static_cast<int>(random() % kBands);
        const int most = i % 3 == 0 ? 1 : kBands - from;
        one.bands = {from, from + static_cast<int>(random() % static_cast<unsigned>(most))};
        one.data = directivities[i % 4];
        one.air = airAt(static_cast<float>(uniform(random, -20, 50)));
        cases.push_back(one);
    }
    return cases;
}

TEST(FastKernel, FollowsTheLiteralOneWithinItsBounds)
{
    const std::vector<Case> cases = randomCases(120);
    std::vector<std::vector<double>> literal;
    std::vector<std::vector<double>> incoherent; // every source's power alone, summed
    for (const Case& one : cases) {
        const LiteralKernel kernel(one.data, one.air);
        literal.push_back(powersOf(kernel, one.sources, one.receivers, one.bands));
        incoherent.emplace_back(one.receivers.size());
        for (const Source& source : one.sources) {
            const auto powers = powersOf(kernel, std::span(&source, 1), one.receivers, one.bands);
            std::transform(powers.begin(), powers.end(), incoherent.back().begin(),
                           incoherent.back().begin(), std::plus());
        }
    }
    for (const TablePrecision& precision : {kShownPrecision, kSearchPrecision}) {
        struct Errors {
            std::vector<double> levels; // dB, within 40 dB of the incoherent sum
            double largestAmplitude = 0;
        };
        std::map<std::string, Errors> byTarget;
        for (std::size_t i = 0; i < cases.size(); ++i) {
            const Case& one = cases[i];
            const auto kernel = fastKernel(one.data, one.air, precision);
            onEveryTarget([&](const char* target) {
                Errors& errors = byTarget[target];
                const auto fast = powersOf(*kernel, one.sources, one.receivers, one.bands);
                for (std::size_t k = 0; k < fast.size(); ++k) {
                    if (literal[i][k] > 1e-4 * incoherent[i][k])
                        errors.levels.push_back(std::abs(10 * std::log10(fast[k] / literal[i][k])));
                    const double amplitude =
                        std::abs(std::sqrt(fast[k]) - std::sqrt(literal[i][k]));
                    errors.largestAmplitude =
                        std::max(errors.largestAmplitude, amplitude / std::sqrt(incoherent[i][k]));
                }
            });
        }
        for (auto& [target, errors] : byTarget) {
            SCOPED_TRACE(target);
            std::sort(errors.levels.begin(), errors.levels.end());
            EXPECT_GT(errors.levels.size(), cases.size() * kReceivers * 5 / 6);
            EXPECT_LT(errors.levels[errors.levels.size() * 999 / 1000], 0.001);
            EXPECT_LT(errors.levels.back(), 0.01);
            EXPECT_LT(errors.largestAmplitude, precision.amplitudeError);
        }
    }
}

TEST(FastKernel, AReceiversBitsDoNotDependOnItsCompany)
{
    const Case one = randomCases(2)[1];
    for (const BandSpan bands :
         {BandSpan{0, 21}, BandSpan{3, 9}, BandSpan{17, 21}, BandSpan{5, 5}}) {
        const auto kernel = fastKernel(one.data, one.air);
        const auto together = levelsOf(*kernel, one.sources, one.receivers, bands);
        for (const std::size_t k : {0U, 7U, 15U, 16U, 199U}) {
            const auto alone =
                levelsOf(*kernel, one.sources, std::span(&one.receivers[k], 1), bands);
            EXPECT_EQ(alone[0], together[k]) << k;
        }
    }
}

TEST(FastKernel, MapsAreTheSameOnAnyNumberOfThreads)
{
    Random random(7);
    const Project project = newProject(kStandardSystem);
    const auto kernel = fastKernel(shipped("system.dat"), airAt(21));
    const MapGrid grid = *PrepareMapGrid(project.room, 0.25F, 0.25F);
    const LevelChoice choice{{0, 21}, LevelField::Peak, true};
    const PerBand<BandReference> levels = SelectSpeakerData({}, kStandardSystem).BandLevel;
    std::vector<float> first;
    for (const int threads : {1, 2, 16}) {
        RawSplCache cache;
        ASSERT_TRUE(CalcRawSPL(*kernel, project.array, grid, choice.bands, threads, {}, cache));
        const auto map = CalcSummedSPL(cache, levels, grid, choice, threads, {});
        if (first.empty())
            first = map->levels;
        EXPECT_EQ(map->levels, first) << threads;
    }
}

TEST(FastKernel, HandsOverWhatItCannotFollow)
{
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    const auto changed = [](std::size_t step, float magnitude, float phase) {
        Directivity data = shipped("system.dat");
        data.DirMagnitude[9][step] = magnitude;
        data.DirPhase[9][step] = phase;
        return data;
    };
    const std::tuple<const char*, Directivity, bool> tables[] = {
        {"shipped", changed(5, 3, 40), true},
        {"huge attenuation", changed(5, 400, 0), false},
        {"a cliff", changed(5, 149, 0), false},
        {"no number", changed(5, kNan, 0), false},
        {"infinite", changed(5, 3, -1 / 0.0F), false},
        {"many turns", changed(5, 3, 5000), false}};
    for (const auto& [what, data, hasTable] : tables)
        EXPECT_EQ(DirectivityTable::make(data) != nullptr, hasTable) << what;

    // Far away, without a table or with too many sources the levels are the literal ones.
    const std::vector<Source> few = {{0, 0, 0}, {0, 0.3, -5}};
    const std::vector<Source> many(40, Source{0, 0, 0});
    const std::tuple<const char*, Directivity, std::vector<Source>, Point> cases[] = {
        {"far", changed(5, 3, 40), few, {500, 1}},
        {"infinitely far", changed(5, 3, 40), {{-1 / 0.0, 0, 0}, {1e300, 0, 0}, few[0]}, {5, 1}},
        {"no table", changed(5, 400, 0), few, {5, 1}},
        {"many", changed(5, 3, 40), many, {5, 1}}};
    for (const auto& [what, data, sources, receiver] : cases) {
        const LiteralKernel literal(data, airAt(21));
        const std::span one(&receiver, 1);
        EXPECT_EQ(levelsOf(*fastKernel(data, airAt(21)), sources, one, {0, 21}),
                  levelsOf(literal, sources, one, {0, 21}))
            << what;
    }
    const auto silent =
        levelsOf(*fastKernel(changed(5, 3, 40), airAt(21)), {}, std::array{Point{1, 1}}, {0, 21});
    EXPECT_EQ(silent[0], -std::numeric_limits<float>::infinity());
}

/// Counts what a fast kernel hands over.
class CountingKernel : public LevelKernel {
public:
    explicit CountingKernel(std::size_t& evaluations) : m_evaluations(evaluations) {}

    void bandPowers(std::span<const Source> sources, std::span<const Point> receivers,
                    BandSpan bands, std::span<float* const>) const override
    {
        m_evaluations +=
            sources.size() * receivers.size() * static_cast<std::size_t>(bands.count());
    }

private:
    std::size_t& m_evaluations;
};

TEST(FastKernel, HandsOverNothingElse)
{
    constexpr double kReach = RadialTable::kReachM;
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    const std::vector<Source> two = {{0, 0, 0}, {0, 0, 725}};
    const std::tuple<const char*, std::vector<Source>, std::vector<Point>, BandSpan, std::size_t>
        cases[] = {
            // handed over: all evaluations or none
            {"near", two, {{5, 1}, {0, 0}, {-5, -1}}, {0, 21}, 0},
            {"one band", two, {{5, 1}}, {9, 9}, 0},
            {"no receivers", two, {}, {0, 21}, 0},
            {"just within reach", two, {{0.9999 * kReach, 0}}, {0, 21}, 0},
            {"just beyond, to the right",
             two,
             {{5, 1}, {1.0001 * kReach, 0}},
             {0, 21},
             2UL * 2 * 22},
            {"to the left", two, {{5, 1}, {-1.0001 * kReach, 0}}, {0, 3}, 2UL * 2 * 4},
            {"above", two, {{5, 1}, {0, 1.0001 * kReach}}, {0, 3}, 2UL * 2 * 4},
            {"below", two, {{5, 1}, {0, -1.0001 * kReach}}, {0, 3}, 2UL * 2 * 4},
            {"across", two, {{0.8 * kReach, 0.7 * kReach}}, {0, 3}, 2UL * 4},
            // it is the distance that counts, not the place
            {"out there",
             {{900, -700, 0}},
             {{900.5 + 0.7 * kReach, -700 - 0.7 * kReach}},
             {0, 3},
             0},
            {"left of it", {{900, 0, 0}}, {{900, 1}, {900 - 1.0001 * kReach, 0}}, {0, 3}, 2UL * 4},
            {"right of it",
             {{-900, 0, 0}},
             {{-900, 1}, {-900 + 1.0001 * kReach, 0}},
             {0, 3},
             2UL * 4},
            {"below it", {{0, 900, 0}}, {{1, 900}, {0, 900 - 1.0001 * kReach}}, {0, 3}, 2UL * 4},
            {"above it", {{0, -900, 0}}, {{1, -900}, {0, -900 + 1.0001 * kReach}}, {0, 3}, 2UL * 4},
            {"receiver nowhere", two, {{kNan, 0}}, {0, 3}, 2UL * 4},
            {"another nowhere", two, {{5, 1}, {kNan, 1}}, {0, 3}, 2UL * 2 * 4},
            {"at no height", two, {{5, 1}, {5, kNan}}, {0, 3}, 2UL * 2 * 4},
            {"angle of no size", {{0, 0, kNan}}, {{5, 1}}, {0, 3}, 4},
            {"as many sources as there are positions",
             std::vector<Source>(32, two[0]),
             {{5, 1}},
             {0, 3},
             0},
            {"one more", std::vector<Source>(33, two[0]), {{5, 1}}, {0, 3}, 33UL * 4}};
    for (const auto& [what, sources, receivers, bands, handed] : cases) {
        std::size_t evaluations = 0;
        const FastKernel kernel(DirectivityTable::make(shipped("system.dat")),
                                RadialTable::make(airAt(21)),
                                std::make_unique<CountingKernel>(evaluations));
        powersOf(kernel, sources, receivers, bands);
        EXPECT_EQ(evaluations, handed) << what;
    }
}

TEST(FastKernel, RunningSumsStandAfterEachSource)
{
    const auto kernel = fastKernel(shipped("system.dat"), airAt(21));
    const std::vector<Source> sources = {{0, 5, 0}, {0.1, 4.7, -3}, {0.1, 4.4, -9}};
    const std::vector<Point> receivers = {{5, 1}, {30, 2}, {-4, 5}};
    const std::vector<Point> none;
    const std::vector<Point> far = {{2 * RadialTable::kReachM, 1}};
    const std::tuple<const char*, std::vector<Source>, std::vector<Point>, BandSpan> impossible[] =
        {{"three bands", sources, receivers, {4, 6}},
         {"no receivers", sources, none, {0, 21}},
         {"too far", sources, far, {0, 21}},
         {"too many sources", std::vector<Source>(33, sources[0]), receivers, {0, 21}}};
    for (const auto& [what, many, points, bands] : impossible)
        EXPECT_FALSE(kernel->hasRunningSums(many, points, bands)) << what;
    EXPECT_EQ(kernel->hasRunningSums(std::vector<Source>(32, sources[0]), receivers, {4, 7}),
              kernel->hasRunningSums(sources, receivers, {0, 21}))
        << "as many sources as there are positions, four bands";
    for (const BandSpan bands : {BandSpan{0, 21}, BandSpan{2, 5}, BandSpan{17, 21}})
        onEveryTarget([&](const char*) {
            if (!kernel->hasRunningSums(sources, receivers, bands))
                return; // no vectors of four
            const std::size_t floats = 16 * BandRow::kFloats;
            std::array<hwy::AlignedFreeUniquePtr<float[]>, 3> sums;
            for (auto& sum : sums)
                sum = hwy::AllocateAligned<float>(floats);
            // the first alone, then the others on top of it
            const std::array<float*, 1> first = {sums[0].get()};
            const std::array<float*, 2> others = {sums[1].get(), sums[2].get()};
            kernel->runningSums(std::span(sources).first(1), receivers, bands, nullptr, first);
            kernel->runningSums(std::span(sources).subspan(1), receivers, bands, sums[0].get(),
                                others);
            for (std::size_t s = 0; s < sources.size(); ++s) {
                const auto whole =
                    powersOf(*kernel, std::span(sources).first(s + 1), receivers, bands);
                for (std::size_t k = 0; k < receivers.size(); ++k) {
                    double power = 0;
                    const float* row = sums[s].get() + k * BandRow::kFloats;
                    for (int b = bands.from; b <= bands.to; ++b) {
                        const auto band = static_cast<std::size_t>(b);
                        power += std::norm(
                            std::complex<double>(row[BandRow::re(band)], row[BandRow::im(band)]));
                    }
                    EXPECT_NEAR(power, whole[k], 1e-5 * whole[k]) << s << ' ' << k; // floats
                }
            }
        });
}

TEST(WeightedLevels, SumsPlanesOfAnyLength)
{
    onEveryTarget([](const char*) {
        for (const std::size_t count : {1U, 15U, 16U, 17U, 100U}) {
            std::vector<float> one(count);
            std::vector<float> two(count, 3);
            for (std::size_t i = 0; i < count; ++i)
                one[i] = static_cast<float>(i);
            two[0] = 0;
            const std::array<const float*, 2> planes = {one.data(), two.data()};
            std::vector<float> levels(count);
            weightedLevels(planes, std::array{0.5F, 1e8F}, levels);
            EXPECT_EQ(levels[0], -std::numeric_limits<float>::infinity());
            for (std::size_t i = 1; i < count; ++i)
                EXPECT_NEAR(levels[i], 10 * std::log10(0.5 * static_cast<double>(i) + 3e8), 2e-5)
                    << i;
        }
    });
}

} // namespace
} // namespace orva
