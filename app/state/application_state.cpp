#include "app/state/application_state.h"

#include "engine/fast_kernel.h"
#include "engine/literal_kernel.h"

#include <algorithm>
#include <utility>

namespace orva {

namespace {

SpeakerDataLoad loadOf(const SpeakerDataReading& reading, const std::filesystem::path& file)
{
    SpeakerDataLoad load{.bands = reading.bands};
    const std::optional<Message> shortfall = reading.shortfall();
    if (reading.failed())
        load.error =
            Error{Message(Text::LoadDataFailedWith, {shortfall.value_or("")}), file.string()};
    else if (shortfall)
        load.note = Error{*shortfall, file.string()};
    return load;
}

} // namespace

Result<SpeakerDataReading> readSpeakerData(const std::filesystem::path& file,
                                           const Directivity& before)
{
    // one byte more than is allowed, so that the reader sees that the file is too large
    const Result<std::string> text = readFile(file, kSpeakerDataMaxBytes + 1);
    if (!text)
        return text.error();
    return ReadSpeakerDataText(*text, before, file.string());
}

std::shared_ptr<const LevelKernel> ApplicationState::levelKernel()
{
    if (m_kernel)
        return m_kernel;
    if (!m_radialTable)
        m_radialTable = RadialTable::make(air);
    m_kernel = made(air, m_radialTable);
    return m_kernel;
}

std::shared_ptr<const LevelKernel> ApplicationState::made(const Air& forAir,
                                                          std::shared_ptr<const RadialTable> radial)
{
    if (!m_directivityTable)
        m_directivityTable = DirectivityTable::make(speakerData.directivity);
    return std::make_shared<FastKernel>(
        m_directivityTable, std::move(radial),
        std::make_unique<LiteralKernel>(speakerData.directivity, forAir));
}

const std::vector<std::shared_ptr<const LevelKernel>>& ApplicationState::weatherKernels()
{
    constexpr float kDegrees = 10;
    constexpr float kPercent = 20;
    if (!m_weatherKernels.empty())
        return m_weatherKernels;
    for (const float warmer : {-kDegrees, kDegrees})
        for (const float moister : {-kPercent, kPercent}) {
            const Air weather =
                weatherAt(std::clamp(settings.Temperature + warmer, kColdestC, kHottestC),
                          std::clamp(settings.Humidity + moister, kDriestPercent, kWettestPercent));
            m_weatherKernels.push_back(made(weather, RadialTable::make(weather)));
        }
    return m_weatherKernels;
}

void ApplicationState::directivityChanged()
{
    m_directivityTable.reset();
    m_kernel.reset();
    m_weatherKernels.clear();
}

void ApplicationState::airChanged()
{
    m_radialTable.reset();
    m_kernel.reset();
    m_weatherKernels.clear();
}

Result<SystemDataLoad> LoadSystemData(ApplicationState& state, const std::filesystem::path& folder)
{
    SystemData read;
    SystemDataLoad loads;
    // Over the same tables: what a file lacks stays as the one before has it.
    Directivity tables = state.speakerData.directivity;
    for (const SystemRecord* system : allSystems()) {
        const std::filesystem::path file = folder / system->dataFile;
        const Result<SpeakerDataReading> reading = readSpeakerData(file, tables);
        if (!reading)
            return reading.error();
        tables = reading->directivity;
        read.push_back(tables);
        loads.push_back(loadOf(*reading, file));
    }
    state.systemData = std::move(read);
    state.speakerData.directivity = tables;
    state.directivityChanged();
    return loads;
}

void SelectSystem(ApplicationState& state, std::int16_t system)
{
    state.speakerData = SelectSpeakerData(state.systemData, system);
    state.importedData.clear();
    state.directivityChanged();
}

void UpdateSpeedOfSound(ApplicationState& state, float temperatureC,
                        std::optional<float> humidityPercent)
{
    state.air = humidityPercent ? weatherAt(temperatureC, *humidityPercent) : airAt(temperatureC);
    state.airChanged();
}

void followWeather(ApplicationState& state)
{
    const Settings& settings = state.settings;
    UpdateSpeedOfSound(state, settings.Temperature,
                       settings.Weather ? std::optional(settings.Humidity) : std::nullopt);
}

void MlSetLanguage(ApplicationState& state, std::int32_t languageId)
{
    state.gLanguageId = languageOf(languageId);
}

void makeCurrent(Workspace& workspace, Project project)
{
    SelectSystem(workspace, project.array.GIGetArrayType());
    workspace.project = std::move(project);
}

Result<LoadedProject> loadProject(const std::filesystem::path& file)
{
    const Result<std::string> bytes = readFile(file, kLargestProjectFile);
    if (!bytes)
        return bytes.error();
    return readProject(asBytes(*bytes), file.string());
}

std::string projectBytes(const Project& project)
{
    return std::string(asText(writeProject(project)));
}

Result<Saved> saveProject(const Project& project, const std::filesystem::path& file)
{
    return writeFile(file, projectBytes(project));
}

SpeakerDataLoad takeSpeakerData(ApplicationState& state, const SpeakerDataReading& reading,
                                const std::filesystem::path& file)
{
    state.speakerData.directivity = reading.directivity;
    state.directivityChanged();
    if (reading.bands > 0)
        state.importedData = file.filename().string();
    return loadOf(reading, file);
}

Result<SpeakerDataLoad> importSpeakerData(ApplicationState& state,
                                          const std::filesystem::path& file)
{
    const Result<SpeakerDataReading> reading = readSpeakerData(file, state.speakerData.directivity);
    if (!reading)
        return reading.error();
    return takeSpeakerData(state, *reading, file);
}

} // namespace orva
