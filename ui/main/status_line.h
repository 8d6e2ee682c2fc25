#pragma once

#include "app/forms/status_form.h"
#include "main/page.h"

#include <QLabel>

namespace orva::ui {

/// A text that gives way: where it does not fit it is cut with dots, and its tip says it whole.
class ElidedLabel final : public QLabel {
public:
    explicit ElidedLabel(const QString& name, QWidget* parent);

    /// The text, and what it means, which the tip says.
    void tell(const QString& text, const QString& meaning);
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void showTip();

    QString m_what;
};

/// The figures of the status bar: level at the FOH, mean and spread of the areas, weight and
/// height, tilt, air and data.
class StatusLine final : public Page {
    Q_OBJECT
public:
    StatusLine(Editor& editor, QWidget* parent);

    /// What the program says about what it did.
    void say(const QString& text);
    /// Other loudspeaker data are current; the levels follow when something is calculated.
    void refreshData();

signals:
    /// Why the rig may not hang; empty where it may.
    void overloaded(const QString& why);

protected:
    bool concerns(const Shown& what) const override
    {
        const Changes& changes = what.changes;
        return what.everything || what.view || changes.room || changes.array || changes.setup;
    }
    void display() override;
    QSize minimumSizeHint() const override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void arrange();

    void showProbe();

    ElidedLabel* m_said;
    ElidedLabel* m_probe;
    ElidedLabel* m_foh;
    ElidedLabel* m_spread;
    ElidedLabel* m_weight;
    ElidedLabel* m_tilt;
    ElidedLabel* m_data;
};

} // namespace orva::ui
