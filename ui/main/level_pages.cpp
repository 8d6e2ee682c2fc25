#include "main/level_pages.h"

#include "app/forms/search_results.h"
#include "document/variants_edit.h"
#include "lang/number_text.h"
#include "lang/string_table.h"
#include "widgets/controls.h"
#include "widgets/figure_table.h"

#include <QBoxLayout>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QShortcut>
#include <QToolTip>
#include <cmath>

namespace orva::ui {

namespace {

constexpr Role kPinColours[] = {Role::Result1, Role::Result2, Role::Result3, Role::Result4,
                                Role::Side1,   Role::Side2,   Role::Side3,   Role::Aim};
static_assert(std::size(kPinColours) == ViewState::kMostPins);

/// "1", "2" as at the markers in the section.
std::string pinName(std::size_t index)
{
    return std::to_string(index + 1);
}

} // namespace

LevelPage::LevelPage(Editor& editor, QWidget* parent) : Page(editor, parent)
{
    for (const auto signal : {&Editor::levelsChosen, &Editor::areaSelected})
        connect(&editor, signal, this, &LevelPage::displayOrWait);
}

SpectrumPage::SpectrumPage(Editor& editor, QWidget* parent) : LevelPage(editor, parent)
{
    Spectrum_pbx = new DrawingWidget(
        "Spectrum_pbx",
        [this](DrawingSurface& surface) {
            DrawSpectrum(surface, m_spectra,
                         m_editor.session().text(Text::SpectrumHint).toStdString());
        },
        this);
    Spectrum_pbx->setPrepare([this] { prepare(); });
    tblProbes = newFigureTable("tblProbes", this);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(Spectrum_pbx, 3);
    layout->addWidget(tblProbes, 2);
    connect(&editor, &Editor::probed, Spectrum_pbx, &DrawingWidget::redraw);
    connect(&editor, &Editor::pinned, this, [this] { display(); });
    display();
}

void SpectrumPage::prepare()
{
    m_spectra.clear();
    const Prediction* predicted = m_editor.calculable() ? m_editor.prediction() : nullptr;
    if (!predicted)
        return;
    const ViewState& view = m_editor.view();
    const LevelChoice choice = view.levels.choice();
    for (std::size_t pin = 0; pin < view.pins.size(); ++pin)
        m_spectra.push_back(
            {pinName(pin), predicted->spectrumAt(view.pins[pin], choice), kPinColours[pin]});
    if (view.probe) {
        const TextOptions options = m_editor.session().textOptions();
        const auto length = [&](double metres) {
            return fixedText(metres * options.lengthFactor(), 1);
        };
        m_spectra.push_back({length(view.probe->x) + ", " + length(view.probe->y) + " " +
                                 std::string(lengthUnit(options)),
                             predicted->spectrumAt(*view.probe, choice), Role::Curve});
    }
}

void SpectrumPage::display()
{
    const TextOptions options = m_editor.session().textOptions();
    const auto text = [this](Text id) { return m_editor.session().text(id); };
    std::vector<std::vector<std::string>> rows;
    for (std::size_t pin = 0; pin < m_editor.view().pins.size(); ++pin) {
        const Point& at = m_editor.view().pins[pin];
        const std::optional<Heard> heard = m_editor.heardAt(at);
        const auto length = [&](double metres) {
            return fixedText(metres * options.lengthFactor(), 2);
        };
        const bool box = heard && heard->box;
        rows.push_back(
            {pinName(pin), length(at.x), length(at.y), heard ? levelText(heard->levelDb) : "-",
             heard ? levelText(heard->overFohDb) : "-",
             box ? std::to_string(heard->box->position + 1) : "-",
             box ? length(heard->box->distanceM) : "-", box ? fixedText(heard->delayMs, 1) : "-"});
    }
    fillTable(*tblProbes,
              {text(Text::MarkerColumn), "x", "y", text(Text::LevelColumn), text(Text::FohColumn),
               text(Text::BoxColumn), text(Text::DistanceColumn).arg(qtText(lengthUnit(options))),
               text(Text::ArrivalColumn)},
              rows);
    tblProbes->setVisible(!rows.empty());
    Spectrum_pbx->redraw();
}

StripPage::StripPage(Editor& editor, QWidget* parent) : LevelPage(editor, parent)
{
    Strip_pbx = new DrawingWidget(
        "Strip_pbx",
        [this](DrawingSurface& surface) {
            if (m_strip.levels.front().empty())
                surface.clear();
            else
                DrawStrip(surface, m_strip, m_editor.session().drawingOptions());
        },
        this);
    Strip_pbx->setPrepare([this] { prepare(); });
    connect(Strip_pbx, &DrawingWidget::moved, this, &StripPage::showFigure);
    connect(Strip_pbx, &DrawingWidget::left, this, [] { QToolTip::hideText(); });
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(Strip_pbx);
}

void StripPage::prepare()
{
    m_strip = {};
    Prediction* predicted = m_editor.calculable() ? m_editor.prediction() : nullptr;
    if (!predicted)
        return;
    const int number = m_editor.view().SelectedArea;
    const Segment area = m_editor.room().area(number);
    m_strip = Strip::of(
        predicted->bandsAlong(area, kAreaReceivers, m_editor.view().levels.choice()), area.lengthM,
        m_editor.session().text(Text::StripTitle).arg(number).toStdString());
}

void StripPage::showFigure(QPointF position)
{
    const std::optional<StripPlace> place =
        m_strip.levels.front().empty() ? std::nullopt
                                       : stripPlaceAt(m_strip, {position.x(), position.y()},
                                                      Strip_pbx->width(), Strip_pbx->height());
    if (!place) {
        QToolTip::hideText();
        return;
    }
    const TextOptions options = m_editor.session().textOptions();
    const double along = m_strip.lengthM * static_cast<double>(place->point) /
                         static_cast<double>(m_strip.levels.front().size());
    QToolTip::showText(Strip_pbx->mapToGlobal(position.toPoint()),
                       m_editor.session()
                           .text(Text::StripFigure)
                           .arg(qtText(fixedText(along * options.lengthFactor(), 1)),
                                qtText(lengthUnit(options)),
                                QString::number(kNominalHz[place->band]),
                                qtText(fixedText(m_strip.levels[place->band][place->point], 1)),
                                qtText(fixedText(m_strip.means[place->band], 1))),
                       Strip_pbx);
}

void StripPage::display()
{
    Strip_pbx->redraw();
}

RowsPage::RowsPage(Editor& editor, QWidget* parent) : LevelPage(editor, parent)
{
    tblRows = newFigureTable("tblRows", this);
    m_pitch = new QLabel(this);
    m_offset = new QLabel(this);
    txtRowPitch = entry("txtRowPitch", &ViewState::rowPitchM, true);
    txtRowOffset = entry("txtRowOffset", &ViewState::rowOffsetM, false);
    m_pitch->setBuddy(txtRowPitch);
    m_offset->setBuddy(txtRowOffset);
    cmdRowsCsv = named<QPushButton>("cmdRowsCsv", this);
    auto* copies = new QShortcut(QKeySequence::Copy, tblRows);
    copies->setContext(Qt::WidgetShortcut);
    connect(copies, &QShortcut::activated, this, &RowsPage::copy);
    auto* column = new QVBoxLayout;
    column->addWidget(m_pitch);
    column->addWidget(txtRowPitch);
    column->addWidget(m_offset);
    column->addWidget(txtRowOffset);
    column->addStretch();
    column->addWidget(cmdRowsCsv);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tblRows, 1);
    layout->addLayout(column);
}

