#include "app/files/save_over.h"
#include "command_line_fixture.h"
#include "model/project_file.h"

#include <csignal>
#include <fstream>
#include <tuple>

namespace orva {
namespace {

TEST_F(CommandLine, WrongArgumentsGiveStatusTwoAndNothingElse)
{
    std::istringstream lines(
        "\nlevel p.lad\nlevels\nlevels p.lad more.lad\nlevels p.lad --bands 1000\n"
        "levels p.lad --band 1001\nlevels p.lad --band 1000.0\nlevels p.lad --points 0\n"
        "levels p.lad --points 1.5\nlevels p.lad --points 1000001\nlevels p.lad --area 0\n"
        "levels p.lad --temperature 50.1\nlevels p.lad --temperature -20.1\nmap p.lad --width 0\n"
        "spectrum p.lad\nspectrum p.lad --at 1\nspectrum p.lad --at 1,2,3\n"
        "spectrum p.lad --at 1,2,\noptimize p.lad --area 1:\noptimize p.lad --area 1:2:\n"
        "optimize p.lad --area 1 --free height:5:6:1:\n"
        "spectrum p.lad --at 1,2 --area 1\nspectrum p.lad --at 1,2 --points 3\n"
        "compare p.lad\ncompare p.lad q.lad more.lad\ncompare p.lad q.lad --points 0\n"
        "levels p.lad --humidity 0.5\nlevels p.lad --temperature nan\nlevels p.lad --threads "
        "0\nlevels p.lad --map-type loud\n"
        "levels p.lad --averaging fifth\nmap p.lad --cell 0\nmap p.lad --cell -1\n"
        "map p.lad --cell nan\nmap p.lad --cell inf\nmap p.lad --cell 1e-60\n"
        "map p.lad --language fr\nnew\nnew x.lad --system large\noptimize p.lad\n"
        "optimize p.lad --area 1 --points 1\noptimize p.lad --area 1 --from -1\n"
        "optimize p.lad --area 1 --quick --from 3\noptimize p.lad --area 1 --quick --count 3\n"
        "show ''\nnew ''\nmap p.lad --png ''\nmap p.lad --csv ''\nlevels p.lad --data ''\n"
        "levels p.lad --speaker-data ''\naim p.lad --out ''\noptimize --merge ''\n"
        "report p.lad ''");
    for (std::string line; std::getline(lines, line);) {
        SCOPED_TRACE(line);
        const Outcome result = run(line);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err.find("--help"), std::string::npos);
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 2);
    }
}

TEST_F(CommandLine, TheExampleOfEachHelpWorks)
{
    for (const char* name : {"theatre.lad", "better.lad"})
        fs::copy(ORVA_SOURCE_DIR "/examples/theatre.lad", folder / name);
    std::istringstream help(run("--help").out);
    std::string line;
    while (std::getline(help, line) && line != "Subcommands:") {
    }
    int commands = 0;
    for (std::string command; help >> command && std::getline(help, line); ++commands) {
        SCOPED_TRACE(command);
        const std::string text = run(command + " --help").out;
        const std::string start = "\nExample:\n  orva-cli ";
        const std::size_t example = text.find(start);
        ASSERT_NE(example, std::string::npos);
        std::istringstream words(text.substr(example + start.size()));
        std::string given;
        for (std::string word; words >> word;) // files by the ends of their names
            given += (std::isalpha(static_cast<unsigned char>(word.back())) != 0 &&
                              word.find('.') != std::string::npos
                          ? folder.string() + '/' + word
                          : word) +
                     ' ';
        EXPECT_EQ(given.rfind(command, 0), 0U);
        const Outcome outcome = run(given);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
    }
    EXPECT_GT(commands, 10);
}

