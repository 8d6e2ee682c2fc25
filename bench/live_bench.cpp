// How long it takes from an event until the live map is on the screen: 24 boxes, broadband,
// 1920 x 1080. Writes live figures in ms beside the time of the kernel alone for the same map. And
// how long the pointer waits while it drags the array, and how old the picture gets meanwhile.
#include "engine/parallel.h"
#include "engine/spl_difference.h"
#include "optimize/hang_map.h"
#include "window_bench.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTest>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <thread>
#include <vector>

using namespace orva;

namespace {

constexpr int kRuns = 200;

double msOf(const std::function<void()>& act)
{
    QElapsedTimer timer;
    timer.start();
    act();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

struct Row {
    std::string name;
    double ms;
    double kernelMs;
    double mostMs;
};

/// Sees a widget's paint events.
class Paints final : public QObject {
public:
    bool painted = false;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
};

using Clock = std::chrono::steady_clock;

double msSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// A move of the pointer off the raster that knows when it was made.
class TimedMove final : public QMouseEvent {
public:
    TimedMove(QPointF at, QPointF global)
        : QMouseEvent(MouseMove, at, global, Qt::NoButton, Qt::LeftButton, Qt::AltModifier)
    {
    }
    const Clock::time_point made = Clock::now();
};

/// Waits of the pointer's moves, and the age of the oldest one that a picture did not show yet.
class Drag final : public QObject {
public:
    std::vector<double> waits;
    std::vector<double> ages;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        const auto* move = dynamic_cast<const TimedMove*>(event);
        if (event->type() == QEvent::MouseMove && move) {
            waits.push_back(msSince(move->made));
            m_unseen.push_back(move->made);
        } else if (event->type() == QEvent::Paint && !m_unseen.empty()) {
            // What came between drawing and painting is seen a picture later.
            ages.push_back(msSince(m_before.value_or(m_unseen.front())));
            m_before = m_unseen.back();
            m_unseen.clear();
        }
        return false;
    }

private:
    std::vector<Clock::time_point> m_unseen;
    std::optional<Clock::time_point> m_before;
};

class Bench {
public:
    explicit Bench(ui::Session& session) : m_window(session), m_session(session)
    {
        m_window.resize(1920, 1080);
        m_window.begin();
        m_window.show();
        find<QTabWidget>("Main_SSTab")->setCurrentIndex(1);
        choose("cmbNumSpk", 23);
        find<QWidget>("Main_pbx")->installEventFilter(&m_paints);
        find<QCheckBox>("chkLive")->click();
        paint();
    }

    template<typename Control>
    Control* find(const char* name)
    {
        return m_window.findChild<Control*>(name);
    }
    void choose(const char* name, int index)
    {
        auto* box = find<QComboBox>(name);
        box->setCurrentIndex(index);
        emit box->activated(index);
    }
    void enter(const char* name, const char* text)
    {
        auto* edit = find<QLineEdit>(name);
        edit->selectAll();
        edit->insert(text);
        emit edit->textEdited(text);
        emit edit->editingFinished();
    }
    /// Until the room view has been painted into the window.
    void paint()
    {
        m_paints.painted = false;
        while (!m_paints.painted)
            QApplication::processEvents();
    }
    bool coarse() { return m_window.editor().view().map.coarse; }
    void waitForFine()
    {
        QApplication::processEvents(); // what has changed is followed
        while (coarse())
            QTest::qWait(1);
        QApplication::processEvents();
    }
    void turnJoint()
    {
        auto* joint = find<QComboBox>("cmbAngle(5)");
        choose("cmbAngle(5)", (joint->currentIndex() + 1) % joint->count());
    }
    /// The pointer moves on; the status line tells what is there.
    void point()
    {
        auto* view = find<ui::DrawingWidget>("Main_pbx");
        m_pointer = (m_pointer + 7) % 400;
        const QPointF at(200 + m_pointer, 200);
        QMouseEvent move(QEvent::MouseMove, at, view->mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                         {});
        QApplication::sendEvent(view, &move);
        QApplication::processEvents();
        find<QLabel>("lblStatusProbe")->grab();
    }
    /// The strip of an array that was not heard before, and its picture.
    void drawStrip()
    {
        Prediction fresh(m_session.state().levelKernel(), m_session.state().speakerData.BandLevel,
                         m_window.editor().array(), m_session.state().air.SpeedOfSound);
        (void)fresh.bandsAlong(m_window.editor().room().area(1), kAreaReceivers,
                               m_window.editor().view().levels.choice());
        auto* view = find<ui::DrawingWidget>("Strip_pbx");
        view->redraw();
        view->picture();
    }
    /// The pick point of the array follows the pointer, 125 moves a second.
    void drag(Drag& drag)
    {
        constexpr int kMoves = 500;
        auto* view = find<ui::DrawingWidget>("Main_pbx");
        const FloatPair cradle = m_window.editor().array().GFAGetCradleCoord();
        const Scale& scale = view->scale();
        const QPointF start((cradle[0] - scale.left) * view->width() / scale.width,
                            (-cradle[1] - scale.top) * view->height() / scale.height);
        const QPointF origin = view->mapToGlobal(QPointF(0, 0));
        view->installEventFilter(&drag);
        QTest::mousePress(view, Qt::LeftButton, {}, start.toPoint());
        std::jthread hand([&] {
            auto next = Clock::now();
            for (int i = 1; i <= kMoves; ++i) {
                std::this_thread::sleep_until(next += std::chrono::milliseconds(8));
                const QPointF at = start + QPointF(10 + i * 0.2, i * 0.1);
                QCoreApplication::postEvent(view, new TimedMove(at, origin + at));
            }
        });
        while (drag.waits.size() < kMoves)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QTest::mouseRelease(view, Qt::LeftButton, {}, (start + QPointF(110, 50)).toPoint());
        view->removeEventFilter(&drag);
    }
    Hearing hearing() { return m_window.editor().hearing(); }
    const Project& project() { return m_window.editor().document().state().project; }
    /// The map of one array less that of another one.
    void drawDifference()
    {
        const Hearing heard = hearing();
        const MapGrid grid = m_window.editor().view().map.grid;
        const auto mapOf = [&](RawSplCache& cache) {
            cache.clear();
            CalcRawSPL(heard.kernel, project().array, grid, heard.choice.bands, coreCount(), {},
                       cache);
            return *CalcSummedSPL(cache, heard.levels, grid, heard.choice, coreCount(), {});
        };
        mapDifference(mapOf(m_planes[0]), mapOf(m_planes[1]));
    }
    double kernelMs()
    {
        waitForFine();
        const MapGrid grid = m_window.editor().view().map.grid;
        RawSplCache cache;
        std::vector<double> ms;
        for (int run = 0; run < 20; ++run) {
            cache.clear();
            ms.push_back(msOf([&] {
                CalcRawSPL(*m_session.state().levelKernel(), m_window.editor().array(), grid,
                           {0, kBands - 1}, coreCount(), {}, cache);
            }));
        }
        return median(ms);
    }
    Row row(const char* name, double mostMs, const std::function<void()>& act,
            const std::function<void()>& rest = {}, int runs = kRuns)
    {
        std::vector<double> ms;
        for (int run = 0; run < runs; ++run) {
            ms.push_back(msOf(act));
            if (rest)
                rest();
        }
        return {name, median(ms), kernelMs(), mostMs};
    }

private:
    ui::MainWindow m_window;
    ui::Session& m_session;
    int m_pointer = 0;
    Paints m_paints;
    RawSplCache m_planes[2];
};

} // namespace

