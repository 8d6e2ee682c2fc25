#pragma once

#include "main/editor.h"
#include "main/step_button.h"

#include <QComboBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>
#include <array>

namespace orva::ui {

/// The side of a box, its front to the right.
class BoxPicture final : public QWidget {
public:
    explicit BoxPicture(QWidget* parent);
    /// None: an empty place.
    void setOutline(const std::optional<std::array<FloatPair, 4>>& outline);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<std::array<FloatPair, 4>> m_outline;
};

/// The array from top to bottom: a list for each box's type with its picture and its tilt, between
/// them a list for each splay angle.
/// Scrolls by boxes and follows the focus.
class ArrayColumn final : public QWidget {
    Q_OBJECT
public:
    ArrayColumn(Editor& editor, QWidget* parent);

    void display();
    void scrollToTop();
    void focusNextBox();
    /// And stays there until somebody scrolls.
    void scrollToBottom();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void makeLists();
    void makeScroller();
    int rowHeight() const;
    void updateWidth();
    void updateScrollRange();
    void displayPlaces();
    void followSteps();
    void showSteps();

    Editor& m_editor;
    bool m_keepsEnd = false;
    QScrollArea* m_area;
    QWidget* m_boxes;
    QScrollBar* VScroll1;
    QLabel* lblFloor; ///< which box stands there
    QToolButton* spkUp_cmd;
    QToolButton* spkDown_cmd;
    std::array<QLabel*, SetupForm::kPositions> m_numbers;
    std::array<BoxPicture*, SetupForm::kPositions> m_pictures;
    std::array<QLabel*, SetupForm::kPositions> m_tilts;
    std::array<QComboBox*, SetupForm::kPositions> cmbType;
    std::array<QComboBox*, SetupForm::kJoints> cmbAngle;
    std::array<StepButton*, SetupForm::kJoints> cmdUp;
    std::array<StepButton*, SetupForm::kJoints> cmdDown;
    QTimer m_steps; ///< what steps of the joints would do is asked for
};

} // namespace orva::ui
