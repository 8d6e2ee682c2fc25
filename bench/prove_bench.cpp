// How long it takes to prove the best of 1.98e9 arrangements of twelve compact boxes, how much of a
// set of sixteen a minute proves, and how far the quick search stays behind what is proved.
#include "app/forms/suggestions.h"
#include "engine/parallel.h"
#include "optimize/quick_search.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

namespace {

using namespace orva;

struct Scene {
    std::shared_ptr<const SearchTask> task;
    CandidateSet candidates;
};

/// Boxes whose joints all turn, in angle mode, all bands, 200 points along the first area.
Scene sceneOf(std::int16_t system, std::int16_t boxes, const SegmentFigures* area, double aimDeg,
              double levelDb, Measure measure)
{
    Workspace state;
    if (!LoadSystemData(state, ORVA_SOURCE_DIR "/data"))
        std::abort();
    makeCurrent(state, newProject(system));
    if (area && !state.project.room.GBSetAudienceArea1(*area))
        std::abort();
    LineArray& array = state.project.array;
    array.GBSetNumSpeakers(boxes);
    const bool straight = !array.system().countsKinds;
    array.GBSetNumGerade(straight ? boxes : std::int16_t{0});
    array.GBSetNumSchräg(straight ? std::int16_t{0} : boxes);
    LineArray::Positions types{};
    types.fill(straight ? array.system().TypeCodeGerade : array.system().TypeCodeSchräg);
    array.GBSetAllType(types);
    array.GBSetAngleOrPin(false);
    LineArray::Positions angles{};
    angles[0] = static_cast<std::int16_t>(aimDeg * 10);
    array = withAngles(array, angles);
    const FitLineTarget target = {0, state.project.room.area(1).lengthM, 0,
                                  measure == Measure::FitToLine ? levelDb : 0};
    const LevelChoice all = {{0, kBands - 1}, LevelField::Continuous, true};
    const auto task = withKernel(
        searchTask(state, state.project,
                   {.target = target, .measure = measure, .points = 200, .levels = all}));
    return {task, CandidateSet(array, allJoints(array), false)};
}

Scene seededScene(std::int16_t system, std::int16_t boxes, unsigned seed, Measure measure)
{
    std::mt19937 random(seed);
    const auto uniform = [&](double low, double high) {
        return static_cast<float>(low +
                                  (high - low) * static_cast<double>(random()) / 4294967296.0);
    };
    SegmentFigures area{uniform(4, 10), uniform(1, 2), 0, 0, uniform(0, 15), uniform(10, 30)};
    const float aim = uniform(0, 4);
    return sceneOf(system, boxes, &area, aim, uniform(98, 108), measure);
}

struct Proof {
    double seconds;
    double share; ///< tested or excluded
    double count; ///< of them all
    double quickRms;
    double bestRms; ///< the best that was found
    bool close() const { return closeBelow(quickRms) <= bestRms; }
    /// What is at least this is not beaten by more than 0.5 % or 0.002 dB, whichever is more.
    static double closeBelow(double rms) { return std::min(rms / 1.005, rms - 0.002); }
};

enum class Claim {
    Best, ///< proves the three best
    Close ///< proves no more than that none is much better than what the quick search found
};

Proof prove(const Scene& scene, double mostSeconds, Claim claim = Claim::Best)
{
    const auto begin = std::chrono::steady_clock::now();
    const auto passed = [&] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    };
    const auto stop = [&] { return passed() > mostSeconds; };
    const QuickResult quick = quickSearch(scene.task, scene.candidates, stop);
    const std::uint64_t count = *scene.candidates.NumConfigs();
    Search search(scene.task, scene.candidates, 0, count);
    const double quickRms = quick.ranking.best().front().rms;
    search.expect(claim == Claim::Best ? quick.ranking.limit() : Proof::closeBelow(quickRms));
    while (!stop() && !search.advance(coreCount(), stop)) {
    }
    const Ranking best = search.bestSoFar();
    return {passed(), static_cast<double>(search.tested()) / static_cast<double>(count),
            static_cast<double>(count), quickRms,
            best.best().empty() ? quickRms : std::min(quickRms, best.best().front().rms)};
}

constexpr Measure kMeasures[] = {Measure::FitToLine, Measure::Even, Measure::SmoothArea};

void proveTwelve(double mostSeconds)
{
    for (const Measure measure : kMeasures) {
        const Proof proof =
            prove(sceneOf(kCompactSystem, 12, nullptr, 1.4, 106, measure), mostSeconds);
        std::printf("prove-12-%-7s %8.1f s  %6.2f %% of 1.98e9  best %.4f dB\n",
                    recordOf(measure).name.data(), proof.seconds, 100 * proof.share, proof.bestRms);
        std::fflush(stdout);
    }
}

