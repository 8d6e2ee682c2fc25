#include "main/array_column.h"

#include "engine/parallel.h"
#include "lang/number_text.h"
#include "widgets/controls.h"

#include <QEvent>
#include <QGridLayout>
#include <QPainter>
#include <QSignalBlocker>
#include <QWheelEvent>

namespace orva::ui {

BoxPicture::BoxPicture(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void BoxPicture::setOutline(const std::optional<std::array<FloatPair, 4>>& outline)
{
    if (outline == m_outline)
        return;
    m_outline = outline;
    update();
}

QSize BoxPicture::sizeHint() const
{
    const int height = fontMetrics().height();
    return {height * 3 / 2, height};
}

void BoxPicture::paintEvent(QPaintEvent*)
{
    if (!m_outline)
        return;
    constexpr double kLargestM = 0.8; // of all boxes, so that larger ones look larger
    QPolygonF side;
    for (const FloatPair& corner : *m_outline)
        side << QPointF(corner[0], corner[1]);
    const double scale = (width() - 2) / kLargestM;
    const QRectF bounds = side.boundingRect();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width() - 1.0, height() / 2.0);
    painter.scale(scale, scale);
    painter.translate(-bounds.right(), -bounds.center().y());
    QPen pen(palette().color(QPalette::WindowText), 0);
    painter.setPen(pen);
    painter.setBrush(palette().color(QPalette::Button));
    painter.drawPolygon(side);
    pen.setWidthF(2.5 / scale); // the front
    painter.setPen(pen);
    painter.drawLine(side[0], side[1]);
}

ArrayColumn::ArrayColumn(Editor& editor, QWidget* parent) : QWidget(parent), m_editor(editor)
{
    makeLists();
    makeScroller();
    constexpr int kRestMs = 20; // of edits in a row the last one counts
    m_steps.setSingleShot(true);
    m_steps.setInterval(kRestMs);
    connect(&m_steps, &QTimer::timeout, this, &ArrayColumn::showSteps);
    for (const auto signal : {&Editor::levelsChosen, &Editor::dataChanged})
        connect(&editor, signal, this, &ArrayColumn::followSteps);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_area, 0, 0, 3, 1);
    layout->addWidget(spkUp_cmd, 0, 1);
    layout->addWidget(VScroll1, 1, 1);
    layout->addWidget(spkDown_cmd, 2, 1);
    lblFloor = named<QLabel>("lblFloor", this);
    lblFloor->setWordWrap(true);
    layout->addWidget(lblFloor, 3, 0, 1, 2);
    layout->setRowStretch(1, 1);
}

void ArrayColumn::makeLists()
{
    m_boxes = new QWidget;
    auto* grid = new QGridLayout(m_boxes);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->setHorizontalSpacing(3);
    // Two grid rows a box, so that each angle stands between the boxes that it joins.
    for (int i = 0; i < SetupForm::kPositions; ++i) {
        const auto at = static_cast<std::size_t>(i);
        m_numbers[at] = new QLabel(QString::number(i + 1), m_boxes);
        m_numbers[at]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        cmbType[at] = named<ListBox>(elementName("cmbType", i), m_boxes);
        m_pictures[at] = new BoxPicture(m_boxes);
        m_tilts[at] = named<QLabel>(elementName("lblTilt", i), m_boxes);
        m_tilts[at]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(m_numbers[at], 2 * i, 0, 2, 1);
        grid->addWidget(m_pictures[at], 2 * i, 1, 2, 1);
        grid->addWidget(cmbType[at], 2 * i, 2, 2, 1);
        grid->addWidget(m_tilts[at], 2 * i, 4, 2, 1);
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
        grid->addWidget(cmbAngle[at], 2 * i + 1, 3, 2, 1);
        cmdUp[at] = new StepButton(elementName("cmdUp", i), true, m_boxes);
        cmdDown[at] = new StepButton(elementName("cmdDown", i), false, m_boxes);
        auto* steps = new QHBoxLayout;
        steps->setSpacing(0);
        for (StepButton* button : {cmdUp[at], cmdDown[at]}) {
            steps->addWidget(button);
            connect(button, &QToolButton::clicked, this,
                    [this, i, up = button == cmdUp[at]] { m_editor.turnBox(i + 1, up ? 1 : -1); });
        }
        grid->addLayout(steps, 2 * i + 1, 5, 2, 1);
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
    m_area = named<QScrollArea>("areaBoxes", this);
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
    connect(VScroll1, &QScrollBar::valueChanged, this, [this](int value) {
        m_keepsEnd = m_keepsEnd && value == VScroll1->maximum();
        m_area->verticalScrollBar()->setValue(value * rowHeight());
    });
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
            showList(*cmbType[i], setup.cmbType[i], m_editor.session().text(Text::InvalidType));
        if (i == cmbAngle.size())
            break;
        const bool joint = static_cast<int>(i) + 1 < setup.total();
        cmbAngle[i]->setVisible(joint);
        cmbAngle[i]->setEnabled(enabled);
        for (StepButton* button : {cmdUp[i], cmdDown[i]})
            button->setVisible(joint);
        if (joint)
            showList(*cmbAngle[i], setup.cmbAngle[i], m_editor.session().text(Text::InvalidAngle));
    }
    displayPlaces();
    followSteps();
    updateWidth();
    updateScrollRange();
}

