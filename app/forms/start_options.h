#pragma once

#include "lang/language.h"
#include "model/result.h"

#include <optional>
#include <span>
#include <string>

namespace orva {

/// How the window was asked to start.
struct StartOptions {
    bool help = false;
    bool version = false;
    bool resetSettings = false; ///< the store is set aside, not lost
    bool noSplash = false;
    std::optional<Language> language; ///< of this run
    std::optional<std::string> log{}; ///< the file that the log goes to
    std::optional<std::string> file;  ///< a path or a file URL, as given
};

/// Reads the arguments (without the program's name); behind "--" all are files. An error says which
/// one is wrong.
Result<StartOptions> startOptions(std::span<const std::string> arguments);

/// What --help prints.
std::string startHelp();

} // namespace orva
