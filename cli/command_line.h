#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace orva {

/// Where a run reads and writes besides its files.
struct Console {
    std::ostream& out;
    std::ostream& err;
    bool errIsTerminal = false;
    std::filesystem::path programFolder; ///< holds `bin` with the loudspeaker data
};

/// One run of orva-cli with the words behind the program's name. Returns the exit status: 0 done,
/// 1 the work failed, 2 the arguments are wrong.
int runCommandLine(const std::vector<std::string>& words, const Console& console);

} // namespace orva
