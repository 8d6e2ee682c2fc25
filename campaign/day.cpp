// A working day in the window: EDITS (20,000) with live map, a save every hundredth, a quick search
// every four hundredth. Prints what it grew by after the first 500 edits.
#include "app/files/file_access.h"
#include "window_bench.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <fstream>
#include <random>

#include <malloc.h>

namespace {

using namespace orva;

double residentMB()
{
    malloc_trim(0);
    std::ifstream file("/proc/self/statm");
    long size = 0;
    long resident = 0;
    file >> size >> resident;
    return static_cast<double>(resident) * 4096 / 1e6;
}

long handles()
{
    return QDir("/proc/self/fd").entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size();
}

void searchQuickly(ui::MainWindow& window)
{
    QTimer poll;
    bool begun = false;
    QObject::connect(&poll, &QTimer::timeout, &window, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        auto* begin = dialog->findChild<QAbstractButton*>("cmdOptimize");
        auto* only = dialog->findChild<QAbstractButton*>("chkQuickOnly");
        if (!begun) {
            if (!only->isChecked())
                only->click();
            begin->click();
            begun = true;
        } else if (!begin->isEnabled()) {
            dialog->reject();
        }
    });
    poll.start(10);
    window.findChild<QAbstractButton*>("Optimize_cmd")->click();
}

} // namespace

int main(int argc, char** argv) // NOLINT(bugprone-exception-escape)
{
    const int edits = argc > 1 ? static_cast<int>(std::strtol(argv[1], nullptr, 10)) : 20000;
    WindowBench bench(argc, argv);
    ui::MainWindow window(bench.session);
    window.resize(1280, 720);
    window.begin();
    window.show();
    const QTemporaryDir folder;
    const QString project = folder.filePath("day.lad");
    QFile::copy(ORVA_SOURCE_DIR "/examples/theatre.lad", project);
    QFile::setPermissions(project, QFile::ReadOwner | QFile::WriteOwner);
    auto& commands = *window.findChild<ui::ProjectCommands*>();
    commands.OpenRecent(project.toStdString());
    window.findChild<QTabWidget*>("Main_SSTab")->setCurrentIndex(1);
    window.findChild<QAbstractButton*>("MapType_opt(0)")->click();
    window.findChild<QAbstractButton*>("chkLive")->click();
    std::mt19937 random(1);
    double before = 0;
    long handlesBefore = 0;
    int searches = 0;
    int saves = 0;
    for (int edit = 1; edit <= edits; ++edit) {
        const QString list = QString("cmbAngle(%1)").arg(4 + random() % 7);
        auto* angles = window.findChild<QComboBox*>(list);
        const int to = static_cast<int>(random() % static_cast<unsigned>(angles->count()));
        angles->setCurrentIndex(to);
        emit angles->activated(to);
        QApplication::processEvents();
        if (edit % 10 == 0)
            window.findChild<QAction*>("mnuUndo")->trigger();
        if (edit % 100 == 0) {
            commands.Save();
            ++saves;
        }
        if (edit % 400 == 0 || edit == 100) { // its tables stay from the first one on
            searchQuickly(window);
            ++searches;
        }
        if (edit == 500) {
            before = residentMB();
            handlesBefore = handles();
        }
        if (edit % std::max(edits / 20, 1) == 0)
            std::fprintf(stderr, "%d edits: %.1f MB\n", edit, residentMB());
    }
    while (commands.disk().busy())
        QApplication::processEvents();
    const double whole = residentMB() - before;
    commands.OpenRecent(project.toStdString()); // without history
    while (commands.disk().busy())
        QApplication::processEvents();
    const double grown = residentMB() - before;
    const long more = handles() - handlesBefore;
    std::printf("%d edits, %d saves, %d searches: %.1f MB more than after 500, %.1f without the "
                "history, %ld handles more\n",
                edits, saves, searches, whole, grown, more);
    return grown < 5 && whole < grown + 20 && more <= 0 ? 0 : 1;
}
