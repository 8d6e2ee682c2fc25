#pragma once

#include "app/files/file_access.h"
#include "app/state/settings.h"
#include "engine/acoustics.h"
#include "engine/kernel_tables.h"
#include "engine/level_kernel.h"
#include "engine/speaker_data.h"
#include "engine/speaker_data_text.h"
#include "lang/language.h"
#include "model/project_file.h"
#include "model/result.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace orva {

/// What outlives a project in a running program; one object, handed down by reference.
struct ApplicationState {
    SystemData systemData;
    SpeakerData speakerData;
    Settings settings;
    Air air = airAt(Settings{}.Temperature);
    Language gLanguageId = Language::English;
    /// Name of the file whose speaker data are current; empty: the program's own.
    std::string importedData;

    /// The kernel for the current directivity and air; it and its tables are made when first asked
    /// for and stay until either changes.
    std::shared_ptr<const LevelKernel> levelKernel();
    /// Kernels for the weather that may come: 10 °C colder and warmer, 20 % drier and moister,
    /// within the ranges of both. Made and kept as levelKernel() is.
    const std::vector<std::shared_ptr<const LevelKernel>>& weatherKernels();
    /// Other loudspeaker data, or another air, are current.
    void directivityChanged();
    void airChanged();

private:
    std::shared_ptr<const DirectivityTable> m_directivityTable;
    std::shared_ptr<const RadialTable> m_radialTable;
    std::shared_ptr<const LevelKernel> m_kernel;
    std::vector<std::shared_ptr<const LevelKernel>> m_weatherKernels;

    std::shared_ptr<const LevelKernel> made(const Air& forAir,
                                            std::shared_ptr<const RadialTable> radial);
};

/// A project with what it is predicted with, for programs without a window.
struct Workspace : ApplicationState {
    Project project;
};

/// What became of a speaker data file that could be read.
struct SpeakerDataLoad {
    int bands = 0;                ///< that were read
    std::optional<Error> error{}; ///< where it does not hold all bands, or not one number
    std::optional<Error> note{};  ///< where it holds all bands but not all values
};

/// What became of each system's file, at the place of its number.
using SystemDataLoad = std::vector<SpeakerDataLoad>;

/// Reads the loudspeaker data of every system from `folder`. On an error (a file that is missing,
/// unreadable or far too large) nothing is changed. A file of other content is taken as far as it
/// goes.
Result<SystemDataLoad> LoadSystemData(ApplicationState& state, const std::filesystem::path& folder);

/// Makes a system's loudspeaker data current (0 standard, any other value compact), which ends an
/// import. Boxes, cradle and type codes follow the array's own system.
void SelectSystem(ApplicationState& state, std::int16_t system);

/// The air at a temperature in °C, with the humidity at which it absorbs, in percent; none: the
/// given absorption.
void UpdateSpeedOfSound(ApplicationState& state, float temperatureC,
                        std::optional<float> humidityPercent = {});
/// The air as the settings say.
void followWeather(ApplicationState& state);

/// Makes a language current; English for an identifier that is not supported.
void MlSetLanguage(ApplicationState& state, std::int32_t languageId);

/// A project makes its system's loudspeaker data current.
void makeCurrent(Workspace& workspace, Project project);

/// Reads a project.
Result<LoadedProject> loadProject(const std::filesystem::path& file);

/// A project as its file.
std::string projectBytes(const Project& project);

/// Writes a project.
Result<Saved> saveProject(const Project& project, const std::filesystem::path& file);

/// What a speaker data file holds, over that directivity: what it lacks stays. An error when it
/// cannot be read.
Result<SpeakerDataReading> readSpeakerData(const std::filesystem::path& file,
                                           const Directivity& before);
/// Makes that the current directivity until the next SelectSystem().
SpeakerDataLoad takeSpeakerData(ApplicationState& state, const SpeakerDataReading& reading,
                                const std::filesystem::path& file);
/// Both; an error, and nothing changed, when the file cannot be read.
Result<SpeakerDataLoad> importSpeakerData(ApplicationState& state,
                                          const std::filesystem::path& file);

} // namespace orva
