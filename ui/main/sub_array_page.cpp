#include "main/sub_array_page.h"

#include "drawing/sub_array_drawing.h"
#include "lang/number_text.h"
#include "lang/string_table.h"
#include "lang/typed_number.h"
#include "widgets/controls.h"

#include <QGridLayout>

namespace orva::ui {

SubArrayPage::SubArrayPage(Editor& editor, QWidget* parent)
    : Page(editor, parent), m_entries(editor)
{
    makeFrame();
    picSubArray = new DrawingWidget(
        "picSubArray",
        [this](DrawingSurface& surface) {
            const SubArray& subArray = m_editor.subArray();
            DrawSubArray(surface, subArray,
                         subArrayFigures(subArray, m_editor.session().state().air.SpeedOfSound));
        },
        this);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(fraSubArray);
    layout->addWidget(picSubArray, 1);

    connect(&editor.session(), &Session::LanguageChanged, this, &SubArrayPage::showTexts);
    showTexts();
}

/// Opening angle, and a row of figures for each box.
void SubArrayPage::makeFrame()
{
    fraSubArray = named<QGroupBox>("fraSubArray", this);
    auto* grid = new QGridLayout(fraSubArray);
    lblSubArray = named<QLabel>("lblSubArray", fraSubArray);
    OpenAng_txt = named<NumberEdit>("OpenAng_txt", fraSubArray);
    lblSubArray->setBuddy(OpenAng_txt);
    m_degrees = new QLabel(fraSubArray);
    grid->addWidget(lblSubArray, 0, 0, 1, 2);
    grid->addWidget(OpenAng_txt, 0, 2);
    grid->addWidget(m_degrees, 0, 3);
    m_entries.add(
        OpenAng_txt,
        [this](const QString& text, Gesture gesture) {
            const std::optional<double> angle = typedAngle(text.toStdString());
            if (angle)
                m_editor.editSubArray(
                    {Text::StepOpeningAngle},
                    [&](SubArray& subArray) {
                        subArray.openingAngleDeg = static_cast<float>(openingAngle(*angle));
                    },
                    gesture);
            return angle.has_value();
        },
        [this] { return qtText(plainText(m_editor.subArray().openingAngleDeg, 2)); });
    lblSubDist = named<QLabel>("lblSubDist", fraSubArray);
    lblSubVDist = named<QLabel>("lblSubVDist", fraSubArray);
    lblSubDelay = named<QLabel>("lblSubDelay", fraSubArray);
    QLabel* const heads[] = {lblSubDist, lblSubVDist, lblSubDelay};
    for (int column = 0; column < 3; ++column) {
        heads[column]->setWordWrap(true);
        grid->addWidget(heads[column], 1, 1 + 2 * column, 1, 2, Qt::AlignBottom);
    }

    for (int i = 0; i < static_cast<int>(SubArray_txt.size()); ++i)
        makeRow(i, *grid);
    grid->setRowStretch(12, 1);
}

void SubArrayPage::makeRow(int i, QGridLayout& grid)
{
    const auto at = static_cast<std::size_t>(i);
    SubArray_txt[at] = named<NumberEdit>(elementName("SubArray_txt", i), fraSubArray);
    VirtDist_txt[at] = named<NumberEdit>(elementName("VirtDist_txt", i), fraSubArray);
    SubDelay_txt[at] = named<NumberEdit>(elementName("SubDelay_txt", i), fraSubArray);
    auto* number = new QLabel(QString::number(i + 1), fraSubArray);
    number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid.addWidget(number, 2 + i, 0);
    QLineEdit* const edits[] = {SubArray_txt[at], VirtDist_txt[at], SubDelay_txt[at]};
    for (int column = 0; column < 3; ++column) {
        auto* unit = new QLabel(fraSubArray);
        (column < 2 ? m_lengthUnits : m_timeUnits).push_back(unit);
        grid.addWidget(edits[column], 2 + i, 1 + 2 * column);
        grid.addWidget(unit, 2 + i, 2 + 2 * column);
        if (column == 0)
            continue;
        edits[column]->setReadOnly(true);
        edits[column]->setFocusPolicy(Qt::ClickFocus);
    }
    m_entries.add(
        SubArray_txt[at],
        [this, at](const QString& text, Gesture gesture) {
            const auto shown = typedLength(text.toStdString(), m_editor.inMetres());
            if (shown)
                m_editor.editSubArray(
                    {Text::StepSubPosition, static_cast<int>(at) + 1},
                    [&](SubArray& subArray) {
                        subArray.SubPos[at] =
                            static_cast<float>(metresOf(*shown, m_editor.inMetres()));
                    },
                    gesture);
            return shown.has_value();
        },
        [this, at] {
            return qtText(plainText(m_editor.subArray().SubPos[at] * m_editor.lengthFactor(),
                                    m_editor.view().subArrayDecimals));
        });
}

SubArrayFigures SubArrayPage::figures() const
{
    return subArrayFigures(m_editor.subArray(), m_editor.session().state().air.SpeedOfSound,
                           m_editor.lengthFactor());
}

void SubArrayPage::showTexts()
{
    const Session& session = m_editor.session();
    lblSubArray->setText(session.text(Text::OpeningAngle));
    m_degrees->setText(session.text(Text::Degrees));
    lblSubDist->setText(session.text(Text::DistanceFromCentre));
    lblSubVDist->setText(session.text(Text::VirtualDistance));
    lblSubDelay->setText(session.text(Text::DelayNeeded));
    display();
}

void SubArrayPage::display()
{
    m_entries.display();
    for (QLabel* unit : m_lengthUnits)
        unit->setText(qtText(lengthUnit(m_editor.session().textOptions())));
    for (QLabel* unit : m_timeUnits)
        unit->setText(m_editor.session().text(Text::Milliseconds));
    const SubArrayFigures shown = figures();
    for (std::size_t i = 0; i < SubArray_txt.size(); ++i) {
        VirtDist_txt[i]->setText(
            qtText(plainText(shown.virtualDistance[i] * m_editor.lengthFactor(), 2)));
        SubDelay_txt[i]->setText(qtText(plainText(shown.delay[i], 2)));
    }
    picSubArray->redraw();
    picSubArray->setAccessibleDescription(
        m_editor.session()
            .text(Text::SubSummary)
            .arg(SubArray_txt.size())
            .arg(qtText(plainText(m_editor.subArray().openingAngleDeg, 2))));
}

} // namespace orva::ui
