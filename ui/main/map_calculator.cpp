#include "main/map_calculator.h"

#include "app/state/task.h"
#include "engine/parallel.h"
#include "widgets/controls.h"

#include <QApplication>
#include <QEventLoop>
#include <QScopeGuard>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <atomic>
#include <memory>
#include <utility>

namespace orva::ui {

namespace {

constexpr int kShowAfterMs = 100; ///< the dialog of shorter stages would only flash
constexpr int kPollMs = 30;

/// Keeps the user's hands off every window but one, as long as it lives: the calculation reads what
/// they would change, and its dialog appears only after a moment.
class InputGuard final : public QObject {
public:
    explicit InputGuard(QWidget& allowed) : m_allowed(allowed) { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::Wheel:
            break;
        default:
            return false;
        }
        const auto* widget = qobject_cast<QWidget*>(watched);
        const QWindow* window = m_allowed.windowHandle();
        return !(widget && widget->window() == &m_allowed) && !(window && watched == window);
    }

private:
    QWidget& m_allowed;
};

} // namespace

MapCalculator::MapCalculator(Editor& editor, ViewPanel& views, QWidget* window)
    : QObject(window), m_editor(editor), m_views(views), m_window(window)
{
    const auto lock = [this] {
        if (!m_editor.live())
            m_editor.lockForMap();
    };
    connect(&views, &ViewPanel::calculateAllAsked, this, [this, lock] {
        lock();
        CalcMapping(true, false);
    });
    connect(&views, &ViewPanel::calculateBandAsked, this, [this, lock] {
        lock();
        CalcMapping(false, false);
    });
    connect(&views, &ViewPanel::levelChoiceChanged, this, [this] { CalcMapping(false, true); });
}

bool MapCalculator::prepareGrid()
{
    const std::optional<MapGrid> grid = m_views.mapGrid();
    m_editor.map().clear();
    if (!grid)
        return false;
    m_editor.map().grid = *grid;
    m_editor.map().Valid = true;
    return true;
}

void MapCalculator::bringUpToDate()
{
    if (m_editor.map().shown && !m_editor.map().Valid)
        CalcMapping(done({0, kBands - 1}), false);
}

bool MapCalculator::done(BandSpan bands) const
{
    for (int band = bands.from; band <= bands.to; ++band)
        if (!m_editor.map().cache.BandDone[static_cast<std::size_t>(band)])
            return false;
    return true;
}

bool MapCalculator::runStage(ProgressDialog& dialog, const QString& caption,
                             const std::function<bool(const Progress&)>& stage)
{
    dialog.beginStage(caption, true);
    std::atomic<int> percent = 0;
    bool whole = false;
    QEventLoop loop;
    Task task;
    const auto quit = [&loop] { loop.quit(); };
    task.start(
        [&](const Task::Stop&) {
            whole = stage([&](int done, int total) {
                percent = rowPercent(done, total);
                return !dialog.Aborted;
            });
        },
        quit, quit);
    // Most stages end here, and no click is lost meanwhile.
    if (task.wait(kShowAfterMs))
        return whole;
    QTimer poll;
    connect(&poll, &QTimer::timeout, &dialog, [&] { dialog.showPercent(percent); });
    poll.start(kPollMs);
    dialog.show();
    loop.exec();
    return whole;
}

void MapCalculator::CalcMapping(bool all, bool redraw)
{
    if (m_busy)
        return;
    if (m_editor.live()) { // the map calculates itself before it is drawn
        m_views.roomView().redraw();
        m_views.curveView().redraw();
        return;
    }
    if (!m_editor.calculable()) {
        m_editor.redrawViews();
        return;
    }
    {
        m_busy = true;
        const auto ready = qScopeGuard([this] { m_busy = false; });
        const BusyPointer pointer;
        calculate(all, redraw);
    }
    m_editor.mapFinished();
    m_views.roomView().picture();
}

void MapCalculator::calculate(bool all, bool redraw)
{
    ViewState::Map& map = m_editor.map();
    const LevelChoice choice = m_editor.view().levels.choice();
    constexpr BandSpan kEvery{0, kBands - 1};
    if (redraw && map.shown && m_editor.view().locked && !(map.Valid && done(choice.bands))) {
        redraw = false; // the setup is still the one of the map: it does not go, it follows
        all = done(kEvery);
    }
    const BandSpan wanted = all ? kEvery : choice.bands;
    // What is on screen still holds if the calculation is aborted.
    const MapGrid formerGrid = map.grid;
    std::optional<SummedMap> former =
        map.shownChoice == choice ? std::exchange(map.shown, std::nullopt) : std::nullopt;
    map.shown.reset();
    const bool prepared = map.Valid || prepareGrid();
    ProgressDialog dialog(m_editor.session(), m_window);
    const InputGuard guard(dialog);

    if (prepared && !redraw && !done(wanted)) {
        const std::shared_ptr<const LevelKernel> kernel = m_editor.session().state().levelKernel();
        runStage(dialog, m_editor.session().text(Text::CalculatingRaw),
                 [&](const Progress& progress) {
                     return CalcRawSPL(*kernel, m_editor.array(), map.grid, wanted, coreCount(),
                                       progress, map.cache);
                 });
    }
    if (prepared && !dialog.Aborted && done(choice.bands)) {
        std::optional<SummedMap> summed; // pictures drawn meanwhile read the other
        runStage(
            dialog, m_editor.session().text(Text::CalculatingSum), [&](const Progress& progress) {
                summed = CalcSummedSPL(map.cache, m_editor.session().state().speakerData.BandLevel,
                                       map.grid, choice, coreCount(), progress);
                return summed.has_value();
            });
        map.shown = std::move(summed);
    }
    map.shownChoice = choice;
    if (dialog.Aborted && former) {
        const bool sameGrid = map.grid == formerGrid;
        if (!sameGrid)
            map.clear();
        map.Valid = sameGrid;
        map.grid = formerGrid;
        map.shown = std::move(former);
        map.shownChoice = choice;
    } else if (dialog.Aborted) {
        map.shown.reset();
    } else if (map.shown) {
        dialog.beginStage(m_editor.session().text(Text::RenderingMap), false);
    }
}

} // namespace orva::ui
