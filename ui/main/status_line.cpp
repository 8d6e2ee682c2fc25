#include "main/status_line.h"

#include "engine/spl_difference.h"
#include "lang/number_text.h"
#include "widgets/controls.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QStyle>
#include <QTimer>
#include <algorithm>

namespace orva::ui {

ElidedLabel::ElidedLabel(const QString& name, QWidget* parent) : QLabel(parent)
{
    setObjectName(name);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
}

void ElidedLabel::tell(const QString& text, const QString& meaning)
{
    m_what = meaning;
    setText(text);
    showTip();
}

QSize ElidedLabel::minimumSizeHint() const
{
    const int dots = fontMetrics().horizontalAdvance("000…");
    return {std::min(dots, sizeHint().width()), sizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
    style()->drawItemText(&painter, rect(), Qt::AlignVCenter | Qt::AlignLeft, palette(),
                          isEnabled(), shown, foregroundRole());
}

void ElidedLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    showTip();
}

void ElidedLabel::showTip()
{
    const bool cut = fontMetrics().horizontalAdvance(text()) > width();
    setToolTip(cut ? text() + "\n" + m_what : m_what);
}

StatusLine::StatusLine(Editor& editor, QWidget* parent) : Page(editor, parent)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 0, 4, 0);
    layout->setSpacing(12);
    m_said = new ElidedLabel("lblStatusText", this);
    m_said->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    layout->addWidget(m_said, 1);
    m_probe = new ElidedLabel("lblStatusProbe", this);
    m_probe->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_probe->hide();
    layout->addWidget(m_probe, 3);
    const auto part = [&](const char* name, ElidedLabel*& label) {
        label = new ElidedLabel(name, this);
        layout->addWidget(label);
    };
    part("lblStatusFoh", m_foh);
    part("lblStatusSpread", m_spread);
    part("lblStatusWeight", m_weight);
    part("lblStatusTilt", m_tilt);
    part("lblStatusData", m_data);
    connect(&editor, &Editor::levelsChosen, this, &StatusLine::display);
    connect(&editor, &Editor::probed, this, &StatusLine::showProbe);
}

/// While the pointer is over a view it matters more than where the rig hangs.
void StatusLine::showProbe()
{
    const std::optional<Point>& place = m_editor.view().probe;
    const std::optional<Heard> heard = place ? m_editor.heardAt(*place) : std::nullopt;
    const bool wasShown = m_probe->isVisible();
    m_probe->setVisible(heard.has_value());
    if (heard) {
        QString text = qtText(
            heardText(*heard, m_editor.view().levels.aWeighted, m_editor.session().textOptions()));
        if (const Prediction* other = m_editor.comparedPrediction()) {
            const float level = other->levelAt(*place, m_editor.view().levels.choice());
            text.prepend(m_editor.session().text(
                Message(Text::ProbeCompared, {m_editor.comparedTitle(), levelText(level),
                                              levelText(levelDifference(level, heard->levelDb))})));
        }
        m_probe->tell(text, {});
    }
    if (wasShown != m_probe->isVisible())
        arrange();
}

/// Where there is not room for all, the most important ones are whole.
void StatusLine::arrange()
{
    const int gap = layout()->spacing();
    int room = width() - layout()->contentsMargins().left() * 2;
    if (!m_said->text().isEmpty())
        room -= std::min(room / 4, m_said->sizeHint().width());
    if (!m_probe->isHidden())
        room -= m_probe->sizeHint().width() + gap;
    ElidedLabel* const byWeight[] = {m_foh, m_weight, m_spread, m_tilt, m_data};
    for (const ElidedLabel* label : byWeight)
        room -= label->isHidden() ? 0 : label->minimumSizeHint().width() + gap;
    for (ElidedLabel* label : byWeight) {
        if (label->isHidden())
            continue;
        const int least = label->minimumSizeHint().width();
        const int more = std::clamp(label->sizeHint().width() - least, 0, std::max(0, room));
        label->setFixedWidth(least + more);
        room -= more;
    }
}

QSize StatusLine::minimumSizeHint() const
{
    return {fontMetrics().horizontalAdvance("0") * 40, Page::minimumSizeHint().height()};
}

void StatusLine::resizeEvent(QResizeEvent* event)
{
    Page::resizeEvent(event);
    arrange();
}

void StatusLine::changeEvent(QEvent* event)
{
    Page::changeEvent(event);
    if (event->type() == QEvent::FontChange) // its labels get the font after it
        QTimer::singleShot(0, this, &StatusLine::arrange);
}

void StatusLine::say(const QString& text)
{
    m_said->tell(text, {});
    arrange();
}

void StatusLine::refreshData()
{
    m_data->tell(qtText(statusTexts(m_editor.statusFacts(false)).data),
                 m_editor.session().text(Text::StatusDataTip));
    arrange();
}

void StatusLine::display()
{
    const StatusTexts texts = statusTexts(m_editor.statusFacts());
    const auto show = [this](ElidedLabel* label, const std::string& text, Text meaning) {
        label->tell(qtText(text), m_editor.session().text(meaning));
    };
    show(m_foh, texts.foh, Text::StatusFohTip);
    show(m_spread, texts.spread, Text::StatusSpreadTip);
    show(m_weight, texts.weight, Text::StatusWeightTip);
    show(m_tilt, texts.tilt, Text::StatusTiltTip);
    show(m_data, texts.data, Text::StatusDataTip);
    m_weight->setForegroundRole(texts.wrong ? QPalette::BrightText : QPalette::WindowText);
    for (QLabel* label : {m_foh, m_spread, m_weight, m_tilt, m_data})
        label->setVisible(!label->text().isEmpty());
    arrange();
    emit overloaded(qtText(texts.overload.value_or("")));
}

} // namespace orva::ui