QLineEdit* RowsPage::entry(const char* name, double ViewState::*metres, bool aboveZero)
{
    auto* edit = named<NumberEdit>(name, this);
    connect(edit, &QLineEdit::editingFinished, this, [this, edit, metres, aboveZero] {
        const std::optional<double> typed =
            typedLength(edit->text().toStdString(), m_editor.inMetres());
        const double length = typed ? metresOf(*typed, m_editor.inMetres()) : -1;
        if (length >= (aboveZero ? kLeastPitchM : 0))
            m_editor.setRows(metres, length);
        display();
    });
    cancelByEsc(*edit, [this] { display(); });
    return edit;
}

void RowsPage::display()
{
    const auto text = [this](Text id) { return m_editor.session().text(id); };
    const TextOptions options = m_editor.session().textOptions();
    m_pitch->setText(text(Text::RowPitch));
    m_offset->setText(text(Text::RowOffset));
    cmdRowsCsv->setText(text(Text::RowsCsv));
    showText(*txtRowPitch, qtText(shownLength(m_editor.view().rowPitchM, options.Units_Meters)));
    showText(*txtRowOffset, qtText(shownLength(m_editor.view().rowOffsetM, options.Units_Meters)));
    std::vector<std::vector<std::string>> lines;
    for (const SeatRow& row : m_editor.seatRows())
        lines.push_back(rowTexts(row, options));
    fillTable(*tblRows,
              {text(Text::RowColumn), text(Text::DistanceColumn).arg(qtText(lengthUnit(options))),
               "x", "y", text(Text::LevelColumn), text(Text::MeanColumn), text(Text::BoxColumn),
               text(Text::ArrivalColumn)},
              lines);
    cmdRowsCsv->setEnabled(!lines.empty());
}

