// WHAT FOLDER [ROUNDS]: writes one of two contents after the other into FOLDER, until it is killed
// or ROUNDS are done; what it may leave there lies beside as FOLDER/a and FOLDER/b first.
//     project, report  FOLDER/out/file, as a project and as a report are written
//     recovery         FOLDER/out, the recovery file of a window
//     settings NAME    the store of this user, keys NAME0 .. NAME19 with the number of the round
//     left             says what findLeftBehind() finds in FOLDER/out, and removes it
#include "app/files/recovery.h"
#include "app/files/report_file.h"
#include "app/files/save_over.h"
#include "app/state/application_state.h"
#include "document/setup_edit.h"
#include "document/state_bytes.h"
#include "model/project_file.h"

#include <QCoreApplication>
#include <QLocale>
#include <cstdio>
#include <cstdlib>
#include <functional>

namespace {

using namespace orva;

Project content(bool second)
{
    Project project = newProject(kStandardSystem);
    project.room.GBSetProjectName(second ? "second" : "first");
    if (second)
        for (std::size_t variant = 1; variant < Variants::kMost; ++variant)
            project.variants.kept[variant] =
                KeptSetup{project.array, project.subArray}; // a longer file
    return project;
}

using Write = std::function<bool(int round)>;

Write writerOf(const std::string& what, const std::filesystem::path& folder)
{
    const auto both = [&](const std::function<std::string(bool)>& bytesOf) {
        std::vector<std::string> bytes = {bytesOf(false), bytesOf(true)};
        return std::pair(bytes, bool(writeFile(folder / "a", bytes[0])) &&
                                    bool(writeFile(folder / "b", bytes[1])));
    };
    if (what == "recovery") {
        const auto [bytes, there] = both([](bool second) {
            return recoveryBytes({documentOf(content(second)), {"/a/b.lad", "x"}});
        });
        const auto file = std::make_shared<RecoveryFile>(folder / "out");
        return [bytes = bytes, file](int round) {
            return bool(file->write(bytes[static_cast<std::size_t>(round % 2)]));
        };
    }
    const auto [bytes, there] = both([&](bool second) {
        return what == "report"
                   ? *rtfReportOf(content(second).array, {}, second ? 1.2 : 1.8, QLocale::c())
                   : projectBytes(content(second));
    });
    return [bytes = bytes, file = folder / "out" / "file"](int round) {
        const SaveOutcome saved =
            saveOver(file, bytes[static_cast<std::size_t>(round % 2)], std::nullopt);
        return std::holds_alternative<Saved>(saved);
    };
}

Write settingsWriter(const std::string& name)
{
    return [store = std::shared_ptr<SettingsStore>(platformSettingsStore()), name](int round) {
        return bool(store->exchange([&] {
            for (int key = 0; key < 20; ++key)
                store->setValue("Campaign", name + std::to_string(key), std::to_string(round));
        }));
    };
}

int sayLeft(const std::filesystem::path& folder)
{
    Found found = findLeftBehind(folder / "out");
    for (LeftBehind& left : found.left) {
        std::printf("%s\n",
                    left.unsaved.state.project.room.GSGetProjectName().substr(0, 6).c_str());
        removeLeftBehind(left);
    }
    std::printf("damaged %zu\n", found.damaged.size());
    return 0;
}

} // namespace

int main(int argc, char** argv) // NOLINT(bugprone-exception-escape)
{
    QCoreApplication::setOrganizationName("ORVA");
    QCoreApplication::setApplicationName("ORVA");
    const std::string what = argc > 1 ? argv[1] : "";
    const std::string where = argc > 2 ? argv[2] : "";
    if (what == "left")
        return sayLeft(where);
    const int rounds = argc > 3 ? static_cast<int>(std::strtol(argv[3], nullptr, 10)) : 0;
    const Write write = what == "settings" ? settingsWriter(where) : writerOf(what, where);
    for (int round = 0; rounds == 0 || round < rounds; ++round) {
        if (!write(round))
            return 1;
        if (round == 0) {
            std::puts("begun");
            std::fflush(stdout);
        }
    }
    return 0;
}
