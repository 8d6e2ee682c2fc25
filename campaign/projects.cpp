// Random projects: the fast kernel against the literal one on every set of vectors, and against
// the same project moved elsewhere. SEED COUNT; prints one line, status 1 where a bound is missed.
#include "app/state/application_state.h"
#include "engine/fast_kernel.h"
#include "engine/line_spl.h"
#include "engine/literal_kernel.h"
#include "model/project_file.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>

#include <hwy/targets.h>

namespace {

using namespace orva;

class Dice {
public:
    explicit Dice(unsigned seed) : m_engine(seed) {}
    double uniform(double low, double high)
    {
        return low + (high - low) * (static_cast<double>(m_engine()) / 4294967296.0);
    }
    int below(int end) { return static_cast<int>(m_engine() % static_cast<unsigned>(end)); }
    float coordinate(double low, double high) // exact in 32 bits, also when it is moved
    {
        return static_cast<float>(std::round(uniform(low, high) * 64) / 64);
    }

private:
    std::mt19937 m_engine;
};

Project randomProject(Dice& dice)
{
    Project project = newProject(static_cast<std::int16_t>(dice.below(2)));
    LineArray& array = project.array;
    const bool standard = array.GIGetArrayType() == kStandardSystem;
    const auto boxes = static_cast<std::int16_t>(1 + dice.below(standard ? 24 : 16));
    const auto straight = static_cast<std::int16_t>(standard ? dice.below(boxes + 1) : boxes);
    LineArray::Positions types{};
    for (std::int16_t box = straight; box < boxes; ++box)
        types[static_cast<std::size_t>(box)] = array.system().TypeCodeSchräg;
    array.GBSetNumSpeakers(boxes);
    array.GBSetNumGerade(straight);
    array.GBSetNumSchräg(static_cast<std::int16_t>(boxes - straight));
    array.GBSetAllType(types);
    array.GBSetMounting(dice.below(4) > 0);
    array.GBSetAngleOrPin(array.GBGetMounting() && dice.below(2) > 0);
    LineArray::Positions angles{};
    const auto bounds = array.IAGetAngleBounds();
    for (std::size_t joint = 0; joint < bounds.size(); ++joint)
        angles[joint + 1] = static_cast<std::int16_t>(
            bounds[joint][0] + dice.below(bounds[joint][1] - bounds[joint][0] + 1));
    angles[0] =
        static_cast<std::int16_t>(array.GBGetAngleOrPin() ? dice.below(5) : dice.below(600) - 300);
    array.GBSetAllAngle(angles);
    array.GBSetCradleCoord({dice.coordinate(0, 10), dice.coordinate(3, 20)});
    array.GFACalcCOM();
    return project;
}

std::vector<double> amplitudes(const LevelKernel& kernel, const std::vector<Source>& sources,
                               const std::vector<Point>& at, BandSpan bands)
{
    const auto count = static_cast<std::size_t>(bands.count());
    std::vector<std::vector<float>> powers(count, std::vector<float>(at.size()));
    std::vector<float*> planes;
    planes.reserve(count);
    for (auto& plane : powers)
        planes.push_back(plane.data());
    kernel.bandPowers(sources, at, bands, planes);
    std::vector<double> all(at.size()); // of the span
    for (const auto& plane : powers)
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] += static_cast<double>(plane[i]);
    for (double& power : all)
        power = std::sqrt(power);
    return all;
}

/// Largest difference of amplitudes, against what the boxes would be without interference.
double apart(const std::vector<double>& a, const std::vector<double>& b,
             const std::vector<double>& incoherent)
{
    double most = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        most = std::max(most, std::abs(a[i] - b[i]) / incoherent[i]);
    return most;
}

} // namespace

int main(int argc, char** argv) // NOLINT(bugprone-exception-escape)
{
    const auto seed = static_cast<unsigned>(argc > 1 ? std::strtol(argv[1], nullptr, 10) : 1);
    const int count = argc > 2 ? static_cast<int>(std::strtol(argv[2], nullptr, 10)) : 1000;
    Workspace state;
    if (!LoadSystemData(state, ORVA_SOURCE_DIR "/data"))
        return 2;
    const std::vector<std::int64_t> targets = hwy::SupportedAndGeneratedTargets();
    const Air air = airAt(21);
    std::map<int, std::unique_ptr<LiteralKernel>> literal;
    std::map<int, std::unique_ptr<FastKernel>> fast;
    for (const std::int16_t system : {kStandardSystem, kCompactSystem}) {
        SelectSystem(state, system);
        const Directivity& data = state.speakerData.directivity;
        literal[system] = std::make_unique<LiteralKernel>(data, air);
        fast[system] = std::make_unique<FastKernel>(DirectivityTable::make(data, kShownPrecision),
                                                    RadialTable::make(air, kShownPrecision),
                                                    std::make_unique<LiteralKernel>(data, air));
    }
    double mostTables = 0;
    double mostExact = 0;
    double mostMoved = 0;
    Dice dice(seed);
    for (int number = 0; number < count; ++number) {
        const std::int64_t target = targets[static_cast<std::size_t>(number) % targets.size()];
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(target);
        Project project = randomProject(dice);
        if (const auto again = readProject(writeProject(project), "again");
            !again || again->project != project)
            return std::printf("seed %u, project %d: not the same after saving\n", seed, number), 1;
        std::vector<Point> at;
        constexpr int kPlaces = 8;
        at.reserve(kPlaces);
        for (int i = 0; i < kPlaces; ++i)
            at.push_back({dice.coordinate(-5, 60), dice.coordinate(0, 20)});
        const int system = project.array.GIGetArrayType();
        const std::vector<Source> sources = radiatingSources(project.array);
        const BandSpan few{dice.below(20), 0};
        for (const BandSpan bands : {BandSpan{0, kBands - 1}, BandSpan{few.from, few.from + 2}}) {
            const auto want = amplitudes(*literal[system], sources, at, bands);
            std::vector<double> sum(want.size());
            for (const Source& source : sources) {
                const auto one = amplitudes(*literal[system], {source}, at, bands);
                for (std::size_t i = 0; i < sum.size(); ++i)
                    sum[i] += one[i] * one[i];
            }
            for (double& power : sum)
                power = std::sqrt(power);
            double& most = bands.count() > 3 ? mostTables : mostExact;
            most = std::max(most, apart(amplitudes(*fast[system], sources, at, bands), want, sum));

            Project moved = project;
            const float byX = dice.coordinate(-20, 20);
            const float byY = dice.coordinate(0, 10);
            const auto [x, y] = project.array.GFAGetCradleCoord();
            moved.array.GBSetCradleCoord({x + byX, y + byY});
            std::vector<Point> there = at;
            for (Point& point : there)
                point = {point.x + static_cast<double>(byX), point.y + static_cast<double>(byY)};
            mostMoved = std::max(
                mostMoved,
                apart(amplitudes(*literal[system], radiatingSources(moved.array), there, bands),
                      want, sum));
        }
    }
    // Places of 32 bits: 80 m are off by 4e-6 m, a box's source by some of these; 228 rad/m at
    // 12.5 kHz.
    constexpr double kMoved = 4e-6 * 4 * 228;
    std::printf("%d projects: amplitudes off by %.2g with tables, %.2g without, %.2g when moved\n",
                count, mostTables, mostExact, mostMoved);
    return mostTables < 3e-4 && mostExact < 1e-5 && mostMoved < kMoved ? 0 : 1;
}
