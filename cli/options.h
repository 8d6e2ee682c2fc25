#pragma once

#include "app/files/file_access.h"
#include "app/forms/export_table.h"
#include "app/state/settings.h"
#include "cli/command_line.h"
#include "drawing/drawing_options.h"
#include "drawing/drawing_surface.h"
#include "engine/line_spl.h"
#include "lang/text_options.h"
#include "model/result.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <CLI/App.hpp>

namespace orva {

/// What every command takes.
struct CommonOptions {
    TextOptions text() const;
    DrawingOptions drawing() const; ///< the grids of a first start
    std::filesystem::path dataFolderOf(const Console& console) const;

    std::string dataFolder;
    std::string speakerDataFile;
    float temperatureC = Settings{}.Temperature;
    std::string units = "m";
    std::string language = "en";
    int threads = 1;
    bool progress = false;
};

/// What commands that predict levels take.
struct PredictionOptions {
    std::string mapType = "detailed";
    std::string averaging = "third";
    int bandHz = 1000;
    bool aWeighted = false;
    std::optional<float> humidityPercent; ///< none: the given absorption

    LevelChoice choice() const;
};

void addCommonOptions(CLI::App& command, CommonOptions& options);
void addPredictionOptions(CLI::App& command, PredictionOptions& options);

/// Adds --area, whose number the project may yet lack.
CLI::Option* addAreaOption(CLI::App& command, int& area, const std::string& description);
/// Adds --points along each audience area.
void addPointsOption(CLI::App& command, int& points);

/// Files that take a command's figures.
struct FigureFiles {
    std::string csv;
    std::string json;
};
/// Adds --csv and --json, whose descriptions go on with `figures`.
void addFigureOptions(CLI::App& command, FigureFiles& files, const std::string& figures);
/// Prepares those that were asked for.
Result<Done> addFigures(const FigureFiles& asked, const std::function<std::string()>& csv,
                        const std::function<std::string()>& json, PendingFiles& files);

/// The same of a table, which is made where it is asked for.
Result<Done> addFigures(const FigureFiles& asked, const std::function<ExportTable()>& table,
                        const TextOptions& text, PendingFiles& files);

/// The cells of a map, and the files that take its figures.
struct MapOptions {
    float cellM = 0.1F;
    FigureFiles figures;
};
void addMapOptions(CLI::App& command, MapOptions& options, const std::string& figures);

/// A picture that a command can write: a file and its width; the height is 9/16 of it.
struct PictureOptions {
    std::string file;
    int widthPx = 1280;
};
void addPictureOptions(CLI::App& command, PictureOptions& options, const char* description);
/// Prepares the picture that `draw` makes; nothing where no file was asked for.
Result<Done> addPicture(const PictureOptions& options,
                        const std::function<void(DrawingSurface&)>& draw, PendingFiles& files);

/// Prints a result and, when that went well, lets the files take their places. What there is to be
/// said about a run that went well, `warnings` and what the files tell, goes to standard error.
Result<Done> deliver(const Console& console, const std::string& result, PendingFiles& files,
                     const std::vector<std::string>& warnings = {});

/// An error where an output is one of the files that a run reads: `inputs`, the loudspeaker data of
/// the options, the data folder's files. Empty names stand for no file.
Result<Done> checkOutputs(const Console& console, const CommonOptions& options,
                          const std::vector<std::string>& outputs,
                          const std::vector<std::string>& inputs);

/// Refuses texts that are not what is asked for, and says so: "3 is not a place X,Y".
CLI::Validator accepted(const std::function<bool(const std::string&)>& accepts,
                        const std::string& what);

/// The figures of a text parted by `separator`, at least one; none where a part is no finite
/// number.
std::optional<std::vector<double>> figuresOf(const std::string& text, char separator);

/// Adds an option that may be given several times, with a text that `check` accepts each.
void addRepeatedOption(CLI::App& command, const std::string& name, std::vector<std::string>& texts,
                       const std::string& description, const CLI::Validator& check,
                       const std::string& typeName);

/// Of a project's file.
Error noSuchArea(int number, const std::string& file);

/// Refuses the empty name of a file or folder.
CLI::Validator fileName();

/// Refuses what is no number from `low` to `high`, infinity and NaN included.
CLI::Validator numberBetween(double low, double high);
/// Refuses what is no number above 0 that a 32-bit float holds.
CLI::Validator numberAboveZero();

/// What every command takes that works on a project.
struct ProjectOptions {
    CommonOptions common;
    std::string file;
};

/// What a command does once its arguments have been read.
using Work = std::function<Result<Done>(const Console&)>;

/// Adds the arguments of ProjectOptions.
void addProjectOptions(CLI::App& command, ProjectOptions& options);

/// Adds a command that takes those arguments alone; its example has the project theatre.lad.
void addProjectCommand(CLI::App& program, Work& work, const char* name, const char* description,
                       Result<Done> (*run)(const ProjectOptions&, const Console&));

/// Adds an example to the end of the command's --help: the command with `arguments`.
void addExample(CLI::App& command, const std::string& arguments);

/// Adds all commands.
void addCommands(CLI::App& program, Work& work);

/// Each adds one command to the program; `work` becomes the chosen command's work while the
/// arguments are read.
void addNewCommand(CLI::App& program, Work& work);
void addShowCommand(CLI::App& program, Work& work);
void addGeometryCommand(CLI::App& program, Work& work);
void addLevelsCommand(CLI::App& program, Work& work);
void addRiggingCommand(CLI::App& program, Work& work);
void addRowsCommand(CLI::App& program, Work& work);
void addMapCommand(CLI::App& program, Work& work);
void addOptimizeCommand(CLI::App& program, Work& work);
void addAimCommand(CLI::App& program, Work& work);
void addReportCommand(CLI::App& program, Work& work);
void addSpectrumCommand(CLI::App& program, Work& work);
void addCompareCommand(CLI::App& program, Work& work);
void addSuggestCommand(CLI::App& program, Work& work);
void addSubArrayCommand(CLI::App& program, Work& work);

} // namespace orva