void ArrayColumn::followSteps()
{
    if (m_editor.calculable() && !m_editor.view().locked) {
        if (!m_steps.isActive())
            m_steps.start();
        return;
    }
    m_steps.stop();
    for (std::size_t i = 0; i < cmdUp.size(); ++i)
        for (StepButton* button : {cmdUp[i], cmdDown[i]})
            button->clearEffect(m_editor.session().text(Text::NoStep));
}

/// What a step of each joint would do, beside it.
void ArrayColumn::showSteps()
{
    if (!m_editor.calculable() || !isVisible())
        return;
    Session& session = m_editor.session();
    const LineArray& array = m_editor.array();
    const Hearing hearing = m_editor.hearing();
    const std::optional<Evenness> now = evennessOf(hearing, array);
    const std::vector<JointSteps> steps =
        now ? jointSteps(hearing, array, coreCount()) : std::vector<JointSteps>();
    for (std::size_t i = 0; i < cmdUp.size(); ++i)
        for (const bool up : {true, false}) {
            StepButton& button = up ? *cmdUp[i] : *cmdDown[i];
            if (i >= steps.size()) {
                button.clearEffect(session.text(Text::NoStep));
                continue;
            }
            const std::optional<Evenness>& then = up ? steps[i].up : steps[i].down;
            button.setEffect(*now, then);
            const int angle = array.GIAGetAllAngle()[i + 1] + (up ? 1 : -1);
            button.setToolTip(
                then ? session.text(Message(
                           Text::StepEffect,
                           {plainText(LineArray::splayAngle(static_cast<std::int16_t>(angle)), 2) +
                                "°",
                            fixedText(then->rms, 2), fixedText(now->rms, 2),
                            fixedText(then->spread, 1), fixedText(now->spread, 1)}))
                     : session.text(Text::NoStep));
        }
}

void ArrayColumn::displayPlaces()
{
    const LineArray& array = m_editor.array();
    const SetupForm& setup = m_editor.setup();
    // Of a setup that is not valid the array is another one.
    const auto axes = m_editor.calculable() ? array.axes() : std::vector<LineArray::BoxAxis>{};
    const BoxGeometry& boxes = array.system().boxes;
    for (std::size_t i = 0; i < m_pictures.size(); ++i) {
        const bool used = static_cast<int>(i) < setup.total();
        m_pictures[i]->setVisible(used);
        m_tilts[i]->setVisible(used);
        const std::optional<BoxKind> kind = setup.kindAt(static_cast<int>(i));
        m_pictures[i]->setOutline(kind ? std::optional(boxes.outline(boxes.shape(*kind)))
                                       : std::nullopt);
        m_tilts[i]->setText(i < axes.size() ? qtText(fixedText(axes[i].angleDeg, 1)) +
                                                  m_editor.session().text(Text::Degrees)
                                            : QString());
        m_tilts[i]->setToolTip(m_editor.session().text(Text::TiltTip).arg(i + 1));
    }
    lblFloor->setVisible(setup.stacked);
    lblFloor->setText(m_editor.session().text(Text::StandsOnFloor));
}

void ArrayColumn::updateWidth()
{
    m_boxes->layout()->activate();
    const int width = m_boxes->sizeHint().width();
    if (m_area->minimumWidth() != width)
        m_area->setMinimumWidth(width);
}

void ArrayColumn::focusNextBox()
{
    const int boxes = m_editor.setup().total();
    int next = 0;
    for (int i = 0; i < boxes; ++i)
        if (cmbType[static_cast<std::size_t>(i)]->hasFocus())
            next = (i + 1) % boxes;
    cmbType[static_cast<std::size_t>(next)]->setFocus(Qt::ShortcutFocusReason);
}

void ArrayColumn::scrollToBottom()
{
    m_keepsEnd = true;
    VScroll1->setValue(VScroll1->maximum());
}

void ArrayColumn::scrollToTop()
{
    m_keepsEnd = false;
    VScroll1->setValue(VScroll1->minimum());
}

void ArrayColumn::updateScrollRange()
{
    const int hidden = std::max(0, m_boxes->sizeHint().height() - m_area->viewport()->height());
    const bool keepsEnd = m_keepsEnd;
    VScroll1->setRange(0, (hidden + rowHeight() - 1) / rowHeight());
    if (keepsEnd)
        VScroll1->setValue(VScroll1->maximum());
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

void ArrayColumn::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    followSteps();
}

void ArrayColumn::wheelEvent(QWheelEvent* event)
{
    VScroll1->setValue(VScroll1->value() - event->angleDelta().y() / 120);
    event->accept();
}

} // namespace orva::ui
