#include "main/array_column.h"

#include "widgets/controls.h"

#include <QEvent>
#include <QGridLayout>
#include <QSignalBlocker>
#include <QWheelEvent>

namespace orva::ui {

ArrayColumn::ArrayColumn(Editor& editor, QWidget* parent) : QWidget(parent), m_editor(editor)
{
    makeLists();
    makeScroller();
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_area, 0, 0, 3, 1);
    layout->addWidget(spkUp_cmd, 0, 1);
    layout->addWidget(VScroll1, 1, 1);
    layout->addWidget(spkDown_cmd, 2, 1);
    layout->setRowStretch(1, 1);
    connect(&editor.session(), &Session::LanguageChanged, this, &ArrayColumn::showTexts);
    showTexts();
}

void ArrayColumn::makeLists()
{
    m_boxes = new QWidget;
    auto* grid = new QGridLayout(m_boxes);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->setHorizontalSpacing(4);
    // Two grid rows a box, so that each angle stands between the boxes that it joins.
    for (int i = 0; i < SetupForm::kPositions; ++i) {
        const auto at = static_cast<std::size_t>(i);
        m_numbers[at] = new QLabel(QString::number(i + 1), m_boxes);
        m_numbers[at]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        cmbType[at] = named<ListBox>(elementName("cmbType", i), m_boxes);
        grid->addWidget(m_numbers[at], 2 * i, 0, 2, 1);
        grid->addWidget(cmbType[at], 2 * i, 1, 2, 1);
        cmbType[at]->installEventFilter(this);
        connect(cmbType[at], &QComboBox::activated, this, [this, i](int index) {
            if (index != m_editor.setup().cmbType[static_cast<std::size_t>(i)].selected)
                m_editor.editSetup({Text::StepBoxType, i + 1}, [&](SetupForm& setup) {
                    setup.chooseType(i, index, m_editor.autoCorrect());
                });
        });
        if (i == SetupForm::kJoints)
            break;
        cmbAngle[at] = named<ListBox>(elementName("cmbAngle", i), m_boxes);
        grid->addWidget(cmbAngle[at], 2 * i + 1, 2, 2, 1);
        cmbAngle[at]->installEventFilter(this);
        connect(cmbAngle[at], &QComboBox::activated, this, [this, i](int index) {
            if (index != m_editor.setup().cmbAngle[static_cast<std::size_t>(i)].selected)
                m_editor.editSetup({Text::StepSplay, i + 1}, [&](SetupForm& setup) {
                    setup.chooseAngle(i, index, m_editor.autoCorrect());
                });
        });
    }
    grid->setRowStretch(2 * SetupForm::kPositions, 1);
    for (std::size_t i = 0; i + 1 < cmbType.size(); ++i) {
        setTabOrder(cmbType[i], cmbAngle[i]);
        setTabOrder(cmbAngle[i], cmbType[i + 1]);
    }
}

void ArrayColumn::makeScroller()
{
    m_area = new QScrollArea(this);
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setWidgetResizable(true);
    m_area->setFocusPolicy(Qt::NoFocus);
    m_area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_area->setWidget(m_boxes);
    m_area->viewport()->setAutoFillBackground(false);
    m_boxes->installEventFilter(this);
    m_boxes->setAutoFillBackground(false);

    VScroll1 = named<QScrollBar>("VScroll1", Qt::Vertical, this);
    spkUp_cmd = named<QToolButton>("spkUp_cmd", this);
    spkUp_cmd->setArrowType(Qt::UpArrow);
    spkDown_cmd = named<QToolButton>("spkDown_cmd", this);
    spkDown_cmd->setArrowType(Qt::DownArrow);
    for (QToolButton* button : {spkUp_cmd, spkDown_cmd})
        button->setAutoRepeat(true);
    connect(spkUp_cmd, &QToolButton::clicked, this,
            [this] { VScroll1->setValue(VScroll1->value() - 1); });
    connect(spkDown_cmd, &QToolButton::clicked, this,
            [this] { VScroll1->setValue(VScroll1->value() + 1); });
    connect(VScroll1, &QScrollBar::valueChanged, this,
            [this](int value) { m_area->verticalScrollBar()->setValue(value * rowHeight()); });
    connect(m_area->verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int pixels) {
        const QSignalBlocker quiet(VScroll1);
        VScroll1->setValue((pixels + rowHeight() - 1) / rowHeight());
    });
    connect(m_area->verticalScrollBar(), &QScrollBar::rangeChanged, this,
            &ArrayColumn::updateScrollRange);
}

int ArrayColumn::rowHeight() const
{
    return std::max(1, cmbType.front()->sizeHint().height());
}

void ArrayColumn::showTexts()
{
    const Session& session = m_editor.session();
    for (std::size_t i = 0; i < cmbType.size(); ++i) {
        const QString box = session.text(Text::Box) + QString::number(i + 1);
        cmbType[i]->setAccessibleName(box);
        if (i < cmbAngle.size())
            cmbAngle[i]->setAccessibleName(box + ", " + session.text(Text::Angle));
    }
    VScroll1->setAccessibleName(session.text(Text::SetupPage));
    spkUp_cmd->setAccessibleName(session.text(Text::ScrollUp));
    spkDown_cmd->setAccessibleName(session.text(Text::ScrollDown));
}

void ArrayColumn::display()
{
    const SetupForm& setup = m_editor.setup();
    const bool enabled = !m_editor.view().locked;
    for (std::size_t i = 0; i < cmbType.size(); ++i) {
        const bool used = static_cast<int>(i) < setup.total();
        m_numbers[i]->setVisible(used);
        cmbType[i]->setVisible(used);
        cmbType[i]->setEnabled(enabled);
        if (used)
            showList(*cmbType[i], setup.cmbType[i]);
        if (i == cmbAngle.size())
            break;
        const bool joint = static_cast<int>(i) + 1 < setup.total();
        cmbAngle[i]->setVisible(joint);
        cmbAngle[i]->setEnabled(enabled);
        if (joint)
            showList(*cmbAngle[i], setup.cmbAngle[i]);
    }
    updateWidth();
    updateScrollRange();
}

void ArrayColumn::updateWidth()
{
    m_boxes->layout()->activate();
    const int width = m_boxes->sizeHint().width();
    if (m_area->minimumWidth() != width)
        m_area->setMinimumWidth(width);
}

void ArrayColumn::updateScrollRange()
{
    const int hidden = std::max(0, m_boxes->sizeHint().height() - m_area->viewport()->height());
    VScroll1->setRange(0, (hidden + rowHeight() - 1) / rowHeight());
    for (QWidget* control : {static_cast<QWidget*>(VScroll1), static_cast<QWidget*>(spkUp_cmd),
                             static_cast<QWidget*>(spkDown_cmd)})
        control->setVisible(hidden > 0);
}

bool ArrayColumn::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn && watched != m_boxes)
        m_area->ensureWidgetVisible(static_cast<QWidget*>(watched), 0, 0);
    if (event->type() == QEvent::LayoutRequest && watched == m_boxes) { // another font, say
        updateWidth();
        updateScrollRange();
    }
    return false;
}

void ArrayColumn::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    updateScrollRange();
}

void ArrayColumn::wheelEvent(QWheelEvent* event)
{
    VScroll1->setValue(VScroll1->value() - event->angleDelta().y() / 120);
    event->accept();
}

} // namespace orva::ui
