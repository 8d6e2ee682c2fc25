#include "main/search_more.h"

#include "lang/number_text.h"
#include "lang/string_table.h"
#include "lang/typed_number.h"

#include <QGridLayout>
#include <QGroupBox>
#include <algorithm>
#include <cmath>

namespace orva::ui {

namespace {

bool anyFigure(double)
{
    return true;
}

bool aboveZero(double figure)
{
    return figure > 0;
}

} // namespace

SearchMore::SearchMore(Editor& editor, QWidget* parent) : QWidget(parent), m_editor(editor)
{
    setObjectName("fraMore");
    const double height =
        roundedTo(m_editor.array().GFAGetCradleCoord()[1] * m_editor.lengthFactor(), 2);
    m_heights = {height - 1, height + 1, 0.25};
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(areasColumn());
    layout->addWidget(freeColumn(), 1);
    showFigures();
}

QWidget* SearchMore::areasColumn()
{
    auto* column = new QGroupBox(this);
    auto* layout = new QGridLayout(column);
    m_areas = new QLabel(column);
    layout->addWidget(m_areas, 0, 0, 1, 2);
    for (int i = 0; i < Room::kAreas; ++i) {
        chkSearchArea[i] = named<QCheckBox>(elementName("chkSearchArea", i), column);
        const int number = i + 1;
        const bool there = number <= m_editor.room().GIGetNumAreas();
        const bool selected = number == m_editor.view().SelectedArea;
        chkSearchArea[i]->setChecked(selected);
        chkSearchArea[i]->setEnabled(
            there && GetAreaSpeakers(m_editor.room(), m_editor.array(), number).has_value());
        connect(chkSearchArea[i], &QCheckBox::clicked, this,
                [this, number](bool chosen) { chooseArea(number, chosen); });
        NumberEdit* weight = entry(elementName("txtWeight", i),
                                   m_weights.at(static_cast<std::size_t>(i)), aboveZero);
        weight->setEnabled(chkSearchArea[i]->isEnabled());
        layout->addWidget(chkSearchArea[i], number, 0);
        layout->addWidget(weight, number, 1);
        chkSearchArea[i]->setVisible(there);
        weight->setVisible(there);
    }
    layout->setRowStretch(Room::kAreas + 1, 1);
    return column;
}

QWidget* SearchMore::freeColumn()
{
    auto* column = new QGroupBox(this);
    auto* layout = new QGridLayout(column);
    const auto check = [&](const char* name, int row) {
        auto* box = named<QCheckBox>(name, column);
        layout->addWidget(box, row, 0);
        connect(box, &QCheckBox::clicked, this, &SearchMore::changed);
        return box;
    };
    m_doubling = new QLabel(column);
    layout->addWidget(m_doubling, 0, 0);
    NumberEdit* doubling = entry("txtPerDoubling", m_perDoubling, anyFigure);
    m_doubling->setBuddy(doubling);
    layout->addWidget(doubling, 0, 1);
    chkFreePin = check("chkFreePin", 1);
    chkFreePin->setEnabled(m_editor.array().GBGetMounting());
    chkFreeHeight = check("chkFreeHeight", 2);
    for (int i = 0; i < 3; ++i)
        layout->addWidget(entry(elementName("txtHeight", i),
                                m_heights.at(static_cast<std::size_t>(i)),
                                i < 2 ? anyFigure : aboveZero),
                          2, 1 + i);
    chkQuickOnly = check("chkQuickOnly", 3);
    constexpr double kMost = 1e9;
    layout->addWidget(entry("txtBudget", m_budget,
                            [](double figure) {
                                return figure >= 1 && figure <= kMost &&
                                       figure == std::floor(figure);
                            }),
                      3, 1, 1, 2);
    layout->setRowStretch(4, 1);
    return column;
}

NumberEdit* SearchMore::entry(const QString& name, double& value,
                              const std::function<bool(double)>& valid)
{
    auto* edit = named<NumberEdit>(name, this);
    m_entries.emplace_back(edit, &value);
    connect(edit, &QLineEdit::editingFinished, this, [this, edit, &value, valid] {
        const std::optional<double> typed = typedFigure(edit->text().toStdString());
        const double before = value;
        if (typed && valid(*typed))
            value = *typed;
        showFigures();
        if (value != before)
            emit changed();
    });
    connect(edit, &NumberEdit::cancelled, this, &SearchMore::showFigures);
    return edit;
}

void SearchMore::showFigures()
{
    constexpr int kDecimals = 4;
    for (const auto& [edit, value] : m_entries)
        edit->setText(qtText(plainText(*value, kDecimals)));
}

/// The last one stays.
void SearchMore::chooseArea(int number, bool chosen)
{
    if (!chosen && std::none_of(std::begin(chkSearchArea), std::end(chkSearchArea),
                                [](const QCheckBox* area) { return area->isChecked(); }))
        chkSearchArea[number - 1]->setChecked(true);
    emit changed();
}

void SearchMore::showTexts()
{
    const Session& session = m_editor.session();
    m_areas->setText(session.text(Text::SearchAreasTitle));
    for (int i = 0; i < Room::kAreas; ++i)
        chkSearchArea[i]->setText(session.text(areaText(i + 1)));
    m_doubling->setText(session.text(Text::PerDoublingLabel));
    chkFreePin->setText(session.text(Text::FreePinLabel));
    chkFreeHeight->setText(session.text(
        Message(Text::FreeHeightLabel, {std::string(lengthUnit(session.textOptions()))})));
    chkQuickOnly->setText(session.text(Text::QuickOnlyLabel));
}

std::optional<std::vector<float>> SearchMore::heights() const
{
    const auto [from, to, step] = m_heights;
    const double metres = 1 / m_editor.lengthFactor();
    return heightsBetween(from * metres, to * metres, step * metres);
}

bool SearchMore::alongFitLine() const
{
    SearchChoice choice;
    addTo(choice);
    return isHidden() ||
           (choice.areas.size() == 1 && choice.areas[0].number == m_editor.view().SelectedArea);
}

QString SearchMore::fault() const
{
    return !isHidden() && chkFreeHeight->isChecked() && !heights()
               ? m_editor.session().text(Text::HeightsWrong)
               : QString();
}

void SearchMore::addTo(SearchChoice& choice) const
{
    if (isHidden())
        return;
    choice.areas.clear();
    for (int i = 0; i < Room::kAreas; ++i)
        if (chkSearchArea[i]->isChecked())
            choice.areas.push_back({i + 1, m_weights.at(static_cast<std::size_t>(i))});
    if (choice.measure == Measure::Even)
        choice.perDoublingDb = m_perDoubling;
    choice.freedom.pins = chkFreePin->isChecked();
    if (chkFreeHeight->isChecked())
        choice.freedom.heightsM = heights().value_or(std::vector<float>());
}

SearchRun::Quick SearchMore::quick(bool first) const
{
    SearchRun::Quick quick{.first = first};
    if (!isHidden() && chkQuickOnly->isChecked()) {
        quick.only = true;
        quick.budget = static_cast<std::uint64_t>(m_budget);
    }
    return quick;
}

} // namespace orva::ui