int main(int argc, char** argv)
{
    WindowBench program(argc, argv);
    Bench bench(program.session);
    std::vector<Row> rows;
    const auto edit = [&] {
        bench.turnJoint();
        bench.paint();
    };
    rows.push_back(bench.row("live-theatre", 16, edit));
    rows.push_back(bench.row("live-weighting", 3, [&] {
        bench.find<QCheckBox>("chkAWeight")->click();
        bench.paint();
    }));
    rows.push_back(bench.row("probe", 2, [&] { bench.point(); }));
    bench.find<QTabWidget>("Curve_tab")->setCurrentIndex(2);
    rows.push_back(bench.row("strip", 4, [&] { bench.drawStrip(); }));
    bench.find<QTabWidget>("Curve_tab")->setCurrentIndex(0);
    Drag drag;
    bench.drag(drag);
    std::sort(drag.waits.begin(), drag.waits.end());
    rows.push_back(
        {"drag-wait-99", drag.waits[drag.waits.size() * 99 / 100], bench.kernelMs(), 33});
    rows.push_back(
        {"drag-age", *std::max_element(drag.ages.begin(), drag.ages.end()), bench.kernelMs(), 50});
    rows.push_back(bench.row("difference-map", 16, [&] { bench.drawDifference(); }));
    bench.choose("numAreas_cmb", 2);
    for (const char* mode : {"PinAngle_opt(1)", "PinAngle_opt(0)"}) {
        const bool pin = mode[13] == '0';
        bench.find<QAbstractButton>(mode)->click();
        rows.push_back(bench.row(pin ? "sensitivity-pin" : "sensitivity", pin ? 30 : 16, [&] {
            jointSteps(bench.hearing(), bench.project().array, coreCount());
        }));
    }
    bench.choose("cmbNumSpk", 11);
    const auto hang = [&](double rasterM) {
        return [&bench, rasterM] {
            hangMap(bench.hearing(), bench.project(), rasterM, coreCount(), {});
        };
    };
    rows.push_back(bench.row("hang-first", 100, hang(1), {}, 20));
    rows.push_back(bench.row("hang", 800, hang(0.25), {}, 5));
    bench.choose("cmbNumSpk", 23);
    bench.enter("RoomWidth_txt", "120");
    bench.enter("RoomHeight_txt", "30");
    bench.waitForFine();
    rows.push_back(bench.row("live-field-first", 16, edit, [&] { bench.waitForFine(); }));
    rows.push_back(bench.row("live-field", 130, [&] {
        edit();
        bench.waitForFine();
    }));

    std::ofstream file(argc > 1 ? argv[1] : "bench_live.json");
    file << "[";
    const char* before = "\n";
    bool met = true;
    for (const Row& row : rows) {
        std::printf("%-18s %7.2f ms (most %g), %5.2f x kernel (%.2f ms)\n", row.name.c_str(),
                    row.ms, row.mostMs, row.ms / row.kernelMs, row.kernelMs);
        file << before << "  {\"name\": \"" << row.name << "\", \"value\": " << row.ms
             << ", \"unit\": \"ms\", \"ratio\": " << row.ms / row.kernelMs << "}";
        before = ",\n";
        met = met && row.ms < row.mostMs;
    }
    file << "\n]\n";
    return met ? 0 : 1;
}
