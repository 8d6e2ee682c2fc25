// What the commands say of the shipped examples, as tests/cli/expected has it: the figures there
// agree with an independent model. With ORVA_WRITE_EXPECTED they are written anew.
#include "command_line_fixture.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <regex>

namespace orva {
namespace {

std::string content(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Of a text that is too long to be kept (FNV-1a).
std::string fingerprint(const std::string& text)
{
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    return std::to_string(text.size()) + " bytes, " + std::to_string(hash) + '\n';
}

/// Without what differs from run to run.
std::string steady(const std::string& text)
{
    static const std::regex changing(R"re([^\n]*("seconds"|PerSecond")[^\n]*\n)re");
    return std::regex_replace(text, changing, "");
}

/// Where two texts differ, numbers by more than what vectors of another width change; empty where
/// they do not.
std::string difference(const std::string& a, const std::string& b)
{
    static const std::regex token(R"re(-?\d+(\.\d+)?(e[-+]\d+)?|[^-\d]+|-)re");
    std::sregex_iterator x(a.begin(), a.end(), token);
    std::sregex_iterator y(b.begin(), b.end(), token);
    for (; x != std::sregex_iterator() && y != std::sregex_iterator(); ++x, ++y) {
        if (x->str() == y->str())
            continue;
        const auto at = static_cast<std::size_t>(x->position());
        const bool numbers = std::isdigit(x->str().back()) && std::isdigit(y->str().back());
        if (!numbers || std::abs(std::stod(x->str()) - std::stod(y->str())) > 2e-3)
            return a.substr(at > 80 ? at - 80 : 0, 160) + "\n-- but --\n" + y->str();
    }
    return x == y ? "" : "one is longer";
}

TEST_F(CommandLine, SaysOfTheExamplesWhatItSaid)
{
    setenv("SOURCE_DATE_EPOCH", "1700000000", 1); // NOLINT(concurrency-mt-unsafe)
    setenv("TZ", "UTC", 1);                       // NOLINT(concurrency-mt-unsafe)
    const fs::path kept = fs::path(ORVA_SOURCE_DIR) / "tests/cli/expected";
    std::ifstream commands(kept / "commands.txt");
    int count = 0;
    for (std::string name, line; commands >> name && std::getline(commands, line);) {
        ++count;
        const fs::path made = folder / "made";
        line = std::regex_replace(line, std::regex("EXAMPLES"), ORVA_SOURCE_DIR "/examples");
        line = std::regex_replace(line, std::regex("MADE"), made.string());
        std::string said;
        std::istringstream parts(line);
        for (std::string part; std::getline(parts, part, '&');) {
            const Outcome outcome = run(part);
            said += outcome.out + outcome.err;
            if (outcome.status != 0)
                said += "status " + std::to_string(outcome.status) + '\n';
        }
        for (const char* kind : {".csv", ".json", ".rtf"})
            if (const fs::path file = made.string() + kind; fs::exists(file)) {
                const std::string bytes = content(file);
                said += bytes.size() > 10000 ? fingerprint(bytes) : bytes;
                fs::remove(file);
            }
        said = steady(std::regex_replace(said, std::regex(folder.string()), "FOLDER"));
        const fs::path file = kept / (name + ".txt");
        if (std::getenv("ORVA_WRITE_EXPECTED")) // NOLINT(concurrency-mt-unsafe)
            std::ofstream(file, std::ios::binary) << said;
        EXPECT_EQ(difference(content(file), said), "") << name << ':' << line;
    }
    EXPECT_GE(count, 35);
}

} // namespace
} // namespace orva
