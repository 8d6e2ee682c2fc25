#pragma once

#include "app/forms/search_setup.h"
#include "cli/options.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orva {

/// What a search varies and measures, and which part of it is wanted.
struct SearchOptions {
    SearchChoice choice(const LevelChoice& levels) const;

    std::vector<std::string> areas; ///< "N" or "N:WEIGHT"
    std::vector<std::string> free;  ///< "pin", "height:FROM:TO:STEP"
    std::optional<double> perDoublingDb;
    std::string measure = "smooth";
    int points = 200;
    bool allSpeakers = false;
    bool neighbours = false;
    std::vector<double> fitLine; ///< start, length, slope, level
    std::optional<std::uint64_t> limit;
    std::optional<std::uint64_t> from;
    std::optional<std::uint64_t> count;
    bool quick = false;
};

void addSearchOptions(CLI::App& command, SearchOptions& options);
/// Throws where one is missing or some do not go together.
void checkSearch(const SearchOptions& options);

} // namespace orva
