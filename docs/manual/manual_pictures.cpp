#include "manual_pictures.h"

#include "main/main_window.h"
#include "shell/keys_dialog.h"
#include "shell/small_dialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QTableWidget>
#include <QTimer>
#include <cstdlib>
#include <functional>

namespace orva::manual {

namespace {

constexpr QSize kWindowSize(1120, 760);

/// The real window, operated by the names of its controls.
class Operator {
public:
    explicit Operator(ui::Session& session) : m_window(session)
    {
        m_window.resize(kWindowSize);
        m_window.begin();
        m_window.show();
        wait();
        m_window.resize(kWindowSize);
        wait();
        QObject::connect(&m_watch, &QTimer::timeout, &m_window, [] {
            if (const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
                give(box->text() + " (which nobody answers)");
        });
        m_watch.start(1000);
    }

    ui::MainWindow& window() { return m_window; }
    Pictures take() { return std::move(m_pictures); }

    template<typename Control = QWidget>
    Control& control(const char* name, QWidget* in = nullptr)
    {
        auto* found = (in ? in : &m_window)->findChild<Control*>(name);
        if (!found)
            give(QString("the window has no ") + name);
        return *found;
    }
    void open(const QString& project)
    {
        control<ui::ProjectCommands>("").OpenRecent(project.toStdString());
        wait();
    }
    void page(int number)
    {
        control<QTabWidget>("Main_SSTab").setCurrentIndex(number);
        wait();
    }
    void enter(const char* name, const QString& text)
    {
        auto& edit = control<QLineEdit>(name);
        m_window.activateWindow();
        edit.setFocus();
        edit.selectAll();
        for (const QChar c : text)
            key(edit, 0, c);
        key(edit, Qt::Key_Return, {});
        wait();
    }
    void choose(const char* name, const QString& text)
    {
        auto& box = control<QComboBox>(name);
        const int index = box.findText(text);
        box.setCurrentIndex(index);
        emit box.activated(index);
        wait();
    }
    void click(const char* name, QWidget* in = nullptr)
    {
        control<QAbstractButton>(name, in).click();
        wait();
    }
    /// Until what was begun is there.
    void wait(int ms = 60)
    {
        QElapsedTimer time;
        time.start();
        while (time.elapsed() < ms)
            QApplication::processEvents(QEventLoop::AllEvents, ms);
    }
    void picture(const QString& name, QWidget& shown, std::initializer_list<const char*> rings = {})
    {
        wait();
        QImage image = shown.grab().toImage();
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        for (const char* ring : rings) {
            const auto& about = control(ring, &shown);
            const QRect place(about.mapTo(&shown, QPoint()), about.size());
            painter.setPen(QPen(QColor(255, 255, 255, 200), 6));
            painter.drawRoundedRect(place.adjusted(-3, -3, 3, 3), 7, 7);
            painter.setPen(QPen(QColor(0xD8, 0x1B, 0x60), 3));
            painter.drawRoundedRect(place.adjusted(-3, -3, 3, 3), 7, 7);
        }
        painter.end();
        m_pictures.emplace_back(name, image);
    }
    void picture(const QString& name, std::initializer_list<const char*> rings = {})
    {
        picture(name, m_window, rings);
    }
    /// Operates the dialog that `begin` opens, which ends within that.
    void inDialog(const char* dialog, const char* button, const std::function<void(QDialog&)>& run)
    {
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &m_window, [&] {
            auto* open = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!open || open->objectName() != dialog)
                return;
            poll.stop();
            run(*open);
        });
        poll.start(20);
        click(button);
    }

private:
    [[noreturn]] static void give(const QString& why)
    {
        std::fprintf(stderr, "make_manual: %s\n", qPrintable(why));
        std::exit(1);
    }
    static void key(QWidget& to, int code, QChar c)
    {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, code, Qt::NoModifier, c.isNull() ? QString() : QString(c));
            QApplication::sendEvent(&to, &event);
        }
    }

    ui::MainWindow m_window;
    Pictures m_pictures;
    QTimer m_watch;
};

/// Lets a search end that was begun in its dialog.
void finishSearch(Operator& with, QDialog& dialog)
{
    auto& button = with.control<QAbstractButton>("cmdOptimize", &dialog);
    button.click();
    do
        with.wait(100);
    while (button.isEnabled());
}

struct Area {
    const char* x1;
    const char* y1;
    const char* angle;
    const char* length;
};

void enterArea(Operator& with, int number, const Area& area)
{
    with.choose("numAreas_cmb", QString::number(number));
    const std::pair<const char*, const char*> entries[] = {{"txtXone", area.x1},
                                                           {"txtYone", area.y1},
                                                           {"txtAngle", area.angle},
                                                           {"txtLength", area.length}};
    for (const auto& [name, text] : entries)
        with.enter(qPrintable(QString("%1(%2)").arg(name).arg(number - 1)), text);
}

} // namespace