TEST_F(CommandLine, FailedWorkGivesStatusOneOneLineAndKeepsOldFiles)
{
    const std::string corrupt = folder / "corrupt.lad";
    const std::string half = folder / "half.xhn";
    const std::string old = folder / "old";
    fs::copy(project, corrupt);
    std::fstream(corrupt, std::ios::in | std::ios::out | std::ios::binary).seekp(428).put(33);
    std::ofstream(half) << "no data";
    std::ofstream(old) << "older";
    const std::string search = "optimize " + project + " --area 1 --points 10 ";
    const std::string quick = folder / "quick.json";
    const std::string twice = folder / "twice.json";
    std::ofstream(quick) << run(search + "--quick").out;
    Json part = run(search + "--count 1").json();
    part["first"] = 5;
    std::ofstream(twice) << part;
    const std::string other = folder / "other.json";
    std::ofstream(other) << run(search + "--from 1 --measure line").out;
    const std::string first = folder / "first.json";
    std::ofstream(first) << run(search + "--count 1 --threads 1000000").out;
    const std::string data = folder / "data.xhn";
    fs::copy(ORVA_BINARY_DIR "/bin/system.dat", data);
    fs::create_hard_link(project, folder / "hard.lad");
    const std::tuple<std::string, std::string> lines[] = {
        {"optimize --merge " + first + " " + other, "another search"},
        {"rigging " + project + " --png " + folder.string() + "/./p.lad", "file that is read"},
        {"report " + project + " " + folder.string() + "/hard.lad", "file that is read"},
        {"aim " + project + " --out " + data + " --speaker-data " + data, "file that is read"},
        {"new " ORVA_BINARY_DIR "/bin/system.dat", "file that is read"},
        {"map " + project + " --cell 5 --csv x --png ./x", "same file"},
        {"show \x1b\x07", "\\x1b\\x07"},
        {"show " + corrupt, corrupt},
        {"geometry " + corrupt, corrupt},
        {"levels " + corrupt, corrupt},
        {"map " + corrupt + " --csv " + old, corrupt},
        {"show " + project + ".missing", "p.lad.missing"},
        {"map " + project + " --cell 0.001 --csv " + old, "20 million"},
        {"map " + project + " --speaker-data " + half + " --csv " + old, half},
        {"map " + project + " --data " + folder.string() + " --csv " + old, "system.dat"},
        {"map " + project + " --csv " + folder.string() + "/missing/map.csv", "missing/map.csv"},
        {"new " + folder.string() + "/missing/p.lad", "missing/p.lad"},
        {"optimize --merge " + quick, "quick search"},
        {"optimize --merge " + twice, "not among"},
        {"optimize --merge " + project, "no result"},
        {search + "--from 999999999", "configurations"}};
    for (const auto& [line, named] : lines) {
        SCOPED_TRACE(line);
        const Outcome result = run(line);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err.find(named), std::string::npos) << result.err;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
        std::string kept;
        std::ifstream(old) >> kept;
        EXPECT_EQ(kept, "older");
    }
}

TEST_F(CommandLine, ShowPrintsWhatAnEditedFileHolds)
{
    std::fstream(project, std::ios::in | std::ios::out | std::ios::binary).seekp(128)
        << "B\xFChne \x80 ";
    const Json shown = run("show " + project).json();
    EXPECT_EQ(shown["version"], 2);
    EXPECT_EQ(shown["room"]["ProjectName"], "Bühne €");
    EXPECT_EQ(shown["room"]["AudienceArea2"][4].dump(),
              "5.03"); // the shortest text of the same float
    EXPECT_EQ(shown["array"]["NumSchräg"], 6);
}

