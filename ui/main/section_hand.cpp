#include "main/section_hand.h"

#include "lang/string_table.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>
#include <cmath>

namespace orva::ui {

namespace {

constexpr double kReachPx = 7;
constexpr double kBoxReachPx = 14;
constexpr double kClickPx = 3; ///< a hand is not still
constexpr double kHandlePx = 5;
constexpr double kZoomPerNotch = 1.25;
constexpr double kNotch = 120;

} // namespace

SectionHand::SectionHand(Editor& editor, DrawingWidget& view, bool withArray)
    : QObject(&view), m_editor(editor), m_view(view), m_withArray(withArray)
{
    view.setFocusPolicy(Qt::ClickFocus);
    view.setZoom([&editor] { return editor.view().zoom; });
    view.installEventFilter(this);
    connect(&editor, &Editor::zoomed, &view, &DrawingWidget::redraw);
    connect(&editor, &Editor::boxSelected, &view, qOverload<>(&QWidget::update));
    connect(&editor, &Editor::projectReplaced, this, [this] {
        m_drag.reset();
        m_under.reset();
        m_selected.reset();
    });
}

bool SectionHand::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return press(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseMove:
        return move(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
        return release(*static_cast<QMouseEvent*>(event));
    case QEvent::Wheel:
        return wheel(*static_cast<QWheelEvent*>(event));
    case QEvent::ShortcutOverride: // Esc and figures are the hand's while it holds something
        if (m_drag && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
            event->accept();
        return false;
    case QEvent::KeyPress:
        return key(*static_cast<QKeyEvent*>(event));
    case QEvent::KeyRelease:
        if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Space)
            return false;
        m_space = m_space && static_cast<QKeyEvent*>(event)->isAutoRepeat();
        return true;
    case QEvent::Leave:
        if (m_under) {
            m_under.reset();
            m_view.update();
        }
        return false;
    default:
        return false;
    }
}

Point SectionHand::roomPoint(QPointF position)
{
    const Point at = m_view.userPoint(position);
    return {at.x, -at.y};
}

Size SectionHand::metres(QPointF pixels)
{
    const Scale& scale = m_view.scale();
    return {pixels.x() * scale.width / std::max(1, m_view.width()),
            -pixels.y() * scale.height / std::max(1, m_view.height())};
}

std::optional<Handle> SectionHand::handleUnder(QPointF position)
{
    const std::optional<Handle> handle = handleAt(m_editor.document().state(), roomPoint(position),
                                                  metres({kReachPx, 0}).width, m_withArray);
    const bool held = handle && handle->ofArray() && m_editor.view().locked;
    return held ? std::nullopt : handle;
}

std::optional<int> SectionHand::boxUnder(QPointF position)
{
    if (!m_withArray || !m_editor.arrayWhole())
        return std::nullopt;
    const Point at = roomPoint(position);
    double least = metres({kBoxReachPx, 0}).width;
    std::optional<int> found;
    int number = 0;
    for (const LineArray::BoxAxis& axis : m_editor.array().axes()) {
        const double distance = std::hypot(axis.from.x - at.x, axis.from.y - at.y);
        if (distance < least) {
            least = distance;
            found = number;
        }
        ++number;
    }
    return found;
}

bool SectionHand::press(const QMouseEvent& event)
{
    if (m_drag)
        return true; // another button
    if (event.button() == Qt::MiddleButton || (event.button() == Qt::LeftButton && m_space)) {
        m_pan = event.position();
        m_view.setCursor(Qt::ClosedHandCursor);
        return true;
    }
    if (event.button() != Qt::LeftButton)
        return false;
    if (m_click && m_click(event.position()))
        return true;
    const std::optional<Handle> handle = handleUnder(event.position());
    const std::optional<int> box = boxUnder(event.position());
    const bool point = handle && handle->kind != HandleKind::Area;
    m_selected = handle && (point || !box) ? handle : std::nullopt;
    if (m_selected)
        m_drag = Drag{*m_selected, event.position(), m_editor.document().state(), {}};
    if (m_withArray)
        m_editor.selectBox(m_selected ? std::nullopt : box);
    return false;
}

bool SectionHand::move(const QMouseEvent& event)
{
    if (m_pan) {
        pan(event.position() - *m_pan);
        m_pan = event.position();
        return true;
    }
    if (m_drag && event.buttons().testFlag(Qt::LeftButton)) {
        drag(event);
        return m_drag->moved;
    }
    hover(event.position());
    return false;
}

void SectionHand::drag(const QMouseEvent& event)
{
    const QPointF by = event.position() - m_drag->from;
    if (!m_drag->moved) {
        if (std::hypot(by.x(), by.y()) <= kClickPx)
            return;
        m_drag->moved = true;
        m_drag->gesture = m_editor.newGesture();
    }
    const Qt::KeyboardModifiers keys = event.modifiers();
    m_editor.moveHandle(m_drag->handle, m_drag->start,
                        {metres(by), m_editor.inMetres(), !keys.testFlag(Qt::AltModifier),
                         keys.testFlag(Qt::ShiftModifier)},
                        m_drag->gesture);
    showFigures(m_drag->handle, event.position());
}

bool SectionHand::release(const QMouseEvent& event)
{
    if (m_pan && (event.button() == Qt::MiddleButton || event.button() == Qt::LeftButton)) {
        m_pan.reset();
        m_view.unsetCursor();
        return true;
    }
    if (!m_drag || event.button() != Qt::LeftButton)
        return false;
    const bool moved = m_drag->moved;
    endDrag(false);
    hover(event.position());
    return moved;
}

void SectionHand::endDrag(bool takeBack)
{
    if (takeBack && m_drag->moved)
        m_editor.cancel(m_drag->gesture);
    m_drag.reset();
    QToolTip::hideText();
}

void SectionHand::hover(QPointF position)
{
    const std::optional<Handle> under = handleUnder(position);
    if (under == m_under)
        return;
    m_under = under;
    if (under) {
        m_view.setCursor(Qt::SizeAllCursor);
        showFigures(*under, position);
    } else {
        m_view.unsetCursor();
        QToolTip::hideText();
    }
    m_view.update();
}

/// "Pick point: 0, 7.5 m"
void SectionHand::showFigures(const Handle& handle, QPointF position)
{
    const Session& session = m_editor.session();
    const bool metresShown = m_editor.inMetres();
    const auto text = [metresShown](const Point& point) {
        return qtText(shownLength(point.x, metresShown) + ", " + shownLength(point.y, metresShown));
    };
    QString figures = text(placeOf(m_editor.document().state(), handle));
    if (handle.kind == HandleKind::Area)
        figures += " – " + text(m_editor.room().area(handle.area).end);
    QToolTip::showText(m_view.mapToGlobal(position.toPoint()),
                       session.text(handle.step().message()) + ": " + figures + " " +
                           qtText(lengthUnit(session.textOptions())),
                       &m_view);
}

bool SectionHand::wheel(const QWheelEvent& event)
{
    const double notches = event.angleDelta().y() / kNotch;
    const Zoom& zoom = m_editor.view().zoom;
    if (event.modifiers().testFlag(Qt::ControlModifier)) {
        m_editor.setZoom(zoom.at(event.position().x() / std::max(1, m_view.width()),
                                 event.position().y() / std::max(1, m_view.height()),
                                 std::pow(kZoomPerNotch, notches)));
        return true;
    }
    if (m_drag)
        return true;
    if (m_withArray && m_editor.view().selectedBox) {
        if (const int steps = static_cast<int>(notches))
            m_editor.turnBox(*m_editor.view().selectedBox, steps);
        return true;
    }
    if (zoom == Zoom{})
        return false;
    constexpr double kPixelsPerNotch = 50;
    pan(QPointF(event.angleDelta()) * (kPixelsPerNotch / kNotch));
    return true;
}

void SectionHand::pan(QPointF pixels)
{
    m_editor.setZoom(m_editor.view().zoom.panned(-pixels.x() / std::max(1, m_view.width()),
                                                 -pixels.y() / std::max(1, m_view.height())));
}

bool SectionHand::key(const QKeyEvent& event)
{
    if (event.key() == Qt::Key_Escape && m_drag) {
        endDrag(true);
        return true;
    }
    if (m_drag)
        return event.key() != Qt::Key_Escape; // nothing else happens meanwhile
    switch (event.key()) {
    case Qt::Key_Escape:
        m_editor.setHanging(false);
        m_selected.reset();
        m_editor.selectBox({});
        return true;
    case Qt::Key_Space:
        m_space = true;
        return true;
    case Qt::Key_0:
        m_editor.setZoom({});
        return true;
    case Qt::Key_Plus:
    case Qt::Key_Minus:
        if (m_withArray && m_editor.view().selectedBox)
            m_editor.turnBox(*m_editor.view().selectedBox, event.key() == Qt::Key_Plus ? 1 : -1);
        return true;
    default:
        return nudge(event);
    }
}

bool SectionHand::nudge(const QKeyEvent& event)
{
    const bool fine = event.modifiers().testFlag(Qt::AltModifier);
    const double step = (fine ? 0.01 : 0.1) * (m_editor.inMetres() ? 1 : kMetresPerFoot);
    Size by;
    switch (event.key()) {
    case Qt::Key_Left:
        by.width = -step;
        break;
    case Qt::Key_Right:
        by.width = step;
        break;
    case Qt::Key_Up:
        by.height = step;
        break;
    case Qt::Key_Down:
        by.height = -step;
        break;
    default:
        return false;
    }
    if (!m_selected)
        return false;
    m_editor.moveHandle(*m_selected, m_editor.document().state(),
                        {by, m_editor.inMetres(), !fine, false});
    return true;
}

void SectionHand::drawOverlay(DrawingSurface& surface) const
{
    const auto mark = [&](const Point& at, double pixels) {
        surface.circle({at.x, -at.y}, pixels * surface.pixelX(), Role::Marker, 2);
    };
    const DocumentState& state = m_editor.document().state();
    const std::optional<Handle>& shown = m_drag ? m_selected : m_under;
    if (shown && shown->kind == HandleKind::Area) {
        const Segment area = m_editor.room().area(shown->area);
        mark(area.start, kHandlePx);
        mark(area.end, kHandlePx);
    } else if (shown) {
        mark(shown->kind == HandleKind::Reference ? Point{} : placeOf(state, *shown), kHandlePx);
    }
    const std::optional<int> box = m_withArray ? m_editor.view().selectedBox : std::nullopt;
    if (!box || !m_editor.arrayWhole())
        return;
    const std::vector<LineArray::BoxAxis> axes = m_editor.array().axes();
    if (static_cast<std::size_t>(*box) < axes.size())
        mark(axes[static_cast<std::size_t>(*box)].from, kBoxReachPx / 2);
}

} // namespace orva::ui
