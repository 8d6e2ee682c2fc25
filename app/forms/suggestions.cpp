#include "app/forms/suggestions.h"

#include "engine/line_spl.h"
#include "engine/parallel.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <mutex>
#include <set>
#include <tuple>

namespace orva {

namespace {

constexpr std::int16_t kFewestBoxes = 4;
/// Along each area: for the first look, and as they count.
constexpr int kRoughPoints = 48;
constexpr int kPoints = 200;
/// How often an array that would hang too low is hung a step higher.
constexpr int kMostRaises = 8;
/// What is looked at closely at most.
constexpr std::size_t kMostRefined = 13;

float fohLevel(const SearchTask& task, const Room& room, const LineArray& array)
{
    return lineLevels(*task.kernel, task.speakerData.BandLevel, array, fohLine(room), task.choice,
                      1, {})
        ->front();
}

} // namespace

bool Suggestion::beats(const Suggestion& other) const
{
    const bool noWorse =
        evenDb <= other.evenDb && fohDb >= other.fohDb && weightKg <= other.weightKg;
    return noWorse && (evenDb < other.evenDb || fohDb > other.fohDb || weightKg < other.weightKg);
}

bool hangsClear(const Room& room, const LineArray& array)
{
    const Extent extent = extentOf(room, array);
    if (!fitsIn(room, extent) || extent.lowest < Suggesting::kClearanceM)
        return false;
    for (int number = 1; number <= room.GIGetNumAreas(); ++number) {
        const Segment area = room.area(number);
        const double from = area.start.x + room.reference().x;
        const double width = area.end.x - area.start.x;
        for (const double x :
             {std::clamp(extent.left, std::min(from, from + width), std::max(from, from + width)),
              std::clamp(extent.right, std::min(from, from + width),
                         std::max(from, from + width))}) {
            if (x < extent.left || x > extent.right)
                continue;
            const double share = width == 0 ? 0 : (x - from) / width;
            double y = area.start.y + share * (area.end.y - area.start.y);
            if (width == 0)
                y = std::max(area.start.y, area.end.y);
            if (extent.lowest < y + room.reference().y + Suggesting::kClearanceM)
                return false;
        }
    }
    return true;
}

Suggesting::Suggesting(const ApplicationState& state, const Project& project,
                       const LevelChoice& choice, std::uint64_t budget)
    : m_project(project), m_budget(budget)
{
    LineArray& array = m_project.array;
    array.GBSetMounting(true);
    array.GBSetAngleOrPin(true);
    array.GBSetNumBass(0);
    SearchChoice search{.measure = Measure::Even, .points = kPoints, .levels = choice};
    search.areas.clear();
    for (int number = 1; number <= project.room.GIGetNumAreas(); ++number)
        search.areas.push_back({number, 1});
    m_base = withKernel(searchTask(state, m_project, search));
}

/// Those that are not too heavy, of each number of boxes. Sizes take turns, so that the first ones
/// already differ.
std::vector<Suggesting::Boxes> Suggesting::allBoxes() const
{
    const SystemRecord& system = m_project.array.system();
    std::vector<std::int16_t> counts;
    constexpr std::int16_t kTurns = 4;
    for (std::int16_t turn = 0; turn < kTurns; ++turn)
        for (auto count = static_cast<std::int16_t>(kFewestBoxes + turn);
             count <= system.mostMidHigh; count = static_cast<std::int16_t>(count + kTurns))
            counts.push_back(count);
    std::vector<Boxes> all;
    for (const std::int16_t count : counts) {
        std::set<int> splits = {0};
        if (system.countsKinds)
            splits.insert({count / 3, 2 * count / 3, count});
        for (const int trapezoidal : splits) {
            const Boxes boxes{static_cast<std::int16_t>(count - trapezoidal),
                              static_cast<std::int16_t>(trapezoidal)};
            if (!arrayOf(boxes).overloaded())
                all.push_back(boxes);
        }
    }
    return all;
}

LineArray Suggesting::arrayOf(const Boxes& boxes) const
{
    LineArray array = m_project.array;
    const SystemRecord& system = array.system();
    array.GBSetNumSpeakers(static_cast<std::int16_t>(boxes.straight + boxes.trapezoidal));
    array.GBSetNumGerade(boxes.straight);
    array.GBSetNumSchräg(boxes.trapezoidal);
    LineArray::Positions types{};
    for (int i = 0; i < LineArray::kPositions; ++i)
        types[static_cast<std::size_t>(i)] = i < boxes.straight || boxes.trapezoidal == 0
                                                 ? system.TypeCodeGerade
                                                 : system.TypeCodeSchräg;
    array.GBSetAllType(types);
    // The least angle of each joint.
    LineArray::Positions angles{};
    angles[0] = static_cast<std::int16_t>(system.cradle.pinCount() / 2);
    const std::vector<AngleBounds> bounds = array.IAGetAngleBounds();
    for (std::size_t joint = 0; joint < bounds.size(); ++joint)
        angles[joint + 1] = bounds[joint][0];
    return withAngles(array, angles);
}

/// Where it may hang: not bent, it is longest.
std::vector<float> Suggesting::heightsFor(const LineArray& array) const
{
    const double top =
        static_cast<double>(m_project.room.GFAGetRoomDims()[1]) - m_project.room.reference().y;
    std::vector<float> heights;
    constexpr int kMostSteps = 200; // below the ceiling of a hall that is higher than any
    for (int step = 1; step <= kMostSteps && top - step * kRasterM > -m_project.room.reference().y;
         ++step) {
        LineArray hung = array;
        const auto height = static_cast<float>(top - step * kRasterM);
        hung.GBSetCradleCoord({array.GFAGetCradleCoord()[0], height});
        if (hangsClear(m_project.room, hung))
            heights.push_back(height);
    }
    std::reverse(heights.begin(), heights.end());
    return heights;
}

std::shared_ptr<const SearchTask> Suggesting::taskOf(const LineArray& array, int points) const
{
    auto task = std::make_shared<SearchTask>(*m_base);
    task->array = array;
    task->points = points;
    return task;
}

Suggestion Suggesting::figuresOf(const LineArray& array, double evenDb) const
{
    return {array, evenDb, fohLevel(*m_base, m_project.room, array), array.totalWeightKg()};
}

/// The best of those boxes that hang clear, as far as a quick search with that budget tells.
std::vector<Suggestion> Suggesting::look(const Boxes& boxes, std::uint64_t budget,
                                         const Stop& stop) const
{
    const LineArray array = arrayOf(boxes);
    std::vector<float> heights = heightsFor(array);
    while (!heights.empty() && !stop()) {
        const auto task = taskOf(array, kRoughPoints);
        const CandidateSet set(array, allJoints(array), false, Freedom{true, heights});
        const QuickResult quick = quickSearch(task, set, stop, {}, budget);
        std::vector<Suggestion> found;
        for (const Ranked& entry : quick.ranking.best()) {
            const LineArray hung = withConfiguration(array, entry.configuration());
            if (entry.rms < kNoMeasure && hangsClear(m_project.room, hung))
                found.push_back(figuresOf(hung, entry.rms));
        }
        if (!found.empty() || quick.ranking.best().empty())
            return found;
        const float tooLow = quick.ranking.best().front().heightM.value_or(heights.back());
        std::erase_if(heights, [tooLow](float height) { return height <= tooLow; });
    }
    return {};
}

/// What the quick search finds for the same boxes on the same pin at the same height, or where that
/// would hang too low, at the next one at which it does not; where none is high enough, the best
/// that hangs clear.
std::optional<Suggestion> Suggesting::refined(const Suggestion& rough, const Stop& stop) const
{
    LineArray array = rough.array;
    const auto kept = [&]() -> std::optional<Suggestion> {
        const std::optional<double> measure =
            Evaluator(taskOf(rough.array, kPoints))
                .measure({rough.array.GIAGetAllAngle(), std::nullopt}, stop);
        return measure ? std::optional(figuresOf(rough.array, *measure)) : std::nullopt;
    };
    for (int raise = 0; raise < kMostRaises && !stop(); ++raise) {
        const CandidateSet set(array, allJoints(array), false);
        const QuickResult quick = quickSearch(taskOf(array, kPoints), set, stop);
        if (quick.ranking.best().empty())
            return std::nullopt;
        const Ranked& best = quick.ranking.best().front();
        const LineArray bent = withConfiguration(array, best.configuration());
        if (hangsClear(m_project.room, bent))
            return figuresOf(bent, best.rms);
        const FloatPair pick = array.GFAGetCradleCoord();
        array.GBSetCradleCoord({pick[0], pick[1] + static_cast<float>(kRasterM)});
        if (!fitsIn(m_project.room, extentOf(m_project.room, array)))
            break;
    }
    return kept();
}

/// Those that none of the others beats, the most even first.
std::vector<Suggestion> Suggesting::unbeaten(std::vector<Suggestion> all)
{
    std::stable_sort(all.begin(), all.end(), [](const Suggestion& a, const Suggestion& b) {
        return std::tuple(a.evenDb, -a.fohDb, a.weightKg) <
               std::tuple(b.evenDb, -b.fohDb, b.weightKg);
    });
    std::vector<Suggestion> kept;
    for (const Suggestion& one : all)
        if (std::none_of(kept.begin(), kept.end(), [&](const Suggestion& other) {
                return other.beats(one) || other.array == one.array;
            }))
            kept.push_back(one);
    return kept;
}

/// Ten of them: of each number of boxes the most even one, then the most even ones of the others.
std::vector<Suggestion> Suggesting::choice(const std::vector<Suggestion>& unbeaten)
{
    std::vector<Suggestion> chosen;
    std::vector<Suggestion> others;
    std::set<int> counts;
    for (const Suggestion& one : unbeaten)
        (counts.insert(one.array.boxCount()).second ? chosen : others).push_back(one);
    chosen.insert(chosen.end(), others.begin(), others.end());
    if (chosen.size() > kMost)
        chosen.erase(chosen.begin() + kMost, chosen.end());
    std::stable_sort(chosen.begin(), chosen.end(),
                     [](const Suggestion& a, const Suggestion& b) { return a.evenDb < b.evenDb; });
    return chosen;
}

void Suggesting::run(int threads, const Stop& stop,
                     const std::function<void(const std::vector<Suggestion>&)>& better,
                     const std::function<void(double share)>& progress)
{
    // The closer look takes about as long again.
    constexpr double kFirstLook = 0.5;
    const std::vector<Boxes> all = allBoxes();
    const std::uint64_t each =
        std::max<std::uint64_t>(100, m_budget / std::max<std::size_t>(1, all.size()));
    std::mutex mutex;
    std::vector<std::vector<Suggestion>> rough(all.size());
    const auto joined = [&] {
        std::vector<Suggestion> every;
        for (const auto& some : rough)
            every.insert(every.end(), some.begin(), some.end());
        return unbeaten(std::move(every));
    };
    std::size_t done = 0;
    const auto tell = [&](const std::vector<Suggestion>& list, double share) {
        m_found = list;
        if (better)
            better(m_found);
        if (progress)
            progress(share);
    };
    runBlocks(static_cast<int>(all.size()), threads, {}, [&](int which) {
        if (stop())
            return;
        const auto at = static_cast<std::size_t>(which);
        auto found = look(all[at], each, stop);
        const std::lock_guard lock(mutex);
        rough[at] = std::move(found);
        tell(choice(joined()),
             kFirstLook * static_cast<double>(++done) / static_cast<double>(all.size()));
    });

    // Closely: those that are chosen, and for each that then is beaten another one.
    std::vector<Suggestion> waiting = joined();
    const std::vector<Suggestion> first = choice(waiting);
    std::stable_partition(waiting.begin(), waiting.end(), [&](const Suggestion& one) {
        return std::any_of(first.begin(), first.end(),
                           [&](const Suggestion& other) { return other.array == one.array; });
    });
    std::vector<Suggestion> refinedOnes;
    std::size_t tried = 0;
    while (!stop() && tried < std::min(waiting.size(), kMostRefined)) {
        const std::size_t missing = kMost - std::min(kMost, unbeaten(refinedOnes).size());
        const std::size_t some = std::min(missing, std::min(waiting.size(), kMostRefined) - tried);
        if (some == 0)
            break;
        std::vector<std::optional<Suggestion>> now(some);
        std::size_t ready = 0;
        runBlocks(static_cast<int>(some), threads, {}, [&](int which) {
            if (stop())
                return;
            const auto at = static_cast<std::size_t>(which);
            auto found = refined(waiting[tried + at], stop);
            const std::lock_guard lock(mutex);
            now[at] = found;
            ++ready;
            if (progress && refinedOnes.empty())
                progress(kFirstLook +
                         (1 - kFirstLook) * static_cast<double>(ready) / static_cast<double>(some));
        });
        tried += some;
        if (stop())
            break;
        for (const std::optional<Suggestion>& one : now)
            if (one)
                refinedOnes.push_back(*one);
    }
    if (!stop())
        tell(choice(unbeaten(std::move(refinedOnes))), 1);
}

} // namespace orva
