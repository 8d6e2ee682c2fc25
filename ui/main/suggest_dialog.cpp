#include "main/suggest_dialog.h"

#include "app/forms/search_results.h"
#include "engine/parallel.h"
#include "lang/string_table.h"
#include "widgets/controls.h"
#include "widgets/figure_table.h"

#include <QGridLayout>
#include <cmath>

namespace orva::ui {

namespace {

constexpr int kPollMs = 100;
constexpr int kTableChars = 104; ///< with three areas
constexpr int kRowsShown = 11;

} // namespace

SuggestDialog::SuggestDialog(Editor& editor, QWidget* window)
    : QDialog(window),
      m_editor(editor),
      m_project(editor.document().state().project),
      m_choice(editor.view().levels.choice()),
      m_gesture(editor.newGesture()),
      m_task(this)
{
    setObjectName("frmSuggest");
    auto* layout = new QGridLayout(this);
    lblSuggest = named<QLabel>("lblSuggest", this);
    lblSuggest->setWordWrap(true);
    tblSuggestions = newFigureTable("tblSuggestions", this);
    tblSuggestions->setSelectionMode(QAbstractItemView::SingleSelection);
    tblSuggestions->setMinimumSize(tblSuggestions->fontMetrics().averageCharWidth() * kTableChars,
                                   tblSuggestions->fontMetrics().height() * kRowsShown * 3 / 2);
    pbarSuggest = named<QProgressBar>("pbarSuggest", this);
    pbarSuggest->setTextVisible(false);
    cmdStopSuggest = named<QPushButton>("cmdStopSuggest", this);
    cmdCloseSuggest = named<QPushButton>("cmdCloseSuggest", this);
    for (QPushButton* button : {cmdStopSuggest, cmdCloseSuggest})
        button->setAutoDefault(false);
    layout->addWidget(lblSuggest, 0, 0, 1, 3);
    layout->addWidget(tblSuggestions, 1, 0, 1, 3);
    layout->addWidget(pbarSuggest, 2, 0);
    layout->addWidget(cmdStopSuggest, 2, 1);
    layout->addWidget(cmdCloseSuggest, 2, 2);
    layout->setColumnStretch(0, 1);
    layout->setRowStretch(1, 1);
    connect(tblSuggestions, &QTableWidget::itemSelectionChanged, this, &SuggestDialog::hang);
    connect(cmdStopSuggest, &QPushButton::clicked, this, [this] { m_task.stop(); });
    connect(cmdCloseSuggest, &QPushButton::clicked, this, [this] {
        m_task.stop();
        accept();
    });
    connect(&m_poll, &QTimer::timeout, this, &SuggestDialog::poll);
    connect(&editor.session(), &Session::LanguageChanged, this, &SuggestDialog::showTexts);
    showTexts();
    list();
    adjustSize();

    auto suggesting = std::make_shared<Suggesting>(editor.session().state(), m_project, m_choice);
    m_poll.start(kPollMs);
    const auto told = [this] { ended(); };
    m_task.start(
        [this, suggesting](const Task::Stop& stop) {
            suggesting->run(
                coreCount(), stop,
                [this](const std::vector<Suggestion>& found) {
                    const std::lock_guard lock(m_mutex);
                    m_found = found;
                    m_changed = true;
                },
                [this](double share) { m_share = share; });
        },
        told, told);
}

void SuggestDialog::showTexts()
{
    const Session& session = m_editor.session();
    setWindowTitle(session.text(Text::SuggestTitle));
    lblSuggest->setText(session.text(Text::SuggestHint));
    cmdStopSuggest->setText(session.text(Text::Abort));
    cmdCloseSuggest->setText(session.text(Text::CloseDialog));
    pbarSuggest->setAccessibleName(session.text(Text::ProgressPercent));
    tblSuggestions->setAccessibleName(session.text(Text::SuggestTitle));
}

/// A list that is being chosen from stays as it is until the end.
void SuggestDialog::poll()
{
    pbarSuggest->setValue(static_cast<int>(std::lround(100 * m_share)));
    const std::lock_guard lock(m_mutex);
    if (!m_changed || !tblSuggestions->selectedItems().isEmpty())
        return;
    m_changed = false;
    m_shown = m_found;
    list();
}

void SuggestDialog::ended()
{
    m_poll.stop();
    const std::vector<Suggestion> before = m_shown;
    m_shown = m_found;
    const int chosen = tblSuggestions->currentRow();
    const bool hung = !tblSuggestions->selectedItems().isEmpty();
    list();
    const QSignalBlocker quiet(tblSuggestions);
    tblSuggestions->setCurrentItem(nullptr);
    tblSuggestions->clearSelection();
    for (std::size_t row = 0; hung && row < m_shown.size(); ++row)
        if (m_shown[row].array == before[static_cast<std::size_t>(chosen)].array)
            tblSuggestions->selectRow(static_cast<int>(row));
    pbarSuggest->setValue(pbarSuggest->maximum());
    cmdStopSuggest->setEnabled(false);
    if (m_shown.empty())
        lblSuggest->setText(m_editor.session().text(Text::SuggestNone));
}

void SuggestDialog::list()
{
    const QSignalBlocker filling(tblSuggestions);
    Session& session = m_editor.session();
    ApplicationState& state = session.state();
    const TextOptions options = session.textOptions();
    std::vector<std::vector<std::string>> rows;
    for (const Suggestion& one : m_shown) {
        Prediction prediction(state.levelKernel(), state.speakerData.BandLevel, one.array,
                              state.air.SpeedOfSound);
        rows.push_back(resultTexts(
            one.evenDb, resultFigures(prediction, m_project.room, one.array, m_choice), options));
        std::string boxes = std::to_string(one.array.boxCount());
        if (m_project.array.system().countsKinds)
            boxes += " (" + std::to_string(one.array.GIGetNumGerade()) + " + " +
                     std::to_string(one.array.GIGetNumSchräg()) + ")";
        rows.back().insert(rows.back().begin(), boxes);
    }
    QStringList heads = {session.text(Text::ColumnBoxes)};
    for (const std::string& head :
         resultHeads(Text::ColumnEven, m_project.room.GIGetNumAreas(), options))
        heads += qtText(head);
    fillTable(*tblSuggestions, heads, rows);
}

void SuggestDialog::hang()
{
    const auto row = static_cast<std::size_t>(tblSuggestions->currentRow());
    if (tblSuggestions->selectedItems().isEmpty() || row >= m_shown.size())
        return;
    m_editor.acceptArray(m_shown[row].array, {Text::StepSuggest}, m_gesture);
}

/// Esc while it looks ends that, and keeps what is found.
void SuggestDialog::reject()
{
    if (running())
        m_task.stop();
    else
        QDialog::reject();
}

} // namespace orva::ui
