#include "app/files/program_folder.h"
#include "cli/command_line.h"

#include <iostream>

#include <unistd.h>

int main(int argc, char** argv)
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    const orva::Console console{
        std::cout, std::cerr, isatty(STDERR_FILENO) == 1,
        orva::programFolder((error ? std::filesystem::path(argv[0]) : program).parent_path())};
    return orva::runCommandLine({argv + std::min(argc, 1), argv + argc}, console);
}
