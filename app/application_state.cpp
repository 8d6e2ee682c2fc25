#include "app/application_state.h"

#include "engine/fast_kernel.h"
#include "engine/literal_kernel.h"
#include "engine/speaker_data_text.h"
#include "model/project_file.h"

namespace orva {

namespace {

Result<SpeakerDataReading> readSpeakerData(const std::filesystem::path& file,
                                           const Directivity& before)
{
    // one byte more than is allowed, so that the reader sees that the file is too large
    const Result<std::string> text = readFile(file, kSpeakerDataMaxBytes + 1);
    if (!text)
        return text.error();
    return ReadSpeakerDataText(*text, before, file.string());
}

SpeakerDataLoad loadOf(const SpeakerDataReading& reading, const std::filesystem::path& file)
{
    SpeakerDataLoad load;
    const std::optional<Message> shortfall = reading.shortfall();
    if (reading.failed())
        load.error =
            Error{Message(Text::LoadDataFailedWith, {shortfall.value_or("")}), file.string()};
    else if (shortfall)
        load.note = Error{*shortfall, file.string()};
    return load;
}

void makeCurrent(ApplicationState& state, Project project)
{
    SelectSystem(state, project.array.GIGetArrayType());
    state.gRoom = std::move(project.room);
    state.gLineArray = project.array;
    state.subArray = project.subArray;
}

} // namespace

std::unique_ptr<LevelKernel> ApplicationState::levelKernel()
{
    if (!directivityTable)
        directivityTable = DirectivityTable::make(speakerData.directivity);
    if (!radialTable)
        radialTable = RadialTable::make(air);
    return std::make_unique<FastKernel>(
        directivityTable, radialTable,
        std::make_unique<LiteralKernel>(speakerData.directivity, air));
}

Result<SystemDataLoad> LoadSystemData(ApplicationState& state, const std::filesystem::path& folder)
{
    const std::filesystem::path standardFile = folder / "system.dat";
    const std::filesystem::path compactFile = folder / "systemsm.dat";
    const Result<SpeakerDataReading> standard =
        readSpeakerData(standardFile, state.speakerData.directivity);
    if (!standard)
        return standard.error();
    // Read over the same tables: what the second file lacks stays as the first one has it.
    const Result<SpeakerDataReading> compact = readSpeakerData(compactFile, standard->directivity);
    if (!compact)
        return compact.error();

    state.systemData = {standard->directivity, compact->directivity};
    state.speakerData.directivity = compact->directivity;
    state.directivityTable.reset();
    return SystemDataLoad{loadOf(*standard, standardFile), loadOf(*compact, compactFile)};
}

void SelectSystem(ApplicationState& state, std::int16_t system)
{
    state.speakerData = SelectSpeakerData(state.systemData, system);
    state.directivityTable.reset();
}

void UpdateSpeedOfSound(ApplicationState& state, float temperatureC)
{
    state.air = airAt(temperatureC);
    state.radialTable.reset();
}

void MlSetLanguage(ApplicationState& state, std::int32_t languageId)
{
    state.gLanguageId = languageOf(languageId);
}

void SetNewProject(ApplicationState& state, std::int16_t system)
{
    makeCurrent(state, newProject(system));
}

Result<int> loadProject(ApplicationState& state, const std::filesystem::path& file)
{
    const Result<std::string> bytes = readFile(file, kProjectFileBytes);
    if (!bytes)
        return bytes.error();
    Result<LoadedProject> loaded = readProject(asBytes(*bytes), file.string());
    if (!loaded)
        return loaded.error();
    makeCurrent(state, std::move(loaded->project));
    return loaded->version;
}

std::string projectBytes(const ApplicationState& state)
{
    return std::string(asText(writeProject({state.gRoom, state.gLineArray, state.subArray})));
}

Result<Saved> saveProject(const ApplicationState& state, const std::filesystem::path& file)
{
    return writeFile(file, projectBytes(state));
}

Result<std::optional<Error>> importSpeakerData(ApplicationState& state,
                                               const std::filesystem::path& file)
{
    const Result<SpeakerDataReading> reading = readSpeakerData(file, state.speakerData.directivity);
    if (!reading)
        return reading.error();
    state.speakerData.directivity = reading->directivity;
    state.directivityTable.reset();
    const SpeakerDataLoad load = loadOf(*reading, file);
    if (load.error)
        return *load.error;
    return load.note;
}

} // namespace orva
