#include "main/optimize_dialog.h"

#include "drawing/array_drawing.h"
#include "lang/number_text.h"
#include "lang/string_table.h"
#include "widgets/control_texts.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QKeyEvent>
#include <QScreen>
#include <algorithm>
#include <cmath>

namespace orva::ui {

namespace {

constexpr int kPollMs = 50;
constexpr int kTableChars = 78; ///< with three areas

} // namespace

void OptimizeDialog::launch(Editor& editor, ViewPanel& views, QWidget* window)
{
    const Segment area = editor.room().area(editor.view().SelectedArea);
    const bool aimed =
        GetAreaSpeakers(editor.room(), editor.array(), editor.view().SelectedArea).has_value();
    const auto asked = editor.view().fitLine ? targetUnder(*editor.view().fitLine, area.lengthM,
                                                           views.shortestFitLineM())
                                             : std::nullopt;
    if (editor.view().fitLine && !asked) {
        editor.setFitLine({});
        editor.redrawViews();
    }
    if (!aimed) {
        showMessage(window, editor.session().text(Text::NoBoxAims));
        return;
    }

    editor.setBaseline(!asked);
    views.curveView().redraw();
    OptimizeDialog dialog(editor, views, asked.value_or(FitLineTarget::wholeArea(area)), window);
    dialog.exec();
    editor.setBaseline(false);
    views.setCurves({});
    editor.redrawViews();
}

QString OptimizeDialog::decibels(double rms, const char* unit)
{
    return rms < kNoMeasure ? qtText(fixedText(rms, 2)) + unit : QString("_");
}

OptimizeDialog::OptimizeDialog(Editor& editor, ViewPanel& views, const FitLineTarget& target,
                               QWidget* window)
    : QDialog(window),
      m_editor(editor),
      m_views(views),
      m_area(editor.room().area(editor.view().SelectedArea)),
      m_target(target),
      m_run(editor.session().state(), editor.document().state().project,
            {.areas = {{editor.view().SelectedArea, 1}}}),
      m_task(this)
{
    setObjectName("frmOptimize");
    auto* layout = new QGridLayout(this);
    layout->addWidget(settingsFrame(), 0, 0);
    layout->addWidget(progressFrame(), 0, 1);
    layout->addWidget(resultsFrame(), 0, 2);
    m_more = new SearchMore(editor, this);
    m_more->hide();
    connect(m_more, &SearchMore::changed, this, &OptimizeDialog::chooseCandidates);
    layout->addWidget(m_more, 1, 0, 1, 2);
    tblResults = newFigureTable("tblResults", this);
    tblResults->setMinimumWidth(tblResults->fontMetrics().averageCharWidth() * kTableChars);
    tblResults->hide();
    lblGap->hide();
    m_rateLabel->hide();
    lblRate->hide();
    connect(tblResults, &QTableWidget::itemSelectionChanged, this, &OptimizeDialog::chooseRows);
    layout->addWidget(tblResults, 1, 2);
    layout->setColumnStretch(2, 1);
    layout->setRowStretch(0, 1);
    connect(&m_poll, &QTimer::timeout, this, &OptimizeDialog::showProgress);
    connect(&editor.session(), &Session::LanguageChanged, this, &OptimizeDialog::showTexts);
    chooseCandidates();
    showTexts();
    adjustSize();
    const QWidget& curve = m_views.curveView();
    move(placeBeside(frameGeometry().size() + frameMargins(*this),
                     QRect(curve.mapToGlobal(QPoint(0, 0)), curve.size()),
                     window->screen()->availableGeometry()));
}

QWidget* OptimizeDialog::settingsFrame()
{
    Frame2 = named<QGroupBox>("Frame2", this);
    auto* layout = new QVBoxLayout(Frame2);
    const auto check = [&](const char* name, bool checked) {
        auto* box = named<QCheckBox>(name, Frame2);
        box->setChecked(checked);
        layout->addWidget(box);
        return box;
    };
    chkArea = check("chkArea", true);
    chkNeighbor = check("chkNeighbor", false);
    chkQuick = check("chkQuick", false);
    connect(chkArea, &QCheckBox::clicked, this, &OptimizeDialog::chooseCandidates);
    connect(chkNeighbor, &QCheckBox::clicked, this, &OptimizeDialog::chooseCandidates);

    fraMeasure = named<QGroupBox>("fraMeasure", Frame2);
    auto* measures = new QVBoxLayout(fraMeasure);
    m_measures = new QButtonGroup(this);
    for (int i = 0; i < static_cast<int>(allMeasures().size()); ++i) {
        auto* option = named<QRadioButton>(elementName("optMeasure", i), fraMeasure);
        measures->addWidget(option);
        m_measures->addButton(option, i);
        option->setVisible(i < static_cast<int>(kGivenMeasures));
        connect(option, &QRadioButton::clicked, this, &OptimizeDialog::chooseCandidates);
    }
    m_measures->button(static_cast<int>(Measure::SmoothArea))->setChecked(true);
    layout->addWidget(fraMeasure);

    auto* points = new QHBoxLayout;
    Label2 = named<QLabel>("Label2", Frame2);
    txtNumPts = named<NumberEdit>("txtNumPts", Frame2);
    Label2->setBuddy(txtNumPts);
    points->addWidget(Label2);
    points->addWidget(txtNumPts);
    layout->addLayout(points);
    connect(txtNumPts, &QLineEdit::editingFinished, this, [this] {
        m_points = typedPoints(txtNumPts->text().toStdString(), m_points);
        txtNumPts->setText(QString::number(m_points));
    });
    connect(txtNumPts, &NumberEdit::cancelled, this,
            [this] { txtNumPts->setText(QString::number(m_points)); });
    txtNumPts->setText(QString::number(m_points));

    fraFitLine = named<QGroupBox>("fraFitLine", Frame2);
    auto* fit = new QGridLayout(fraFitLine);
    const auto line = [&](int row, QLabel*& label, const char* labelName, QLabel*& value,
                          const char* valueName) {
        label = named<QLabel>(labelName, fraFitLine);
        value = named<QLabel>(valueName, fraFitLine);
        fit->addWidget(label, row, 0);
        fit->addWidget(value, row, 1, Qt::AlignRight);
    };
    line(0, m_x1Label, "Label9", lblX1, "lblX1");
    line(1, m_x2Label, "Label10", lblX2, "lblX2");
    line(2, Label11, "Label11", lblDeltadB, "lblDeltadB");
    for (int i = 0; i < 2; ++i) {
        lblUnits[i] = named<QLabel>(elementName("lblUnits", i), fraFitLine);
        fit->addWidget(lblUnits[i], i, 2);
    }
    layout->addWidget(fraFitLine);
    layout->addStretch();
    cmdMore = named<QPushButton>("cmdMore", Frame2);
    cmdMore->setAutoDefault(false);
    connect(cmdMore, &QPushButton::clicked, this, [this] { foldOut(m_more->isHidden()); });
    layout->addWidget(cmdMore);
    return Frame2;
}

QWidget* OptimizeDialog::progressFrame()
{
    auto* frame = named<QGroupBox>("fraProgress", this);
    auto* layout = new QGridLayout(frame);
    int row = 0;
    const auto line = [&](QLabel*& label, const char* labelName, QLabel*& value,
                          const char* valueName) {
        label = named<QLabel>(labelName, frame);
        value = named<QLabel>(valueName, frame);
        value->setAlignment(Qt::AlignRight);
        value->setMinimumWidth(value->fontMetrics().horizontalAdvance("000000000000"));
        layout->addWidget(label, row, 0);
        layout->addWidget(value, row++, 1);
    };
    line(Label6, "Label6", lblArea, "lblArea");
    line(Label1, "Label1", lblToTest, "lblToTest");
    line(Label4, "Label4", lblConfigNum, "lblConfigNum");
    line(Label3, "Label3", lblTested, "lblTested");
    line(Label7, "Label7", lblComp, "lblComp");
    line(m_timeLeftLabel, "Label13", lblTimeLeft, "lblTimeLeft");
    line(m_rateLabel, "lblRateLabel", lblRate, "lblRate");
    line(Label8, "Label8", lblCurrentRMS, "lblCurrentRMS");
    line(Label5, "Label5", lblBestRMS, "lblBestRMS");
    lblQuick = named<QLabel>("lblQuick", frame);
    lblQuick->setWordWrap(true);
    layout->addWidget(lblQuick, row++, 0, 1, 2);
    lblGap = named<QLabel>("lblGap", frame);
    lblGap->setWordWrap(true);
    layout->addWidget(lblGap, row++, 0, 1, 2);
    layout->setRowStretch(row++, 1);
    cmdOptimize = named<QPushButton>("cmdOptimize", frame);
    cmdOptimize->setAutoDefault(false);
    connect(cmdOptimize, &QPushButton::clicked, this, &OptimizeDialog::beginOrPause);
    layout->addWidget(cmdOptimize, row, 0, 1, 2);
    return frame;
}

QWidget* OptimizeDialog::resultsFrame()
{
    auto* frame = new QWidget(this);
    auto* layout = new QGridLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    Label12 = named<QLabel>("Label12", frame);
    cmbConfigs = named<ListBox>("cmbConfigs", frame);
    Label12->setBuddy(cmbConfigs);
    connect(cmbConfigs, &QComboBox::currentIndexChanged, this, &OptimizeDialog::selectConfig);
    chkShowSetup = named<QCheckBox>("chkShowSetup", frame);
    dbgpbx = new DrawingWidget(
        "dbgpbx",
        [this](DrawingSurface& surface) {
            if (chkShowSetup->isChecked() && m_better)
                DrawRiggingView(surface, *m_better, m_editor.session().drawingOptions());
            else if (chkShowSetup->isChecked() && m_run.form().selected() >= 0)
                DrawRiggingView(surface, m_run.arrayOf(m_run.form().selected()),
                                m_editor.session().drawingOptions());
            else
                surface.clear();
        },
        frame);
    connect(chkShowSetup, &QCheckBox::toggled, dbgpbx, &DrawingWidget::redraw);
    dbgpbx->setMinimumSize(360, 260);
    cmdCommit = named<QPushButton>("cmdCommit", frame);
    cmdCancel = named<QPushButton>("cmdCancel", frame);
    cmdCommit->setAutoDefault(false);
    cmdCancel->setAutoDefault(false);
    connect(cmdCommit, &QPushButton::clicked, this, &OptimizeDialog::commitConfig);
    connect(cmdCancel, &QPushButton::clicked, this, &OptimizeDialog::reject);
    layout->addWidget(Label12, 0, 0);
    layout->addWidget(chkShowSetup, 0, 1, Qt::AlignRight);
    layout->addWidget(cmbConfigs, 1, 0, 1, 2);
    layout->addWidget(dbgpbx, 2, 0, 1, 2);
    layout->addWidget(cmdCommit, 3, 0);
    layout->addWidget(cmdCancel, 3, 1);
    layout->setRowStretch(2, 1);
    return frame;
}

void OptimizeDialog::showTexts()
{
    const auto text = [this](Text id) { return m_editor.session().text(id); };
    Frame2->setTitle(text(Text::SearchSettings));
    chkArea->setText(text(Text::AreaSpeakersOnly));
    chkNeighbor->setText(text(Text::NeighbouringAnglesOnly));
    chkQuick->setText(text(Text::QuickFirst));
    chkShowSetup->setText(text(Text::ShowSetup));
    fraMeasure->setTitle(text(Text::Measure));
    for (QAbstractButton* option : m_measures->buttons())
        option->setText(
            text(allMeasures()[static_cast<std::size_t>(m_measures->id(option))].title));
    Label2->setText(text(Text::NumberOfPoints));
    fraFitLine->setTitle(text(Text::FitLine));
    m_x1Label->setText(text(Text::FitX1));
    m_x2Label->setText(text(Text::FitX2));
    Label11->setText(text(Text::DeltaDb));
    Label6->setText(text(Text::SearchArea));
    Label4->setText(text(Text::ConfigurationNumber));
    Label1->setText(text(Text::ConfigurationsToTest));
    Label3->setText(text(Text::Tested));
    Label5->setText(text(Text::BestRms));
    Label7->setText(text(Text::PercentComplete));
    Label12->setText(text(Text::TopConfigurations));
    Label8->setText(text(Text::Rms));
    m_timeLeftLabel->setText(text(Text::TimeLeft));
    m_rateLabel->setText(text(Text::RateLabel));
    cmdMore->setText(text(m_more->isHidden() ? Text::MoreLabel : Text::LessLabel));
    m_more->showTexts();
    cmdCommit->setText(text(Text::AcceptSelected));
    cmdCancel->setText(text(Text::Cancel));
    showToTest();
    showFitLabels();
    showState();
    explainControls(*this, m_editor.session());
}

void OptimizeDialog::showState()
{
    setWindowTitle(m_editor.session().text(m_run.form().caption()));
    cmdOptimize->setText(m_editor.session().text(m_run.form().buttonText()));
    cmdOptimize->setEnabled(m_run.form().buttonEnabled() && m_more->fault().isEmpty());
    for (QWidget* option : {static_cast<QWidget*>(chkArea), static_cast<QWidget*>(chkNeighbor),
                            static_cast<QWidget*>(chkQuick), static_cast<QWidget*>(txtNumPts),
                            static_cast<QWidget*>(fraMeasure), static_cast<QWidget*>(m_more),
                            static_cast<QWidget*>(cmdMore)})
        option->setEnabled(m_run.form().optionsEnabled());
    cmbConfigs->setEnabled(m_run.form().resultsShown());
    cmdCancel->setEnabled(m_run.form().cancelEnabled());
    cmdCommit->setEnabled(m_run.form().acceptEnabled());
    showProgress();
}

void OptimizeDialog::showToTest()
{
    QStringList areas;
    for (const WeightedArea& area : m_run.choice().areas)
        areas += QString::number(area.number);
    lblArea->setText(areas.join(", "));
    const auto count = m_run.count();
    lblToTest->setText(count ? QString::number(*count)
                             : m_editor.session().text(Text::TooManyToCount));
    lblQuick->setText(m_more->fault());
}

void OptimizeDialog::showFitLabels()
{
    const double factor = m_editor.lengthFactor();
    const auto rounded = [](double value) { return qtText(plainText(value, 2)); };
    // Where the target begins is said along the floor, how long it is along the area.
    const double radians = m_area.angleDeg * kRadiansPerDegree;
    const double start = m_target.startM * std::cos(radians);
    lblX1->setText(rounded(start * factor));
    lblX2->setText(rounded((start + m_target.lengthM) * factor));
    lblDeltadB->setText(rounded(m_target.lengthM * m_target.slopeDbPerM / factor));
    for (QLabel* unit : lblUnits)
        unit->setText(qtText(lengthUnit(m_editor.session().textOptions())));
}

/// What is proved of the best so far, and how far it may yet be undercut.
QString OptimizeDialog::gapText(const SearchRun::Progress& now) const
{
    const Session& session = m_editor.session();
    if (now.bestRms >= kNoMeasure || m_run.quickOnly()) // which proves nothing
        return {};
    if (now.leastRms >= now.bestRms)
        return session.text(Text::ProvedWhole);
    const double gap = 100 * (now.bestRms - now.leastRms) / now.bestRms;
    return session.text(
        Message(Text::ProvedShare,
                {plainText(100 * now.share, 2), fixedText(now.leastRms, 2), fixedText(gap, 0)}));
}

void OptimizeDialog::showProgress()
{
    const SearchRun::Progress now = m_run.progress();
    const auto measured = [](double rms) { return rms < kNoMeasure ? decibels(rms) : QString(); };
    lblTested->setText(QString::number(now.tested));
    lblComp->setText(qtText(plainText(100 * now.share, 1)) + "%");
    lblConfigNum->setText(QString::number(now.number));
    lblBestRMS->setText(decibels(now.bestRms));
    lblCurrentRMS->setText(measured(now.lastRms));
    lblTimeLeft->setText(now.secondsLeft ? minutesAndSeconds(*now.secondsLeft) : QString("_"));
    lblRate->setText(now.perSecond > 0 ? QString::number(std::lround(now.perSecond))
                                       : QString("_"));
    lblGap->setText(gapText(now));
    // Each new best is drawn, where the new part is to be seen.
    if (m_run.form().state() != SearchForm::State::Running || m_more->isHidden())
        return;
    if (const std::optional<Configuration> better = m_run.better()) {
        m_better = m_run.arrayOf(*better);
        m_views.setCurves([this](int points) { return betterCurve(points); });
        dbgpbx->redraw();
    }
}

/// The new part; folded in, everything is as if there were none.
void OptimizeDialog::foldOut(bool more)
{
    m_more->setVisible(more);
    tblResults->setVisible(more);
    lblGap->setVisible(more);
    m_rateLabel->setVisible(more);
    lblRate->setVisible(more);
    m_measures->button(static_cast<int>(Measure::Even))->setVisible(more);
    if (!more && m_measures->checkedId() == static_cast<int>(Measure::Even))
        m_measures->button(static_cast<int>(Measure::SmoothArea))->setChecked(true);
    chooseCandidates();
    showTexts();
    adjustSize();
    const QRect screen = this->screen()->availableGeometry();
    const QRect frame = frameGeometry();
    move(std::clamp(x(), screen.left(), std::max(screen.left(), screen.right() - frame.width())),
         std::clamp(y(), screen.top(), std::max(screen.top(), screen.bottom() - frame.height())));
}

SearchChoice OptimizeDialog::choice() const
{
    SearchChoice choice{.areas = {{m_editor.view().SelectedArea, 1}},
                        .measure = static_cast<Measure>(m_measures->checkedId()),
                        .points = m_points,
                        .allJoints = !chkArea->isChecked(),
                        .neighbours = chkNeighbor->isChecked(),
                        .levels = m_editor.view().levels.choice()};
    m_more->addTo(choice);
    if (m_more->alongFitLine())
        choice.target = m_target;
    return choice;
}

void OptimizeDialog::chooseCandidates()
{
    QAbstractButton* fit = m_measures->button(static_cast<int>(Measure::FitToLine));
    fit->setEnabled(m_more->alongFitLine());
    if (!fit->isEnabled() && fit->isChecked())
        m_measures->button(static_cast<int>(Measure::SmoothArea))->setChecked(true);
    m_run.choose(choice());
    showToTest();
    showState();
}

void OptimizeDialog::beginOrPause()
{
    if (m_run.form().state() == SearchForm::State::Running) {
        m_task.stop();
        return;
    }
    cmbConfigs->clear();
    tblResults->setRowCount(0);
    m_views.setCurves({});
    if (m_run.form().optionsEnabled())
        m_run.choose(choice());
    m_run.begin(m_more->quick(chkQuick->isChecked()));
    m_poll.start(kPollMs);
    m_task.start([this](const Task::Stop& stop) { m_run.work(stop); }, [this] { searchStopped(); },
                 [this] { reject(); }); // what it tested last is not known
    showState();
}

void OptimizeDialog::searchStopped()
{
    m_poll.stop();
    m_run.ended();
    m_better.reset();
    m_views.setCurves({});
    listTopConfigs();
    const bool finished = m_run.form().state() == SearchForm::State::Finished;
    if (finished)
        chkShowSetup->setChecked(true);
    showState();
    if (finished)
        cmbConfigs->setCurrentIndex(0);
}

void OptimizeDialog::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape || m_run.form().state() != SearchForm::State::Running) {
        QDialog::keyPressEvent(event);
        return;
    }
    m_task.stop(); // as the button does; what was found stays
    event->accept();
}

void OptimizeDialog::reject()
{
    m_task.stop();
    QDialog::reject();
}

} // namespace orva::ui