/// The selected rows, or all, as spreadsheets take them.
void RowsPage::copy() const
{
    const bool all = tblRows->selectedItems().isEmpty();
    QString copied;
    for (int row = 0; row < tblRows->rowCount(); ++row) {
        if (!all && !tblRows->item(row, 0)->isSelected())
            continue;
        QStringList cells;
        for (int column = 0; column < tblRows->columnCount(); ++column)
            cells += tblRows->item(row, column)->text();
        copied += cells.join('\t') + '\n';
    }
    QGuiApplication::clipboard()->setText(copied);
}

VariantsPage::VariantsPage(Editor& editor, QWidget* parent) : LevelPage(editor, parent)
{
    tblVariants = newFigureTable("tblVariants", this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tblVariants);
    connect(&editor, &Editor::dataChanged, this, &VariantsPage::displayOrWait);
    display();
}

void VariantsPage::display()
{
    Session& session = m_editor.session();
    const Project& project = m_editor.document().state().project;
    const TextOptions options = session.textOptions();
    const LevelChoice choice = m_editor.view().levels.choice();
    std::vector<std::vector<std::string>> rows;
    for (std::size_t variant = 0; variant < Variants::kMost; ++variant) {
        const bool current = variant == project.variants.current;
        Prediction* prediction = current ? m_editor.prediction() : m_editor.keptPrediction(variant);
        if (!prediction)
            continue;
        const LineArray& array = current ? project.array : project.variants.kept[variant]->array;
        rows.push_back(arrayTexts(*prediction, project.room, array, choice, options));
        rows.back().insert(rows.back().begin(), variantTitle(project.variants, variant));
    }
    QStringList heads = {session.text(Text::ColumnVariant)};
    for (const std::string& head :
         resultHeads(Text::ColumnEven, project.room.GIGetNumAreas(), options))
        heads += qtText(head);
    fillTable(*tblVariants, heads, rows);
}

LevelPages::LevelPages(Editor& editor, QWidget* curve, QWidget* parent)
    : QTabWidget(parent), m_editor(editor)
{
    setObjectName("Curve_tab");
    setTabPosition(QTabWidget::South);
    setDocumentMode(true);
    addTab(curve, QString());
    addTab(new SpectrumPage(editor, this), QString());
    addTab(new StripPage(editor, this), QString());
    addTab(new RowsPage(editor, this), QString());
    addTab(new VariantsPage(editor, this), QString());
    connect(&editor.session(), &Session::LanguageChanged, this, &LevelPages::showTexts);
    showTexts();
}

void LevelPages::showTexts()
{
    constexpr Text kTitles[] = {Text::CurveTab, Text::SpectrumTab, Text::StripTab, Text::RowsTab,
                                Text::VariantsPage};
    for (int page = 0; page < count(); ++page)
        setTabText(page, m_editor.session().text(kTitles[page]));
}

} // namespace orva::ui
