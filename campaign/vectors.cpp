// The batch program on a set of vector instructions: campaign_vectors SET WORD...; without words it
// names the sets that this machine has.
#include "cli/command_line.h"

#include <cstdio>
#include <iostream>

#include <hwy/targets.h>

int main(int argc, char** argv) // NOLINT(bugprone-exception-escape)
{
    const std::vector<std::string> words(argv + 1, argv + argc);
    for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
        const std::string name = hwy::TargetName(target);
        if (words.empty()) {
            std::puts(name.c_str());
        } else if (words.front() == name) {
            hwy::SetSupportedTargetsForTest(target);
            hwy::GetChosenTarget().Update(target);
            const orva::Console console{std::cout, std::cerr, false, ORVA_PROGRAM_FOLDER};
            return orva::runCommandLine({words.begin() + 1, words.end()}, console);
        }
    }
    return words.empty() ? 0 : 2;
}