Pictures takeSteps(ui::Session& session)
{
    Operator with(session);
    ui::SystemDialog system(session, &with.window());
    system.show();
    with.picture("step-1.png", system);
    system.hide();

    with.page(ui::RoomTab);
    with.enter("ProjectName_txt",
               session.state().gLanguageId == Language::German ? "Stadttheater" : "Town theatre");
    with.enter("RoomWidth_txt", "34");
    with.enter("RoomHeight_txt", "13");
    with.picture("step-2.png", {"ProjectName_txt", "RoomWidth_txt", "RoomHeight_txt"});
    with.enter("FOHX_txt", "22");
    with.enter("FOHY_txt", "3.1");
    with.picture("step-3.png", {"refX_txt", "refY_txt", "FOHX_txt", "FOHY_txt"});
    enterArea(with, 1, {"6", "1.2", "0", "10"});
    with.picture("step-4.png", {"numAreas_cmb", "fraArea(0)"});
    enterArea(with, 2, {"16", "1.2", "11.7", "13.3"});
    with.picture("step-5.png", {"numAreas_cmb", "fraArea(1)"});
    enterArea(with, 3, {"21", "7", "16.7", "11.5"});
    with.picture("step-6.png", {"numAreas_cmb", "fraArea(2)"});

    with.page(ui::SetupTab);
    with.choose("cmbNumSpk", "12");
    with.choose("cmbNumSch", "6");
    with.picture("step-7.png", {"fraCounts"});
    with.enter("Cradle_txt(0)", "1.5");
    with.enter("Cradle_txt(1)", "11.3");
    with.picture("step-8.png", {"Cradle_txt(0)", "Cradle_txt(1)"});
    with.choose("PinNumber_cmb", "5");
    with.picture("step-9.png", {"PinNumber_cmb", "PinAngle_lbl", "lblStatusTilt"});
    with.click("MapType_opt(0)");
    with.click("chkAllAreas");
    with.picture("step-10.png", {"chkAllAreas", "lblStatusSpread"});
    with.click("chkLive");
    with.wait(1500);
    with.picture("step-11.png", {"chkLive", "MapType_opt(0)"});
    with.inDialog("frmOptimize", "Optimize_cmd", [&](QDialog& dialog) {
        with.click("cmdMore", &dialog);
        for (const char* option : {"chkSearchArea(0)", "chkSearchArea(1)", "chkSearchArea(2)",
                                   "chkFreePin", "chkQuickOnly"})
            if (auto& box = with.control<QAbstractButton>(option, &dialog); !box.isChecked())
                box.click();
        with.click("optMeasure(2)", &dialog);
        finishSearch(with, dialog);
        with.wait(300);
        with.picture("step-12.png", dialog, {"cmdMore", "optMeasure(2)", "cmdOptimize"});
        with.click("cmdCommit", &dialog);
        if (dialog.isVisible())
            dialog.reject();
    });
    with.wait(1500);
    with.picture("step-13.png", {"lblStatusSpread", "lblStatusWeight"});
    with.click("cmdKeep(1)");
    with.choose("cmbNumSpk", "10");
    with.choose("cmbCompare", with.control<QComboBox>("cmbCompare").itemText(1));
    with.wait(1500);
    with.picture("step-14.png", {"cmdKeep(1)", "cmdVariant(1)", "cmbCompare"});
    with.click("cmdVariant(1)");
    with.page(ui::RiggingTab);
    with.picture("step-15.png", {"rigText_txt", "lstPins"});
    with.click("chkLive");
    return with.take();
}

Pictures takePages(ui::Session& session, const QString& project)
{
    Operator with(session);
    with.open(project);
    with.page(ui::RoomTab);
    with.picture("location.png");
    with.page(ui::SetupTab);
    with.picture("setup.png");
    with.inDialog("frmOptimize", "Optimize_cmd", [&](QDialog& dialog) {
        with.control<QAbstractButton>("chkQuick", &dialog).click();
        finishSearch(with, dialog);
        with.picture("search.png", dialog);
        dialog.reject();
    });
    with.click("MapType_opt(0)");
    with.click("CalcBand_cmd");
    with.wait(500);
    with.picture("map.png", with.control("Main_pbx"));
    session.state().settings.map.colours = MapColours::Even;
    session.state().settings.map.contours = true;
    with.window().editor().followSettings();
    with.wait(500);
    with.picture("map-even.png", with.control("Main_pbx"));
    with.picture("levels.png");
    session.state().settings.map = {};
    with.window().editor().followSettings();
    auto& curve = with.control<QTabWidget>("Curve_tab");
    curve.setCurrentIndex(2);
    with.picture("strip.png", curve);
    curve.setCurrentIndex(0);
    with.page(ui::RiggingTab);
    with.picture("rigging.png");
    with.page(ui::SubArrayTab);
    with.picture("subarray.png");

    with.page(ui::SetupTab);
    with.click("Lock_chk");
    with.inDialog("frmSuggest", "cmdSuggest", [&](QDialog& dialog) {
        const auto& stop = with.control<QAbstractButton>("cmdStopSuggest", &dialog);
        do
            with.wait(100);
        while (stop.isEnabled());
        with.picture("suggest.png", dialog);
        dialog.reject();
    });
    with.click("chkAllAreas");
    with.click("chkLive");
    with.wait(1500);
    with.picture("live.png");
    with.click("cmdKeep(1)");
    for (const char* joint : {"cmbAngle(5)", "cmbAngle(7)"})
        with.choose(joint, "4.5°");
    with.choose("cmbCompare", with.control<QComboBox>("cmbCompare").itemText(1));
    with.wait(1500);
    with.picture("compare.png");
    with.click("chkLive");
    return with.take();
}

QString keysTable(ui::Session& session)
{
    Operator with(session);
    ui::KeysDialog dialog(session, with.window());
    const auto& keys = with.control<QTableWidget>("tblKeys", &dialog);
    QString html = "<table>\n<tr>";
    for (int column = 0; column < keys.columnCount(); ++column)
        html += "<th>" + keys.horizontalHeaderItem(column)->text().toHtmlEscaped() + "</th>";
    html += "</tr>\n";
    for (int row = 0; row < keys.rowCount(); ++row) {
        html += "<tr>";
        for (int column = 0; column < keys.columnCount(); ++column)
            html += "<td>" + keys.item(row, column)->text().toHtmlEscaped() + "</td>";
        html += "</tr>\n";
    }
    return html + "</table>\n";
}

} // namespace orva::manual
