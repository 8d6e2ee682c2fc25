#pragma once

#include "optimize/evenness.h"

#include <QToolButton>

namespace orva::ui {

/// Turns a joint by a step. Green where that makes the areas more even, red where less; the
/// stronger, the more.
class StepButton final : public QToolButton {
public:
    StepButton(const QString& name, bool up, QWidget* parent);

    /// What the step would come to; none: it is not possible.
    void setEffect(const Evenness& now, const std::optional<Evenness>& then);
    /// Not possible, or not known.
    void clearEffect(const QString& why);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_up;
    std::optional<double> m_gainDb; ///< above 0: more even
};

} // namespace orva::ui