/// Rooms of the seeds `first` to `last`.
void proveSeeded(std::int16_t system, std::int16_t boxes, unsigned first, unsigned last,
                 double mostSeconds, Claim claim)
{
    const unsigned rooms = last - first + 1;
    for (const Measure measure : kMeasures) {
        if (system == kCompactSystem && measure == Measure::SmoothArea)
            continue; // days
        std::vector<double> seconds;
        std::vector<double> shares;
        unsigned close = 0;
        unsigned proved = 0;
        for (unsigned seed = first; seed <= last; ++seed) {
            const Proof proof =
                prove(seededScene(system, boxes, seed, measure), mostSeconds, claim);
            seconds.push_back(proof.seconds);
            shares.push_back(100 * proof.share);
            close += proof.close() ? 1 : 0;
            proved += proof.share == 1 ? 1 : 0;
            std::printf("  room %2u %8.1f s %8.4f %% of %.3g quick %.4f best %.4f\n", seed,
                        proof.seconds, 100 * proof.share, proof.count, proof.quickRms,
                        proof.bestRms);
            std::fflush(stdout);
        }
        std::sort(seconds.begin(), seconds.end());
        std::sort(shares.begin(), shares.end());
        std::printf("prove-%s-%d-%s: %u of %u rooms proved, median %.1f s, %.3f %% of the set, "
                    "quick search close in %u\n",
                    systemRecord(system).name.data(), boxes, recordOf(measure).name.data(), proved,
                    rooms, seconds[rooms / 2], shares[rooms / 2], close);
    }
}

/// Arrays for ten seeded rooms with three areas, and whether a quick search of the same boxes finds
/// a more even one.
void suggestSeeded(unsigned rooms)
{
    unsigned sound = 0;
    double slowest = 0;
    double slowestFirst = 0;
    for (unsigned seed = 1; seed <= rooms; ++seed) {
        std::mt19937 random(seed);
        const auto uniform = [&](double low, double high) {
            return static_cast<float>(low +
                                      (high - low) * static_cast<double>(random()) / 4294967296.0);
        };
        Workspace state;
        if (!LoadSystemData(state, ORVA_SOURCE_DIR "/data"))
            std::abort();
        makeCurrent(state, newProject(seed % 2 == 0 ? kStandardSystem : kCompactSystem));
        Room& room = state.project.room;
        const float near = uniform(4, 9);
        const float far = near + uniform(8, 15);
        if (!room.GBSetRoomDims(FloatPair{60, uniform(8, 16)}) ||
            !room.GBSetAudienceArea1(SegmentFigures{near, 1.7F, 0, 0, 0, far - near}) ||
            !room.GBSetAudienceArea2(
                SegmentFigures{far, 1.7F, 0, 0, uniform(3, 12), uniform(5, 12)}) ||
            !room.GBSetAudienceArea3(
                SegmentFigures{far, uniform(3, 5), 0, 0, uniform(5, 20), uniform(5, 10)}))
            std::abort();
        const LevelChoice all = {{0, kBands - 1}, LevelField::Continuous, true};
        const auto begin = std::chrono::steady_clock::now();
        const auto passed = [&] {
            return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        };
        Suggesting suggesting(state, state.project, all);
        double first = -1;
        suggesting.run(
            coreCount(), [] { return false; },
            [&](const auto& found) {
                if (first < 0 && found.size() >= 3)
                    first = passed();
            });
        const double seconds = passed();
        slowest = std::max(slowest, seconds);
        slowestFirst = std::max(slowestFirst, first);
        bool good = !suggesting.found().empty();
        for (const Suggestion& one : suggesting.found()) {
            Project project = state.project;
            project.array = one.array;
            const auto task = withKernel(searchTask(
                state, project,
                {.areas = {{1, 1}, {2, 1}, {3, 1}}, .measure = Measure::Even, .levels = all}));
            const QuickResult quick = quickSearch(
                task, CandidateSet(one.array, allJoints(one.array), false), [] { return false; });
            good = good && one.evenDb <= quick.ranking.best().front().rms &&
                   hangsClear(room, one.array) && !one.array.overloaded();
        }
        sound += good ? 1 : 0;
        std::printf("  room %2u %6.1f s, first at %4.1f s, %2zu suggestions, %.3f dB\n", seed,
                    seconds, first, suggesting.found().size(),
                    suggesting.found().empty() ? 0 : suggesting.found().front().evenDb);
        std::fflush(stdout);
    }
    std::printf("suggest: %u of %u rooms sound, %.1f s at most, first ones after %.1f s\n", sound,
                rooms, slowest, slowestFirst);
}

} // namespace

/// [12 | 12-rooms | 16 | suggest] [seconds] [last room] [first room]
int main(int argc, char** argv) // NOLINT(bugprone-exception-escape): a benchmark may end so
{
    const std::string part = argc > 1 ? argv[1] : "";
    const double seconds = argc > 2 ? std::strtod(argv[2], nullptr) : 0;
    const auto room = [&](int argument, unsigned otherwise) {
        return argc > argument ? static_cast<unsigned>(std::strtoul(argv[argument], nullptr, 10))
                               : otherwise;
    };
    const unsigned last = room(3, 20);
    const unsigned first = room(4, 1);
    if (part.empty() || part == "12")
        proveTwelve(seconds > 0 ? seconds : 3600);
    if (part.empty() || part == "12-rooms")
        for (const std::int16_t system : {kStandardSystem, kCompactSystem})
            proveSeeded(system, 12, first, last, seconds > 0 ? seconds : 3000, Claim::Close);
    if (part.empty() || part == "16")
        proveSeeded(kCompactSystem, 16, first, last, seconds > 0 ? seconds : 60, Claim::Best);
    if (part.empty() || part == "suggest")
        suggestSeeded(10);
    return 0;
}
