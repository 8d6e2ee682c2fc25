#pragma once

#include "app/state/application_state.h"
#include "cli/command_line.h"
#include "cli/json.h"

#include <QTemporaryDir>
#include <algorithm>
#include <filesystem>
#include <iterator>
#include <sstream>

#include <gtest/gtest.h>

namespace orva {

namespace fs = std::filesystem;

struct Outcome {
    int status;
    std::string out;
    std::string err;

    Json json() const { return Json::parse(out); }
};

class CommandLine : public testing::Test {
protected:
    const QTemporaryDir temporary;
    const fs::path folder = temporary.path().toStdString();
    const std::string project = folder / "p.lad";

    void SetUp() override { ASSERT_EQ(run("new " + project).status, 0); }

    static Outcome run(const std::string& line)
    {
        std::istringstream in(line);
        std::vector<std::string> words{std::istream_iterator<std::string>(in), {}};
        std::replace(words.begin(), words.end(), std::string("''"), std::string());
        std::ostringstream out;
        std::ostringstream err;
        const int status = runCommandLine(words, {out, err, false, ORVA_BINARY_DIR});
        return {status, out.str(), err.str()};
    }
};

} // namespace orva
