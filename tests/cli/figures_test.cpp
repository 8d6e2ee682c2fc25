#include "command_line_fixture.h"
#include "expected_text.h"
#include "model/project_file.h"

#include <QImage>
#include <fstream>

namespace orva {
namespace {

TEST_F(CommandLine, ThePictureOfTheMapHasTheLevelsAlongTheAreas)
{
    const std::string file = folder / "p.png";
    ASSERT_EQ(run("map " + project + " --cell 0.5 --png " + file).status, 0);
    const QImage picture(QString::fromStdString(file));
    ASSERT_EQ(picture.width(), 1280);
    for (int x = 400; x < 560; x += 20) { // over the first area, above the bar
        int lines = 0;
        for (int y = 1; y < 600; ++y)
            lines += qGray(picture.pixel(x, y)) < 120 && qGray(picture.pixel(x, y - 1)) >= 120;
        EXPECT_EQ(lines, 4) << "ceiling, levels, area, floor at " << x;
    }
}

TEST_F(CommandLine, MapsAreWrittenFromTheTopAndAgreeWithTheirFigures)
{
    const std::string csv = folder / "map.csv";
    const Outcome result =
        run("map " + project + " --cell 2 --averaging octave --threads 2 --progress --csv " + csv);
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.err.find("100 %"), std::string::npos);
    const Json figures = result.json();
    EXPECT_EQ(figures["columns"], 15);
    EXPECT_EQ(figures["rows"], 4);
    std::ifstream file(csv);
    std::vector<double> levels;
    int rows = 0;
    for (std::string row; std::getline(file, row); ++rows) {
        std::istringstream cells(row);
        for (std::string cell; std::getline(cells, cell, ',');)
            levels.push_back(std::stod(cell));
    }
    EXPECT_EQ(rows, 4);
    ASSERT_EQ(levels.size(), 60U);
    EXPECT_NEAR(*std::max_element(levels.begin(), levels.end()), figures["max"].get<double>(),
                0.0006);
    // loudest 5 m above the floor at the left, in front of the array that hangs from 7.5 m to 4.4 m
    EXPECT_EQ(std::max_element(levels.begin(), levels.end()) - levels.begin(), 15);
}

TEST_F(CommandLine, TheSpectrumAlongAnAreaAgreesWithItsLevels)
{
    const std::string csv = folder / "levels.csv";
    const std::string band = " --band 4000 --a-weighted --humidity 10 --points 4 ";
    const Json levels = run("levels " + project + band + "--csv " + csv).json();
    const Json spectrum = run("spectrum " + project + band + "--area 1").json();
    std::ifstream file(csv);
    std::string line;
    std::getline(file, line);
    EXPECT_EQ(line, "area,point,distance,x,y,level");
    for (std::size_t point = 0; point < 4; ++point) {
        const Json& heard = spectrum["points"][point];
        EXPECT_EQ(heard["total"], levels["areas"][0]["levels"][point]);
        EXPECT_EQ(heard["levels"][16], heard["total"]) << "4 kHz alone";
        std::getline(file, line);
        char start[64];
        std::snprintf(start, sizeof start, "1,%zu,%.3f,%.3f,%.3f,%.3f", point + 1,
                      static_cast<double>(point) * 15 / 4, heard["x"].get<double>(),
                      heard["y"].get<double>(), heard["total"].get<double>());
        EXPECT_EQ(line, start);
    }
    EXPECT_LT(spectrum["points"][0]["levels"][16],
              run("spectrum " + project + " --band 4000 --a-weighted --area 1")
                  .json()["points"][0]["levels"][16])
        << "dry air absorbs more";
}

TEST_F(CommandLine, AReportOfAGivenMomentIsTheSameBytes)
{
    ::setenv("SOURCE_DATE_EPOCH", "1700000000", 1);
    std::vector<std::string> reports;
    for (const auto& [zone, options] :
         {std::pair("UTC0", ""), std::pair("EAST-9", ""), std::pair("UTC0", " --a-weighted")}) {
        ::setenv("TZ", zone, 1);
        const fs::path file = folder / "report.pdf";
        ASSERT_EQ(run("report " + project + " " + file.string() + options).status, 0);
        reports.push_back(contentOf(file));
    }
    ::unsetenv("SOURCE_DATE_EPOCH");
    ::unsetenv("TZ");
    EXPECT_EQ(reports[0], reports[1]);
    EXPECT_NE(reports[0], reports[2]);
    EXPECT_NE(reports[0].find("(D:20231114221320Z)"), std::string::npos);
}

TEST_F(CommandLine, FiguresAreTheSameAsCsvAndAsJson)
{
    const std::string stacked = folder / "stack.lad";
    Project stack = newProject(kCompactSystem);
    ASSERT_TRUE(stack.array.GBSetMounting(false));
    std::ofstream(stacked, std::ios::binary) << projectBytes(stack);
    for (const std::string& line :
         {"levels " + project + " --points 3", "rows " + project + " --pitch 2 --units ft",
          "subarray " + project, "rigging " + project + " --language de",
          "rigging " + stacked + " --units ft"}) {
        SCOPED_TRACE(line);
        const std::string csv = folder / "figures.csv";
        const std::string file = folder / "figures.json";
        std::string both = line;
        both.append(" --csv ").append(csv).append(" --json ").append(file);
        ASSERT_EQ(run(both).status, 0);
        std::ifstream in(file);
        Json json = Json::parse(in);
        EXPECT_EQ(json["unit"], line.find("ft") == std::string::npos ? "m" : "ft");
        std::ifstream table(csv);
        const auto cellsOf = [](const std::string& text) {
            std::vector<std::string> cells;
            std::istringstream split(text);
            for (std::string cell; std::getline(split, cell, ',');)
                cells.push_back(cell);
            return cells;
        };
        const auto same = [](const Json& value, const std::string& cell) {
            EXPECT_TRUE(value.is_null()     ? cell == "-"
                        : value.is_string() ? value == cell
                                            : value.get<float>() == std::stof(cell))
                << value << " and " << cell;
        };
        std::string row;
        const bool facts = json.size() > 2;
        while (facts && std::getline(table, row) && !row.empty()) {
            same(json[cellsOf(row)[0]], cellsOf(row)[1]);
            json.erase(cellsOf(row)[0]);
        }
        EXPECT_EQ(json.size(), 2U) << "unit and rows are left";
        std::getline(table, row);
        const std::vector<std::string> columns = cellsOf(row);
        for (const Json& figures : json["rows"]) {
            ASSERT_TRUE(std::getline(table, row));
            ASSERT_EQ(figures.size(), columns.size());
            for (std::size_t column = 0; column < columns.size(); ++column)
                same(figures[columns[column]], cellsOf(row)[column]);
        }
        EXPECT_FALSE(std::getline(table, row));
    }
    std::ifstream in(folder / "figures.json");
    const Json sheet = Json::parse(in);
    EXPECT_FALSE(sheet.contains("pin")) << "a stack has none";
    EXPECT_EQ(sheet["frame_weight"], 0);
    EXPECT_NEAR(sheet["total_weight"].get<double>(), stack.array.totalWeightKg(), 0.005);
    EXPECT_NEAR(sheet["lowest_edge"].get<double>(),
                extentOf(stack.room, stack.array).lowest / 0.3048, 0.005);
}

TEST_F(CommandLine, TheOtherWayRoundDifferencesAreTheOpposite)
{
    const std::string other = folder / "other.lad";
    ASSERT_EQ(run("optimize " + project + " --area 1 --quick --limit 300 --out " + other).status,
              0);
    const auto figures = [&](const std::string& a, const std::string& b, const std::string& csv) {
        const Json json =
            run("compare " + a + " " + b + " --points 9 --cell 4 --csv " + csv).json();
        return std::pair(json, contentOf(csv));
    };
    const auto [there, thereCsv] = figures(project, other, folder / "there.csv");
    const auto [back, backCsv] = figures(other, project, folder / "back.csv");
    const auto picture = [&](const std::string& b, const std::string& png) {
        EXPECT_EQ(run("compare " + project + " " + b + " --cell 4 --png " + png).status, 0);
        return contentOf(png);
    };
    EXPECT_NE(picture(other, folder / "other.png"), picture(project, folder / "none.png"));
    EXPECT_EQ(there["foh"]["a"], back["foh"]["b"]);
    EXPECT_EQ(there["foh"]["difference"].get<double>(), -back["foh"]["difference"].get<double>());
    for (std::size_t area = 0; area < there["areas"].size(); ++area) {
        EXPECT_EQ(there["areas"][area]["max"].get<double>(),
                  -back["areas"][area]["min"].get<double>());
        EXPECT_EQ(there["areas"][area]["spread"]["b"], back["areas"][area]["spread"]["a"]);
    }
    std::istringstream one(thereCsv);
    std::istringstream two(backCsv);
    int cells = 0;
    for (std::string row; std::getline(one, row);) {
        std::string opposite;
        std::getline(two, opposite);
        std::istringstream left(row);
        std::istringstream right(opposite);
        for (std::string cell; std::getline(left, cell, ','); ++cells) {
            std::string against;
            std::getline(right, against, ',');
            EXPECT_EQ(std::stod(cell), -std::stod(against));
        }
    }
    EXPECT_EQ(cells, 14);
    const auto [same, zeros] = figures(project, project, folder / "same.csv");
    EXPECT_EQ(same["areas"][0]["max"], 0);
}

TEST_F(CommandLine, TheReportIsAPdfByItsName)
{
    const std::string out = folder / "report.PDF";
    const auto pages = [&](const std::string& options) {
        EXPECT_EQ(run("report " + project + " " + out + options).status, 0);
        const std::string bytes = contentOf(out);
        EXPECT_TRUE(bytes.starts_with("%PDF-"));
        const std::size_t count = bytes.find("/Count ");
        return count == std::string::npos ? "" : bytes.substr(count, 8);
    };
    EXPECT_EQ(pages(""), "/Count 3");
    EXPECT_EQ(pages(" --paper letter --language de --units ft"), "/Count 3");
    std::fstream(project, std::ios::in | std::ios::out | std::ios::binary).seekp(592).put(1);
    EXPECT_EQ(pages(" --averaging broadband"), "/Count 4") << "with the sub array, once it is used";
    EXPECT_EQ(run("report " + project + " " + out + " --paper a5").status, 2);
}

TEST_F(CommandLine, LevelsWithoutARadiatingBoxAreNull)
{
    std::fstream file(project, std::ios::in | std::ios::out | std::ios::binary);
    for (int i = 0; i < 32; ++i)
        file.seekp(436 + 2 * i).put(2);
    file.flush();
    const Outcome levels = run("levels " + project + " --points 3");
    EXPECT_TRUE(levels.json()["foh"].is_null()) << levels.err;
    EXPECT_TRUE(levels.json()["areas"][0]["levels"][2].is_null());
    const Json heard = run("spectrum " + project + " --at 1,2").json()["points"][0];
    EXPECT_TRUE(heard["box"].is_null() && heard["delay"].is_null() && heard["total"].is_null());
    const std::string along = "spectrum " + project + " --area 1 --points ";
    EXPECT_EQ(run(along + "1").json()["points"].size(), 1U);
    for (const char* outside : {"0", "1000001"})
        EXPECT_EQ(run(along + outside).status, 2);
    const std::string csv = folder / "map.csv";
    ASSERT_EQ(run("map " + project + " --cell 9 --csv " + csv).status, 0);
    std::string row;
    std::ifstream(csv) >> row;
    EXPECT_EQ(row, "-inf,-inf,-inf");
}

} // namespace
} // namespace orva
