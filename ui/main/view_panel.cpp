#include "main/view_panel.h"

#include "drawing/room_drawing.h"
#include "lang/number_text.h"
#include "lang/string_table.h"
#include "main/variant_bar.h"
#include "widgets/controls.h"

#include <QButtonGroup>
#include <QEvent>
#include <QGridLayout>
#include <QSplitter>
#include <QTimer>
#include <algorithm>
#include <cmath>

namespace orva::ui {

namespace {

constexpr double kMarkerMarginM = 0.2;
constexpr int kNarrowestCurve = 320;
constexpr int kLowestCurve = 120;

} // namespace

ViewPanel::ViewPanel(Editor& editor, QWidget* parent) : Page(editor, parent)
{
    makeRoomView();
    AreaSpl_pbx = new DrawingWidget(
        "AreaSpl_pbx",
        [this](DrawingSurface& surface) {
            DrawCurves(surface, m_curve, m_editor.session().drawingOptions());
        },
        this);
    AreaSpl_pbx->setPrepare([this] { prepareCurve(); });
    connectFitLine();

    m_bottom = named<QSplitter>("splCurve", this);
    m_pages = new LevelPages(editor, AreaSpl_pbx, this);
    m_bottom->addWidget(m_pages);
    m_bottom->addWidget(controlsFrame());
    m_bottom->setStretchFactor(0, 1);
    m_bottom->setStretchFactor(1, 0);
    m_bottom->setChildrenCollapsible(false);
    AreaSpl_pbx->setMinimumSize(kNarrowestCurve, kLowestCurve);
    auto* splitter = named<QSplitter>("splRoom", this);
    splitter->setOrientation(Qt::Vertical);
    splitter->addWidget(Main_pbx);
    splitter->addWidget(m_bottom);
    splitter->setStretchFactor(0, 2);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(new VariantBar(editor, this));
    layout->addWidget(splitter);

    connect(&editor, &Editor::areaSelected, AreaSpl_pbx, &DrawingWidget::redraw);
    connect(&editor, &Editor::areaSelected, this, &ViewPanel::displayCurveAreas);
    connect(&editor.session(), &Session::LanguageChanged, this, &ViewPanel::showTexts);
    showTexts();
}

void ViewPanel::makeRoomView()
{
    Main_pbx = new DrawingWidget(
        "Main_pbx",
        [this](DrawingSurface& surface) {
            DrawRoomView(surface, m_editor.room(), m_editor.array(), m_room,
                         m_editor.session().state().air.SpeedOfSound,
                         m_editor.session().drawingOptions());
        },
        this);
    Main_pbx->setPrepare([this] { prepareRoom(); });
    m_hand = new SectionHand(m_editor, *Main_pbx, true);
    Main_pbx->setOverlay([this](DrawingSurface& surface) {
        m_hang->drawOverlay(surface);
        m_hand->drawOverlay(surface);
        drawPins(surface);
        if (!m_areaUnderMouse || m_hand->dragging())
            return;
        const Segment area = m_editor.room().area(*m_areaUnderMouse);
        const auto [left, right] = std::minmax({area.start.x, area.end.x});
        const auto [low, high] = std::minmax({area.start.y, area.end.y});
        surface.rectangle({left - kMarkerMarginM, -high - kMarkerMarginM},
                          {right + kMarkerMarginM, -low + kMarkerMarginM}, Role::Marker);
    });
    connect(Main_pbx, &DrawingWidget::moved, this, [this](QPointF position) {
        markArea(position);
        const Point at = Main_pbx->userPoint(position);
        m_editor.probe(Point{at.x, -at.y});
    });
    connect(Main_pbx, &DrawingWidget::left, this, [this] {
        m_editor.probe({});
        m_areaUnderMouse.reset();
        Main_pbx->update();
    });
    connect(Main_pbx, &DrawingWidget::pressed, this,
            [this](QPointF position, Qt::MouseButton button) {
                if (button == Qt::LeftButton)
                    selectArea(position);
            });
    m_hang = new HangGuide(m_editor, *Main_pbx);
    m_difference = new DifferenceView(m_editor, this);
    connect(m_difference, &DifferenceView::shown, Main_pbx, &DrawingWidget::redraw);
    const auto redrawBoth = [this] {
        Main_pbx->redraw();
        AreaSpl_pbx->redraw();
    };
    connect(&m_editor, &Editor::comparedChanged, this, redrawBoth);
    connect(&m_editor, &Editor::dataChanged, this, [this, redrawBoth] {
        if (m_editor.view().compared)
            redrawBoth();
    });
    m_hand->setClick(
        [this](QPointF position) { return m_hang->click(position) || pinOrUnpin(position); });
    connect(&m_editor, &Editor::pinned, Main_pbx, qOverload<>(&QWidget::update));
    connect(Main_pbx, &DrawingWidget::resized, this, [this] { m_editor.map().Valid = false; });
}

/// A click while markers are set: on one it removes it.
bool ViewPanel::pinOrUnpin(QPointF position)
{
    if (!m_editor.view().pinning)
        return false;
    constexpr double kReachPx = 8;
    const Point at = Main_pbx->userPoint(position);
    const double reach = kReachPx * Main_pbx->scale().width / std::max(1, Main_pbx->width());
    const std::vector<Point>& pins = m_editor.view().pins;
    const auto hit = std::find_if(pins.begin(), pins.end(), [&](const Point& pin) {
        return std::hypot(pin.x - at.x, pin.y + at.y) <= reach;
    });
    if (hit != pins.end())
        m_editor.unpin(static_cast<std::size_t>(hit - pins.begin()));
    else
        m_editor.pin({at.x, -at.y});
    return true;
}

void ViewPanel::drawPins(DrawingSurface& surface) const
{
    int number = 0;
    for (const Point& pin : m_editor.view().pins) {
        surface.circle({pin.x, -pin.y}, 4 * surface.pixelX(), Role::Ink, 2);
        surface.print({pin.x + 6 * surface.pixelX(), -pin.y - 14 * surface.pixelY()},
                      std::to_string(++number));
    }
}

QWidget* ViewPanel::controlsFrame()
{
    fraSPLControls = named<QGroupBox>("fraSPLControls", this);
    auto* layout = new QGridLayout(fraSPLControls);
    auto* group = new QButtonGroup(this);
    for (int i = 0; i < 3; ++i) {
        MapType_opt[i] = named<QRadioButton>(elementName("MapType_opt", i), fraSPLControls);
        group->addButton(MapType_opt[i], i);
        layout->addWidget(MapType_opt[i], 0, i);
    }
    connect(group, &QButtonGroup::idClicked, this, [this](int id) {
        chooseLevels([id](LevelChoiceForm& levels) {
            levels.chooseMapType(static_cast<LevelChoiceForm::MapType>(id));
        });
    });
    avg_lbl = named<QLabel>("avg_lbl", fraSPLControls);
    Average_cmb = named<ListBox>("Average_cmb", fraSPLControls);
    avg_lbl->setBuddy(Average_cmb);
    connect(Average_cmb, &QComboBox::activated, this, [this](int index) {
        chooseLevels([index](LevelChoiceForm& levels) { levels.chooseAveraging(index); });
    });
    cmbTerzOktave = named<ListBox>("cmbTerzOktave", fraSPLControls);
    connect(cmbTerzOktave, &QComboBox::activated, this, [this](int index) {
        chooseLevels([index](LevelChoiceForm& levels) { levels.chooseBand(index); });
    });
    chkAWeight = named<QCheckBox>("chkAWeight", fraSPLControls);
    connect(chkAWeight, &QCheckBox::clicked, this, [this](bool checked) {
        chooseLevels([checked](LevelChoiceForm& levels) { levels.aWeighted = checked; });
    });
    chkAiming = named<QCheckBox>("chkAiming", fraSPLControls);
    chkAiming->setEnabled(false);
    connect(chkAiming, &QCheckBox::clicked, this, &ViewPanel::calculateBandAsked);
    chkLive = named<QCheckBox>("chkLive", fraSPLControls);
    connect(chkLive, &QCheckBox::clicked, this, [this](bool on) { m_editor.setLive(on); });
    chkProbe = named<QCheckBox>("chkProbe", fraSPLControls);
    connect(chkProbe, &QCheckBox::clicked, &m_editor, &Editor::setPinning);
    chkAllAreas = named<QCheckBox>("chkAllAreas", fraSPLControls);
    connect(chkAllAreas, &QCheckBox::clicked, this, [this](bool all) {
        m_editor.setAllAreas(all);
        AreaSpl_pbx->redraw();
        displayCurveAreas();
    });
    for (int i = 0; i < 3; ++i) {
        chkCurveArea[i] = named<QCheckBox>(QString("chkCurveArea(%1)").arg(i), fraSPLControls);
        connect(chkCurveArea[i], &QCheckBox::clicked, this, [this, i](bool shown) {
            m_editor.setCurveArea(i + 1, shown);
            AreaSpl_pbx->redraw();
        });
    }
    CalcBand_cmd = named<QPushButton>("CalcBand_cmd", fraSPLControls);
    CalcAll_cmd = named<QPushButton>("CalcAll_cmd", fraSPLControls);
    chkDrawLine = named<QCheckBox>("chkDrawLine", fraSPLControls);
    connect(chkDrawLine, &QCheckBox::clicked, this, [this](bool checked) {
        if (!checked)
            m_editor.setFitLine({});
        displayLevels();
        AreaSpl_pbx->redraw();
    });
    Optimize_cmd = named<QPushButton>("Optimize_cmd", fraSPLControls);
    connect(CalcBand_cmd, &QPushButton::clicked, this, &ViewPanel::calculateBandAsked);
    connect(CalcAll_cmd, &QPushButton::clicked, this, &ViewPanel::calculateAllAsked);
    connect(Optimize_cmd, &QPushButton::clicked, this, &ViewPanel::optimizeAsked);
    cmdSuggest = named<QPushButton>("cmdSuggest", fraSPLControls);
    connect(cmdSuggest, &QPushButton::clicked, this, &ViewPanel::suggestAsked);

    m_divider = lineDivider(fraSPLControls);
    arrangeControls(false);
    return fraSPLControls;
}

/// In a column beside the curve, or in fewer rows below it.
void ViewPanel::arrangeControls(bool below)
{
    m_bottom->setOrientation(below ? Qt::Vertical : Qt::Horizontal);
    auto* layout = static_cast<QGridLayout*>(fraSPLControls->layout());
    const auto place = [layout](QWidget* control, int row, int column, int columns = 1) {
        layout->addWidget(control, row, column, 1, columns); // moves one that has a place
    };
    layout->setRowStretch(9, below ? 0 : 1);
    m_divider->setVisible(!below);
    for (int i = 0; i < 3; ++i) {
        place(MapType_opt[i], 0, i);
        place(chkCurveArea[i], below ? 6 : 8, i);
    }
    place(avg_lbl, 1, 0);
    place(Average_cmb, 1, 1);
    place(cmbTerzOktave, 1, 2);
    place(chkAWeight, 2, 0);
    place(chkAiming, 2, 1, 2);
    if (below) {
        place(chkLive, 3, 0);
        place(CalcBand_cmd, 3, 1);
        place(CalcAll_cmd, 3, 2);
        place(chkDrawLine, 4, 0);
        place(Optimize_cmd, 4, 1);
        place(cmdSuggest, 4, 2);
        place(chkProbe, 5, 0);
        place(chkAllAreas, 5, 1, 2);
        return;
    }
    place(chkLive, 3, 0);
    place(CalcBand_cmd, 3, 1, 2);
    place(CalcAll_cmd, 4, 0, 3);
    place(m_divider, 5, 0, 3);
    place(chkDrawLine, 6, 0);
    place(Optimize_cmd, 6, 1);
    place(cmdSuggest, 6, 2);
    place(chkProbe, 7, 0);
    place(chkAllAreas, 7, 1, 2);
}

/// The curve gets half the width at least.
void ViewPanel::arrange()
{
    if (m_bottom->orientation() == Qt::Horizontal)
        m_columnWidth = fraSPLControls->minimumSizeHint().width();
    const bool below =
        width() - m_columnWidth - m_bottom->handleWidth() < std::max(kNarrowestCurve, width() / 2);
    updateGeometry();
    if (below != (m_bottom->orientation() == Qt::Vertical))
        arrangeControls(below);
}

/// Of the controls below the curve: where they do not fit beside it they move.
QSize ViewPanel::minimumSizeHint() const
{
    return {std::max(kNarrowestCurve, fraSPLControls->minimumSizeHint().width()),
            Page::minimumSizeHint().height()};
}

void ViewPanel::resizeEvent(QResizeEvent* event)
{
    Page::resizeEvent(event);
    arrange();
}

void ViewPanel::changeEvent(QEvent* event)
{
    Page::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    arrangeControls(false); // its column is measured anew
    QTimer::singleShot(0, this, &ViewPanel::arrange);
}

void ViewPanel::chooseLevels(const std::function<void(LevelChoiceForm&)>& choose)
{
    m_editor.chooseLevels(choose);
    displayLevels();
    emit levelChoiceChanged();
}

std::optional<MapGrid> ViewPanel::mapGrid() const
{
    const Settings& settings = m_editor.session().state().settings;
    auto [cellW, cellH] =
        devicePixel(m_editor.room(), std::max(1, Main_pbx->width()),
                    std::max(1, Main_pbx->height()), Main_pbx->devicePixelRatioF());
    if (settings.PixelRes == 0) {
        const double resolution = metresOf(settings.SPLResolution, settings.Units_Meters);
        cellW = std::max(cellW, resolution);
        cellH = std::max(cellH, resolution);
    }
    return PrepareMapGrid(m_editor.room(), static_cast<float>(cellW), static_cast<float>(cellH));
}

std::optional<ViewPanel::ShownMap> ViewPanel::shownMap()
{
    (void)Main_pbx->picture(); // m_room is of the last one
    const bool coarse = m_room.figures == MapFigures::Levels && m_editor.view().map.coarse;
    return m_room.map && !coarse ? std::optional(ShownMap{m_room.grid, m_room.map}) : std::nullopt;
}

void ViewPanel::prepareRoom()
{
    std::optional<BusyPointer> pointer;
    if (!m_editor.live() && !m_hand->dragging()) // else it would flicker
        pointer.emplace();
    if (m_followMap)
        m_followMap();
    chkAiming->setEnabled(m_editor.view().map.shown.has_value());
    m_room = m_editor.roomViewContent(aimingLines());
    const auto showInstead = [this](const MapGrid& grid, const SummedMap& map, MapFigures figures) {
        m_room.grid = &grid;
        m_room.map = &map;
        m_room.figures = figures;
        m_room.aimingLines = false;
    };
    m_difference->follow(mapGrid());
    if (m_difference->map())
        showInstead(*m_difference->grid(), *m_difference->map(), MapFigures::Differences);
    if (const HangMap* map = m_hang->map())
        showInstead(map->grid, map->rms, MapFigures::Evenness);
    int number = 0;
    for (const int points : profilePointsOf(m_editor.room(), std::max(1, Main_pbx->width()),
                                            std::max(1, Main_pbx->height()))) {
        const Segment area = m_editor.room().area(++number);
        m_room.profiles.push_back(m_editor.levelsAlong(area, points));
    }

    // What the picture says, for those who hear it read.
    QStringList said;
    if (m_room.map)
        for (const auto& [id, level] :
             {std::pair(Text::MapMax, m_room.map->max), std::pair(Text::MapMin, m_room.map->min)})
            said += m_editor.session().text(id) + " " + qtText(fixedText(level, 1)) + "dB";
    else if (m_room.fohDb)
        said += m_editor.session().text(Text::Foh) + " " + qtText(fixedText(*m_room.fohDb, 1)) +
                (m_room.aWeighted ? " dB(A)" : " dB");
    Main_pbx->setAccessibleDescription(said.join(", "));
}

void ViewPanel::markArea(QPointF position)
{
    const Point at = Main_pbx->userPoint(position);
    const std::optional<int> found = FindAreaAt(m_editor.room(), at.x, -at.y);
    if (found == m_areaUnderMouse)
        return;
    m_areaUnderMouse = found;
    Main_pbx->update();
}

void ViewPanel::selectArea(QPointF position)
{
    const Point at = Main_pbx->userPoint(position);
    const std::optional<int> found = FindAreaAt(m_editor.room(), at.x, -at.y);
    if (!found)
        return;
    m_editor.selectArea(*found);
}

void ViewPanel::showTexts()
{
    const auto text = [this](Text id) { return m_editor.session().text(id); };
    fraSPLControls->setTitle(text(Text::SPLMapping));
    MapType_opt[0]->setText(text(Text::Continuous));
    MapType_opt[1]->setText(text(Text::Peak));
    MapType_opt[2]->setText(text(Text::Detailed));
    avg_lbl->setText(text(Text::Averaging));
    chkAWeight->setText(text(Text::AWeighted));
    chkAiming->setText(text(Text::ShowAimingLines));
    chkDrawLine->setText(text(Text::DrawFitLine));
    chkLive->setText(text(Text::LiveLabel));
    chkProbe->setText(text(Text::ProbeLabel));
    chkAllAreas->setText(text(Text::AllAreasLabel));
    for (int i = 0; i < 3; ++i)
        chkCurveArea[i]->setText(text(areaText(i + 1)));
    CalcAll_cmd->setText(text(Text::CalculateAll));
    Optimize_cmd->setText(text(Text::Optimize));
    cmdSuggest->setText(text(Text::SuggestLabel));
    display();
    arrangeControls(false);
    arrange();
}

void ViewPanel::display()
{
    Main_pbx->redraw();
    AreaSpl_pbx->redraw();
    displayLevels();
    displayCurveAreas();
    chkAiming->setEnabled(m_editor.view().map.shown.has_value());
    chkLive->setChecked(m_editor.live());
    CalcAll_cmd->setEnabled(m_editor.calculable() && !m_editor.live());
    CalcBand_cmd->setEnabled(m_editor.calculable() && !m_editor.live());
    Optimize_cmd->setEnabled(m_editor.calculable());
    cmdSuggest->setEnabled(!m_editor.view().locked);
}

/// Which areas there are beside the selected one, whose curve is always there.
void ViewPanel::displayCurveAreas()
{
    const ViewState& view = m_editor.view();
    chkAllAreas->setChecked(view.allAreas);
    for (int i = 0; i < 3; ++i) {
        const bool selected = i + 1 == view.SelectedArea;
        chkCurveArea[i]->setVisible(view.allAreas && i < m_editor.room().GIGetNumAreas());
        chkCurveArea[i]->setEnabled(!selected);
        chkCurveArea[i]->setChecked(selected || view.curveAreas.at(static_cast<std::size_t>(i)));
    }
}

void ViewPanel::displayLevels()
{
    const LevelChoiceForm& levels = m_editor.view().levels;
    MapType_opt[levels.mapType]->setChecked(true);
    showList(*Average_cmb, levels.Average_cmb);
    Average_cmb->setEnabled(levels.averagingEnabled);
    showList(*cmbTerzOktave, levels.cmbTerzOktave);
    cmbTerzOktave->setEnabled(levels.bandEnabled);
    chkAWeight->setChecked(levels.aWeighted);
    AreaSpl_pbx->setToolTip(m_editor.session().text(
        chkDrawLine->isChecked() ? Text::FitLineHint : Text::FitLineHintOff));
    CalcAll_cmd->setVisible(levels.offersBands());
    CalcBand_cmd->setText(
        m_editor.session().text(levels.offersBands() ? Text::CalculateBand : Text::Calculate));
}

} // namespace orva::ui
