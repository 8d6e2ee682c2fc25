// What the search found: list, table, curves.
#include "app/forms/search_results.h"
#include "lang/number_text.h"
#include "main/optimize_dialog.h"

#include <algorithm>

namespace orva::ui {

/// "2: RMS: 0.47dB(A)".
QString OptimizeDialog::lineOf(const SearchRun::Result& result, int number) const
{
    const Session& session = m_editor.session();
    const char* unit = m_editor.view().levels.aWeighted ? "dB(A)" : "dB";
    const QString place = QString::number(number);
    const QString measure = session.text(Text::Rms) + " " + decibels(result.rms, unit);
    switch (result.kind) {
    case SearchRun::Result::Kind::Original:
        return place + session.text(Text::OriginalSetup);
    case SearchRun::Result::Kind::Quick:
        return place + ": " + session.text(Text::QuickSearch) + ": " + measure;
    case SearchRun::Result::Kind::Best:
        break;
    }
    return place + ": " + measure;
}

void OptimizeDialog::listTopConfigs()
{
    const QSignalBlocker listing(cmbConfigs);
    cmbConfigs->clear();
    for (const SearchRun::Result& result : m_run.results())
        cmbConfigs->addItem(lineOf(result, cmbConfigs->count() + 1));
    if (const auto& quick = m_run.quick()) {
        const Session& session = m_editor.session();
        const char* unit = m_editor.view().levels.aWeighted ? "dB(A)" : "dB";
        lblQuick->setText(session.text(Text::QuickResult)
                              .arg(decibels(quick->rms, unit))
                              .arg(quick->evaluations) +
                          ", " + session.text(quick->proved ? Text::Proved : Text::NotProved));
    }
    cmbConfigs->setCurrentIndex(-1);
    m_curvePoints = 0; // calculated anew for these
    if (!m_more->isHidden())
        fillResults();
}

/// Under the list, a row for each of its lines.
void OptimizeDialog::fillResults()
{
    const QSignalBlocker filling(tblResults);
    Session& session = m_editor.session();
    const Room& room = m_editor.room();
    const TextOptions options = session.textOptions();
    std::vector<std::vector<std::string>> rows;
    std::vector<bool> allowed;
    for (int k = 0; k < static_cast<int>(m_run.results().size()); ++k) {
        const LineArray array = m_run.arrayOf(k);
        ApplicationState& state = session.state();
        Prediction prediction(state.levelKernel(), state.speakerData.BandLevel, array,
                              state.air.SpeedOfSound);
        const ResultFigures figures =
            resultFigures(prediction, room, array, m_editor.view().levels.choice());
        rows.push_back(
            resultTexts(m_run.results()[static_cast<std::size_t>(k)].rms, figures, options));
        allowed.push_back(figures.allowed);
    }
    QStringList heads;
    for (const std::string& head : resultHeads(Text::ColumnRms, room.GIGetNumAreas(), options))
        heads += qtText(head);
    fillTable(*tblResults, heads, rows);
    for (int row = 0; row < tblResults->rowCount(); ++row)
        for (int column = 0; column < tblResults->columnCount(); ++column) {
            QTableWidgetItem& item = *tblResults->item(row, column);
            const bool fits = allowed[static_cast<std::size_t>(row)];
            item.setForeground(fits ? QBrush() : tblResults->palette().brightText());
            item.setToolTip(fits ? QString() : session.text(Text::ResultNotAllowed));
        }
}

/// The current row is the line of the list; the curves are those of all rows that are chosen.
void OptimizeDialog::chooseRows()
{
    const QModelIndexList rows = tblResults->selectionModel()->selectedRows();
    if (rows.isEmpty())
        return;
    if (!rows.contains(tblResults->model()->index(cmbConfigs->currentIndex(), 0)))
        cmbConfigs->setCurrentIndex(rows.last().row());
    m_views.curveView().redraw();
}

void OptimizeDialog::selectConfig(int row)
{
    m_run.select(row);
    if (row >= 0 && row < tblResults->rowCount() &&
        !tblResults->selectionModel()->isRowSelected(row, {}))
        tblResults->selectRow(row);
    cmdCommit->setEnabled(m_run.form().acceptEnabled());
    dbgpbx->redraw();
    if (row >= 0)
        m_views.setCurves([this](int points) { return curves(points); });
}

std::vector<float> OptimizeDialog::levelsOf(const LineArray& array, int points) const
{
    ApplicationState& state = m_editor.session().state();
    return levelsAlong(*state.levelKernel(), state.speakerData.BandLevel, array, m_area,
                       m_editor.view().levels.choice(), points)
        .levels;
}

/// The present setup, and over it the best so far.
CurvePicture OptimizeDialog::betterCurve(int points)
{
    CurvePicture picture{m_editor.view().SelectedArea,
                         m_area.lengthM,
                         {{m_editor.levelsAlong(m_area, points)}},
                         m_editor.view().fitLine,
                         m_editor.view().baseline};
    if (m_better)
        picture.curves.push_back({levelsOf(*m_better, points), Role::Result1, 2});
    return picture;
}

/// The levels of each result along the whole area.
void OptimizeDialog::calculateCurves(int points)
{
    m_curves.clear();
    m_curvePoints = points;
    for (int k = 0; k < static_cast<int>(m_run.results().size()); ++k) {
        setWindowTitle(m_editor.session().text(Text::CurvesProgress1) +
                       QString::number((k + 1) * 100 / static_cast<int>(m_run.results().size())) +
                       m_editor.session().text(Text::CurvesProgress2));
        m_curves.push_back(levelsOf(m_run.arrayOf(k), points));
    }
    setWindowTitle(m_editor.session().text(m_run.form().caption()));
}

CurvePicture OptimizeDialog::curves(int points)
{
    if (m_curvePoints != points)
        calculateCurves(points);
    constexpr Role kColours[] = {Role::Result1, Role::Result2, Role::Result3, Role::Result4,
                                 Role::ResultMore};
    CurvePicture picture{m_editor.view().SelectedArea,
                         m_area.lengthM,
                         {},
                         m_editor.view().fitLine,
                         m_editor.view().baseline};
    const QModelIndexList rows = tblResults->selectionModel()->selectedRows();
    const auto selected = static_cast<std::size_t>(m_run.form().selected());
    for (std::size_t k = 0; k < m_curves.size(); ++k)
        if (k != selected &&
            (rows.size() < 2 || rows.contains(tblResults->model()->index(static_cast<int>(k), 0))))
            picture.curves.push_back({m_curves[k], kColours[k], 1});
    picture.curves.push_back({m_curves[selected], kColours[selected], 2}); // on top of the others
    return picture;
}

void OptimizeDialog::commitConfig()
{
    const int row = m_run.form().selected();
    if (m_run.results()[static_cast<std::size_t>(row)].kind != SearchRun::Result::Kind::Original)
        m_editor.acceptArray(m_run.arrayOf(row));
    accept();
}

} // namespace orva::ui
