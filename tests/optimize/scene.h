#pragma once

#include "engine/speaker_data_text.h"
#include "model/project.h"
#include "optimize/search.h"

#include <fstream>
#include <random>
#include <sstream>

namespace orva {

using Random = std::mt19937;

inline Directivity shipped()
{
    std::ifstream file(ORVA_SOURCE_DIR "/data/system.dat", std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return ReadSpeakerDataText(text.str(), {}, "system.dat")->directivity;
}

struct Scene {
    Project project;
    std::shared_ptr<const SearchTask> task;
    JointRange range;
};

/// A random array of few joints over a random area.
inline Scene randomScene(Random& random, Measure measure, bool pinMode, BandSpan bands)
{
    const auto uniform = [&](double low, double high) {
        return std::uniform_real_distribution<>(low, high)(random);
    };
    Scene scene{newProject(kStandardSystem), nullptr, {}};
    LineArray& array = scene.project.array;
    LineArray::Positions types{};
    for (std::int16_t& type : types)
        type = static_cast<std::int16_t>(random() % 2);
    array.GBSetAllType(types);
    LineArray::Positions angles = array.GIAGetAllAngle();
    angles[0] = static_cast<std::int16_t>(pinMode ? random() % 11 : random() % 60);
    array.GBSetAllAngle(angles);
    array.GBSetAngleOrPin(pinMode);
    array.GFACalcCOM();
    scene.range = {1, 4};

    static const Directivity kData = shipped();
    auto task = std::make_shared<SearchTask>();
    task->array = array;
    const auto length = static_cast<float>(uniform(3, 20));
    task->area = {static_cast<float>(uniform(3, 12)), 1.7F,  0, 0,
                  static_cast<float>(uniform(0, 20)), length};
    task->target = {0, length, uniform(-0.5, 0), uniform(95, 110)};
    task->measure = measure;
    task->points = 2 + static_cast<int>(random() % 40);
    task->choice = {bands, LevelField::Continuous, true};
    task->speakerData = SelectSpeakerData({kData, kData}, kStandardSystem);
    task->air = airAt(21);
    task->amplitudeError = kSearchPrecision.amplitudeError;
    task->kernel = std::make_shared<FastKernel>(DirectivityTable::make(kData, kSearchPrecision),
                                                RadialTable::make(task->air, kSearchPrecision),
                                                std::make_unique<LiteralKernel>(kData, task->air));
    scene.task = task;
    return scene;
}

} // namespace orva
