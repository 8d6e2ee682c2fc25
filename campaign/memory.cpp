// The n-th allocation of readers, map and searches fails, for every n or for so many by chance
// (COUNT of each): each either does its work or throws std::bad_alloc, and does it as before the
// next time.
#include "app/forms/search_setup.h"
#include "app/state/application_state.h"
#include "document/setup_edit.h"
#include "document/state_bytes.h"
#include "engine/line_spl.h"
#include "engine/speaker_data_text.h"
#include "engine/spl_map.h"
#include "model/project_file.h"
#include "optimize/quick_search.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <new>
#include <random>
#include <sstream>

namespace {

std::atomic<long> made = 0;
std::atomic<long> failing = 0; ///< from 1; 0: none
std::atomic<bool> allAfter = false;

void* allocate(std::size_t size, std::size_t alignment)
{
    const long number = ++made;
    if (failing > 0 && (allAfter ? number >= failing : number == failing))
        throw std::bad_alloc();
    void* place =
        alignment > alignof(std::max_align_t)
            ? std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment)
            : std::malloc(size);
    if (!place)
        throw std::bad_alloc();
    return place;
}

} // namespace

void* operator new(std::size_t size)
{
    return allocate(size, 1);
}
void* operator new(std::size_t size, std::align_val_t alignment)
{
    return allocate(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* place) noexcept
{
    std::free(place);
}
void operator delete(void* place, std::size_t) noexcept
{
    std::free(place);
}
void operator delete(void* place, std::align_val_t) noexcept
{
    std::free(place);
}
void operator delete(void* place, std::size_t, std::align_val_t) noexcept
{
    std::free(place);
}

namespace {

using namespace orva;

std::string textOf(const char* file)
{
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// What is done, as a figure that tells whether it was done right.
using Work = std::function<double()>;

bool tryAll(const char* name, const Work& work, long most)
{
    const double want = work();
    made = 0;
    (void)work();
    const long all = made;
    std::mt19937 random(1);
    const long tries = std::min(all, most);
    long thrown = 0;
    for (long i = 0; i < 2 * tries; ++i) {
        const long nth =
            tries == all ? 1 + i / 2 : 1 + static_cast<long>(random() % static_cast<unsigned>(all));
        allAfter = i % 2 == 1;
        made = 0;
        failing = nth;
        bool done = true;
        double found = 0;
        try {
            found = work();
        } catch (const std::bad_alloc&) {
            done = false;
            ++thrown;
        }
        failing = 0;
        if ((done && found != want) || work() != want) {
            std::printf("%s: allocation %ld of %ld changes the result\n", name, nth, all);
            return false;
        }
    }
    std::printf("%s %ld of %ld\n", name, thrown, 2 * tries);
    return true;
}

} // namespace

int main(int argc, char** argv) // NOLINT(bugprone-exception-escape)
{
    const long most = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 200;
    Workspace state;
    if (!LoadSystemData(state, ORVA_SOURCE_DIR "/data"))
        return 2;
    makeCurrent(state, newProject(kStandardSystem));
    const std::string project = textOf(ORVA_SOURCE_DIR "/examples/theatre.lad");
    const std::string data = textOf(ORVA_SOURCE_DIR "/data/system.dat");
    const std::vector<std::byte> unsaved = writeState(documentOf(state.project));
    const auto kernel = state.levelKernel();
    const LevelChoice choice = {{0, kBands - 1}, LevelField::Continuous, true};
    const auto task = withKernel(searchTask(
        state, state.project,
        {.areas = {{1, 1}}, .measure = Measure::SmoothArea, .points = 20, .levels = choice}));
    const CandidateSet candidates(state.project.array, {0, 4}, false);
    const std::pair<const char*, Work> all[] = {
        {"project", [&] { return bool(readProject(asBytes(project), "p")) ? 1.0 : 0.0; }},
        {"loudspeaker data",
         [&] { return ReadSpeakerDataText(data, {}, "d")->directivity.DirMagnitude[3][5]; }},
        {"recovered state", [&] { return bool(readState(unsaved, "s")) ? 1.0 : 0.0; }},
        {"map",
         [&] {
             RawSplCache cache;
             const MapGrid grid = *PrepareMapGrid(state.project.room, 0.5F, 0.5F);
             CalcRawSPL(*kernel, state.project.array, grid, choice.bands, 2, {}, cache);
             return double(CalcSummedSPL(cache, state.speakerData.BandLevel, grid, choice, 2, {})
                               ->levels.front());
         }},
        {"search",
         [&] {
             Search search(task, candidates, 0, *candidates.NumConfigs());
             while (!search.advance(2, [] { return false; })) {
             }
             return search.bestSoFar().best().front().rms;
         }},
        {"quick search", [&] {
             return quickSearch(task, candidates, [] { return false; }).ranking.best().front().rms;
         }}};
    bool sound = true;
    for (const auto& [name, work] : all)
        sound = tryAll(name, work, most) && sound;
    return sound ? 0 : 1;
}
