#include "main/step_button.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace orva::ui {

StepButton::StepButton(const QString& name, bool up, QWidget* parent)
    : QToolButton(parent), m_up(up)
{
    setObjectName(name);
    setFocusPolicy(Qt::NoFocus); // the list beside it takes cursor keys
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize StepButton::sizeHint() const
{
    const int height = fontMetrics().height();
    return {height * 11 / 20, height * 5 / 6};
}

void StepButton::setEffect(const Evenness& now, const std::optional<Evenness>& then)
{
    setEnabled(then.has_value());
    m_gainDb = then ? std::optional(now.rms - then->rms) : std::nullopt;
    update();
}

void StepButton::clearEffect(const QString& why)
{
    setEnabled(false);
    setToolTip(why);
    m_gainDb.reset();
    update();
}

void StepButton::paintEvent(QPaintEvent*)
{
    constexpr double kStrongDb = 0.3;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = palette().color(QPalette::Button);
    if (m_gainDb) {
        const QColor end = *m_gainDb > 0 ? QColor(30, 160, 60) : QColor(215, 60, 45);
        const double share = std::min(1.0, std::sqrt(std::abs(*m_gainDb) / kStrongDb));
        const auto mixed = [&](int from, int to) {
            return static_cast<int>(std::lround(from + share * (to - from)));
        };
        fill = QColor(mixed(fill.red(), end.red()), mixed(fill.green(), end.green()),
                      mixed(fill.blue(), end.blue()));
    }
    if (underMouse() && isEnabled())
        fill = fill.lighter(115);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Mid));
    painter.setBrush(fill);
    painter.drawRoundedRect(frame, 2, 2);
    const QPointF middle = frame.center();
    const double arm = frame.width() / 4;
    const double tip = m_up ? -arm : arm;
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    painter.drawPolygon(QPolygonF({{middle.x() - arm, middle.y() - tip / 2},
                                   {middle.x() + arm, middle.y() - tip / 2},
                                   {middle.x(), middle.y() + tip}}));
}

} // namespace orva::ui