TEST_F(CommandLine, BoxesOfUnknownCodeAreNullAndTooManyAreRefused)
{
    std::fstream file(project, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(436 + 2).put(9); // the second box
    file.flush();
    const Json geometry = run("geometry " + project).json();
    EXPECT_TRUE(geometry["sources"][1].is_null());
    EXPECT_EQ(geometry["sources"][2].size(), 3U);
    EXPECT_EQ(geometry["boxCentersOfGravity"].size(), 12U);
    file.seekp(434).put(21); // bass boxes: 33 in all
    file.flush();
    EXPECT_EQ(run("show " + project).status, 0);
    for (const char* command : {"geometry ", "levels ", "map "})
        EXPECT_EQ(run(command + project).status, 1);
}

TEST_F(CommandLine, WarningsTellWhatContradictsItself)
{
    EXPECT_EQ(run("geometry " + project).err, "");
    EXPECT_FALSE(run("geometry " + project).json().contains("warnings"));
    std::fstream(project, std::ios::in | std::ios::out | std::ios::binary).seekp(428).put(5);
    const std::string out = " " + (folder / "out").string();
    for (const std::string& line :
         {"rigging " + project, "geometry " + project, "report " + project + out,
          "levels --points 2 " + project, "map --cell 9 " + project,
          "aim " + project + " --out" + out, "optimize --area 1 --count 1 --points 2 " + project}) {
        SCOPED_TRACE(line);
        const Outcome result = run(line);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
        EXPECT_NE(result.err.find("warning: "), std::string::npos);
        if (result.out.rfind('{', 0) == 0) {
            EXPECT_EQ(result.json()["warnings"].size(), 1U);
        }
    }
    EXPECT_EQ(run("aim " + project + " --out " + project).status, 0); // what it came from
}

/// A standard error that raises a signal at the first figure of the progress bar, or at that many.
class SignallingError : public std::stringbuf {
public:
    SignallingError(int number, int times) : m_number(number), m_left(times) {}

protected:
    std::streamsize xsputn(const char* text, std::streamsize size) override
    {
        if (std::string_view(text, static_cast<std::size_t>(size)).find("Testing") == 0)
            for (; m_left > 0; --m_left)
                std::raise(m_number);
        return std::stringbuf::xsputn(text, size);
    }

private:
    int m_number;
    int m_left;
};

TEST_F(CommandLine, AnInterruptedSearchPrintsWhatTheRestCompletes)
{
    const std::string search =
        "optimize " ORVA_SOURCE_DIR "/examples/theatre.lad --area 2 --all-speakers --points 50 ";
    const std::string saved = folder / "saved.lad";
    const auto interrupted = [&](const std::string& line, int number, int times = 1) {
        std::istringstream in(line + " --progress --out " + saved);
        SignallingError buffer(number, times);
        std::ostream err(&buffer);
        std::ostringstream out;
        const int status = runCommandLine({std::istream_iterator<std::string>(in), {}},
                                          {out, err, false, ORVA_BINARY_DIR});
        return Outcome{status, out.str(), buffer.str()};
    };
    const auto asPart = [&](const std::string& name, const std::string& text) {
        std::ofstream(folder / name) << text;
        return " " + (folder / name).string();
    };
    std::signal(SIGINT, SIG_DFL); // a script's jobs in the background ignore it
    // The second signal; before threads have run.
    EXPECT_EXIT(interrupted(search, SIGINT, 2), testing::KilledBySignal(SIGINT), "");
    const Json whole = run(search).json();
    struct Case {
        std::string options;
        std::uint64_t first;
        std::uint64_t end;
        int number;
    };
    for (const auto& [options, first, end, number] :
         {Case{"", 0, 16384, SIGINT}, Case{"--from 0", 0, 16384, SIGTERM},
          Case{"--from 5000", 5000, 16384, SIGINT}, Case{"--limit 16383", 0, 16383, SIGTERM},
          Case{"--count 16000 --threads 1", 0, 16000, SIGINT}}) {
        SCOPED_TRACE(options);
        const Outcome cut = interrupted(search + options, number);
        EXPECT_EQ(cut.status, 1);
        EXPECT_NE(cut.err.find("interrupted after "), std::string::npos) << cut.err;
        const std::uint64_t tested = cut.json()["tested"];
        EXPECT_EQ(cut.json()["first"], first);
        ASSERT_LT(first + tested, end);
        const std::string range =
            "--from " + std::to_string(first) + " --count " + std::to_string(tested);
        EXPECT_EQ(cut.json()["best"], run(search + range).json()["best"]) << "no less, no more";
        EXPECT_EQ(cut.json().contains("bestSoFar"), options.empty());
        std::string parts =
            asPart("cut", cut.out) +
            asPart("rest", run(search + "--from " + std::to_string(first + tested)).out);
        if (first > 0)
            parts += asPart("before", run(search + "--count " + std::to_string(first)).out);
        const Json merged = run("optimize --merge" + parts).json();
        EXPECT_EQ(merged["tested"], whole["configurations"]);
        EXPECT_EQ(merged["best"], whole["best"]);
    }
    // Of a large set the quick search before it counts, too; each configuration is listed once.
    const Json large = interrupted("optimize " + project +
                                       " --area 1 --area 2 --free "
                                       "height:6:9:0.05 --all-speakers --points 10",
                                   SIGINT)
                           .json();
    EXPECT_GT(large["configurations"], 200000);
    EXPECT_LT(large["bestSoFar"][0]["rms"], large["best"][0]["rms"]);
    EXPECT_NE(large["bestSoFar"][0]["number"], large["bestSoFar"][1]["number"]);

    const Outcome quick = interrupted(search + "--quick", SIGTERM);
    EXPECT_EQ(quick.status, 1);
    EXPECT_EQ(quick.json()["evaluations"], 1);
    EXPECT_EQ(quick.json()["best"].size(), 1U);
    EXPECT_FALSE(fs::exists(saved));
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_DFL) << "as it was before";
}

TEST_F(CommandLine, WrittenProjectsKeepTheirVariants)
{
    const auto read = [](const std::string& path) {
        return readProject(asBytes(**contentOf(path, kLargestProjectFile)), path)->project;
    };
    Project varied = read(project);
    varied.variants.names[0] = "Näher";
    varied.variants.kept[2] = KeptSetup{varied.array, varied.subArray};
    ASSERT_TRUE(std::holds_alternative<Saved>(saveOver(project, projectBytes(varied), {})));
    const std::string out = folder / "out.lad";
    for (const std::string& line :
         {"aim " + project + " --out " + out,
          "optimize --area 1 --quick --limit 300 " + project + " --out " + out}) {
        ASSERT_EQ(run(line).status, 0);
        EXPECT_EQ(read(out).variants, varied.variants) << line;
    }
}

} // namespace
} // namespace orva
