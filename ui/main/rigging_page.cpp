#include "main/rigging_page.h"

#include "drawing/array_drawing.h"
#include "lang/number_text.h"
#include "model/contradictions.h"
#include "widgets/controls.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

namespace orva::ui {

namespace {

constexpr double kLargestZoom = 8;

} // namespace

RiggingPage::RiggingPage(Editor& editor, QWidget* parent) : Page(editor, parent)
{
    rigText_txt = named<QPlainTextEdit>("rigText_txt", this);
    rigText_txt->setReadOnly(true);
    rigText_txt->setTabChangesFocus(true);
    rigText_txt->installEventFilter(this);
    lstPins = named<QListWidget>("lstPins", this);
    connect(lstPins, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
        const int pin = lstPins->row(item);
        if (!m_editor.view().locked)
            m_editor.choosePin(pin);
    });

    RigPbx_fra = named<QFrame>("RigPbx_fra", this);
    RigPbx_fra->installEventFilter(this);
    Rigging_pbx = new DrawingWidget(
        "Rigging_pbx",
        [this](DrawingSurface& surface) {
            if (!m_editor.arrayWhole())
                surface.clear();
            else
                DrawRiggingView(surface, m_editor.array(), m_editor.session().drawingOptions());
        },
        RigPbx_fra);
    Rigging_pbx->installEventFilter(this);
    RigHScroll = named<QScrollBar>("RigHScroll", Qt::Horizontal, this);
    RigVScroll = named<QScrollBar>("RigVScroll", Qt::Vertical, this);
    RigHScroll->setInvertedControls(false);
    for (QScrollBar* bar : {RigHScroll, RigVScroll})
        connect(bar, &QScrollBar::valueChanged, this,
                [this] { Rigging_pbx->move(-RigHScroll->value(), -RigVScroll->value()); });

    lblLastValid = named<QLabel>("lblLastValid", this);
    lblLastValid->setWordWrap(true);
    lblLastValid->setForegroundRole(QPalette::BrightText);
    auto* texts = new QVBoxLayout;
    texts->addWidget(lblLastValid);
    texts->addWidget(rigText_txt, 3);
    texts->addWidget(lstPins, 1);
    auto* layout = new QGridLayout(this);
    layout->addLayout(texts, 0, 0, 2, 1);
    layout->addWidget(RigPbx_fra, 0, 1);
    layout->addWidget(RigVScroll, 0, 2);
    layout->addWidget(RigHScroll, 1, 1);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(0, 1);

    connect(&editor.session(), &Session::LanguageChanged, this, &RiggingPage::showTexts);
    showTexts();
    display();
}

void RiggingPage::showTexts()
{
    const Session& session = m_editor.session();
    fitSheet();
    Rigging_pbx->setToolTip(session.text(Text::ZoomHint));
}

void RiggingPage::display()
{
    const LineArray& array = m_editor.array();
    const QString sheet = !m_editor.arrayWhole()
                              ? QString()
                              : qtText(array.GSGetPrintout(m_editor.session().textOptions()));
    // The control's own line ends; what is copied out of it has the platform's.
    if (QString shown = sheet; rigText_txt->toPlainText() != shown.remove('\r'))
        rigText_txt->setPlainText(shown);
    displayWarnings();
    displayPins();
    Rigging_pbx->redraw();
    const StatusTexts texts = statusTexts(m_editor.statusFacts(false));
    Rigging_pbx->setAccessibleDescription(qtText(texts.weight + ", " + texts.tilt));
}

/// Why the sheet is not that of the setup on the page, or what in it is wrong.
void RiggingPage::displayWarnings()
{
    QStringList warnings;
    if (!m_editor.setupValid())
        warnings += m_editor.session().text(Text::LastValidSetup);
    for (const std::string& line :
         contradictions(m_editor.array(), m_editor.session().state().gLanguageId))
        warnings += qtText(line);
    if (const auto missing = pinFallsShort(m_editor.array()))
        warnings += m_editor.session().text(*missing);
    lblLastValid->setText(warnings.join("\n"));
    lblLastValid->setVisible(!warnings.empty());
}

void RiggingPage::displayPins()
{
    const LineArray& array = m_editor.array();
    const bool pins = array.GBGetMounting() && m_editor.arrayWhole();
    lstPins->setVisible(pins);
    if (!pins)
        return;
    const Session& session = m_editor.session();
    QStringList lines;
    for (std::int16_t pin = 0; pin < array.system().cradle.pinCount(); ++pin)
        lines += session.text(Text::SheetPin) + QString::number(pin + 1) + "   " +
                 qtText(plainText(-array.GFAngleFromPin(pin), 1)) + session.text(Text::Degrees);
    const QSignalBlocker quiet(lstPins);
    while (lstPins->count() > lines.size())
        delete lstPins->takeItem(0);
    while (lstPins->count() < lines.size())
        lstPins->addItem(QString());
    for (int row = 0; row < lstPins->count(); ++row)
        lstPins->item(row)->setText(lines[row]);
    lstPins->setCurrentRow(array.GIPinPoint());
}

void RiggingPage::placeView()
{
    const QSize frame = RigPbx_fra->size();
    const QSize view(static_cast<int>(frame.width() * m_zoom),
                     static_cast<int>(frame.height() * m_zoom));
    RigHScroll->setRange(0, view.width() - frame.width());
    RigVScroll->setRange(0, view.height() - frame.height());
    RigHScroll->setPageStep(frame.width());
    RigVScroll->setPageStep(frame.height());
    for (QScrollBar* bar : {RigHScroll, RigVScroll})
        bar->setVisible(bar->maximum() > 0);
    Rigging_pbx->setGeometry(-RigHScroll->value(), -RigVScroll->value(), view.width(),
                             view.height());
}

void RiggingPage::zoom(double factor)
{
    m_zoom = std::clamp(m_zoom * factor, 1.0, kLargestZoom);
    placeView();
}

bool RiggingPage::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == RigPbx_fra && event->type() == QEvent::Resize)
        placeView();
    if (watched == Rigging_pbx && event->type() == QEvent::Wheel) {
        auto* wheel = static_cast<QWheelEvent*>(event);
        const int notches = wheel->angleDelta().y();
        if (wheel->modifiers().testFlag(Qt::ControlModifier))
            zoom(notches > 0 ? 1.25 : 0.8);
        else
            RigVScroll->setValue(RigVScroll->value() - notches);
        return true;
    }
    if (watched == rigText_txt && event->type() == QEvent::FontChange)
        fitSheet();
    return false;
}

/// Tab stops and width follow the font.
void RiggingPage::fitSheet()
{
    const QFontMetrics metrics = rigText_txt->fontMetrics();
    rigText_txt->setTabStopDistance(
        metrics.horizontalAdvance("  " + m_editor.session().text(Text::Box) + "32  "));
    rigText_txt->setMinimumWidth(metrics.averageCharWidth() * 52);
}

} // namespace orva::ui
