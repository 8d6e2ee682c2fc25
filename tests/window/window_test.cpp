#include "main/shown_figures.h"
#include "shell/small_dialogs.h"
#include "window_fixture.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QWheelEvent>

namespace orva::ui {
namespace {

TEST_F(Window, InvalidEntriesAreRedAndStopCalculations)
{
    session.state().settings.AutoCorrect = false;
    choose("cmbType(2)", "VM 412 T");
    EXPECT_FALSE(red("cmbAngle(1)"));
    EXPECT_TRUE(red("cmbAngle(2)"));
    EXPECT_TRUE(control("Warning_fra")->isVisible());
    EXPECT_TRUE(control<QLabel>("Warning_lbl")->text().endsWith("One or more Angles"));
    EXPECT_FALSE(control("CalcBand_cmd")->isEnabled());
    choose("cmbType(2)", "VM 412 S");
    EXPECT_FALSE(control("Warning_fra")->isVisible());
    EXPECT_TRUE(control("CalcBand_cmd")->isEnabled());
}

TEST_F(Window, TypedNumbersAreTakenAtOnceAndRewrittenWhenLeft)
{
    auto* cradle = control<QLineEdit>("Cradle_txt(1)");
    cradle->setFocus();
    cradle->selectAll();
    QTest::keyClicks(cradle, "6,50");
    EXPECT_FLOAT_EQ(array().GFAGetCradleCoord()[1], 6.5F);
    EXPECT_EQ(cradle->text(), "6,50") << "nothing moves under the caret";
    QTest::keyClick(cradle, Qt::Key_Return);
    EXPECT_EQ(cradle->text(), "6.5");
    EXPECT_TRUE(window->isWindowModified());
    enter("Cradle_txt(1)", "9");
    EXPECT_TRUE(red("Cradle_txt(1)")) << "above the ceiling";
    EXPECT_TRUE(control("CalcBand_cmd")->isEnabled());
}

TEST_F(Window, AnEditClearsTheMap)
{
    click("CalcBand_cmd");
    EXPECT_TRUE(said("Main_pbx").startsWith("Max: "));
    EXPECT_TRUE(control("chkAiming")->isEnabled());
    EXPECT_FALSE(control("cmbNumSpk")->isEnabled()) << "locked";
    click("Lock_chk");
    choose("cmbNumSpk", "10");
    EXPECT_TRUE(said("Main_pbx").startsWith("FOH: "));
    EXPECT_FALSE(control("chkAiming")->isEnabled());
}

TEST_F(Window, AStackIsLookedAtFromItsBottom)
{
    const QTemporaryDir folder;
    const std::string stack = folder.filePath("stack.lad").toStdString();
    choose("cmbNumSpk", "24");
    EXPECT_TRUE(red("lblOverload")) << "whenever it is shown";
    window->resize(1280, 400);
    QTest::qWait(1);
    const auto* bar = control<QScrollBar>("VScroll1");
    ASSERT_GT(bar->maximum(), bar->minimum());
    control<QAbstractButton>("Stacked_chk")->click();
    EXPECT_EQ(bar->value(), bar->maximum());
    ASSERT_TRUE(saveProject(window->editor().document().state().project, stack));
    control<QAbstractButton>("Stacked_chk")->click();
    EXPECT_EQ(bar->value(), bar->minimum());
    ProjectCommands& commands = *window->findChild<ProjectCommands*>();
    answer(QMessageBox::No);
    commands.OpenRecent(stack);
    EXPECT_TRUE(window->editor().setup().stacked);
    EXPECT_EQ(bar->value(), bar->maximum());
}

TEST_F(Window, TheDelayIsShownWhereItIsChosen)
{
    auto* chosen = control<QAbstractButton>("ShowDelay_chk");
    click("optBassYesNo(1)");
    EXPECT_FALSE(chosen->isEnabled());
    click("optBassYesNo(0)");
    for (int i = 0; i < 2; ++i) {
        chosen->click();
        EXPECT_EQ(window->editor().roomViewContent(true).bassBox.showDelay, chosen->isChecked());
    }
    EXPECT_TRUE(window->editor().roomViewContent(false).aimingLines) << "without a map, always";
}

TEST_F(Window, WhatIsNoCompleteNumberRestoresWhatWasThere)
{
    auto* edit = control<QLineEdit>("Cradle_txt(0)");
    const auto cradleX = [&] { return array().GFAGetCradleCoord()[0]; };
    enter("Cradle_txt(0)", "2.5");
    const std::tuple<const char*, float, const char*> cases[] = {
        // typed, taken while it is typed, shown after leaving
        {"-", 2.5F, "2.5"},        {"", 2.5F, "2.5"},         {"1.234,5", 1.234F, "2.5"},
        {"7 m", 7, "7"},           {"10ft", 3.048F, "3.048"}, {"20000", 2000, "3.048"},
        {"word", 3.048F, "3.048"}, {"2,5", 2.5F, "2.5"}};
    for (const auto& [typed, taken, shown] : cases) {
        SCOPED_TRACE(typed);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, typed);
        EXPECT_FLOAT_EQ(cradleX(), taken);
        QTest::keyClick(edit, Qt::Key_Return);
        EXPECT_EQ(edit->text(), shown);
        EXPECT_NEAR(cradleX(), QString(shown).toFloat(), 1e-6);
    }
    edit->selectAll();
    QTest::keyClicks(edit, "4.5");
    EXPECT_FLOAT_EQ(cradleX(), 4.5F);
    QTest::keyClick(edit, Qt::Key_Escape);
    EXPECT_EQ(edit->text(), "2.5");
    EXPECT_FLOAT_EQ(cradleX(), 2.5F);

    control<QTabWidget>("Main_SSTab")->setCurrentIndex(0);
    enter("RoomWidth_txt", "0");
    EXPECT_EQ(control<QLineEdit>("RoomWidth_txt")->text(), "30") << "refused by the room";
    const SegmentFigures before = room().GFAGetAudienceArea3();
    auto* length = control<QLineEdit>("txtLength(2)");
    length->setFocus();
    length->selectAll();
    QTest::keyClicks(length, "7.3");
    QTest::keyClick(length, Qt::Key_Escape);
    EXPECT_EQ(room().GFAGetAudienceArea3(), before) << "to the last bit";
}

TEST_F(Window, WhatHangsOnNoInvalidEntryTakesEffect)
{
    session.state().settings.AutoCorrect = false;
    choose("cmbType(2)", "VM 412 T");
    ASSERT_TRUE(control("Warning_fra")->isVisible());
    auto& views = *window->findChild<ViewPanel*>();
    for (const auto& [name, there] :
         {std::pair("AreaSpl_pbx", false), std::pair("tblRows", false),
          std::pair("Rigging_pbx", false), std::pair("rigText_txt", false),
          std::pair("picSubArray", true)})
        EXPECT_EQ(figuresShownBy(name, window->editor(), views)->there(), there) << name;
    click("PinAngle_opt(1)");
    enter("box1Angle_txt", "-3");
    EXPECT_FLOAT_EQ(array().GFFirstAngle(), 3);
    choose("cmbAngle(6)", "3°");
    EXPECT_EQ(array().GIAGetAllAngle()[7], 2) << "between two other boxes";
    EXPECT_EQ(array().GIAGetAllType()[2], 0) << "the last valid one";
    control<QAbstractButton>("Stacked_chk")->click();
    EXPECT_FALSE(array().GBGetMounting());

    control<QTabWidget>("Main_SSTab")->setCurrentIndex(2);
    EXPECT_TRUE(control("lblLastValid")->isVisible());
    answer(QMessageBox::Ok);
    window->findChild<QAction*>("mnuPrint")->trigger();
    EXPECT_TRUE(asked.startsWith("The current setup is invalid.")) << asked.toStdString();
}

TEST_F(Window, TheWheelChangesNoClosedList)
{
    choose("cmbNumSpk", "24");
    choose("cmbNumBass", "8");
    window->resize(1280, 600);
    QTest::qWait(30);
    auto* list = control<QComboBox>("cmbType(2)");
    list->setFocus();
    const int before = list->currentIndex();
    auto* scroll = control<QScrollBar>("VScroll1");
    scroll->setValue(0);
    const QPointF at(5, 5);
    for (const int turn : {-120, 120, -120}) {
        QWheelEvent event(at, list->mapToGlobal(at), {}, {0, turn}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(list, &event);
    }
    EXPECT_EQ(list->currentIndex(), before);
    EXPECT_GT(scroll->value(), 0) << "the column scrolls, of " << scroll->maximum();
}

TEST_F(Window, ListsFollowTheFont)
{
    const QFont before = QApplication::font();
    for (const int points : {16, 12, 20}) {
        QFont font = before;
        font.setPointSize(points);
        QApplication::setFont(font);
        auto* first = control<QComboBox>("cmbType(0)");
        EXPECT_TRUE(comes([&] { return first->width() >= first->sizeHint().width(); }, 20000));
        for (const char* name : {"cmbType(0)", "cmbAngle(0)", "cmbAngle(5)", "cmbNumSpk"}) {
            auto* list = control<QComboBox>(name);
            EXPECT_GE(list->width(), list->sizeHint().width()) << name << ' ' << points;
            const QRect visible = list->visibleRegion().boundingRect();
            EXPECT_EQ(visible.width(), list->width()) << name << ' ' << points;
        }
        auto* sheet = control<QPlainTextEdit>("rigText_txt");
        EXPECT_GE(sheet->tabStopDistance(), sheet->fontMetrics().horizontalAdvance("  Box 32"));
    }
    QApplication::setFont(before);
}

TEST_F(Window, AMapOfALockedSetupFollowsTheView)
{
    const auto hasMap = [this] { return said("Main_pbx").startsWith("Max: "); };
    const auto locked = [this] { return control<QAbstractButton>("Lock_chk")->isChecked(); };
    click("MapType_opt(2)");
    click("CalcBand_cmd");
    ASSERT_TRUE(hasMap() && locked());
    const QString before = said("Main_pbx");
    window->resize(1500, 900);
    QTest::qWait(50);
    click("chkAWeight");
    EXPECT_TRUE(hasMap() && locked()) << "the view changed, not the setup";
    choose("cmbTerzOktave", " 2000Hz");
    EXPECT_TRUE(hasMap() && locked());
    EXPECT_NE(said("Main_pbx"), before);
    session.state().settings.Units_Meters = false;
    QTimer::singleShot(0, window.get(), [] {
        QWidget* options = QApplication::activeModalWidget();
        const auto* unit = options->findChild<QLabel*>("lblUnits(3)");
        EXPECT_EQ(unit->text(), "ft");
        options->findChild<QAbstractButton*>("Meters_opt(0)")->click();
        EXPECT_EQ(unit->text(), "m");
        auto* resolution = options->findChild<QLineEdit*>("SPLRes_txt");
        resolution->selectAll();
        QTest::keyClicks(resolution, "2");
        options->findChild<QAbstractButton*>("Done_cmb")->click();
    });
    window->findChild<QAction*>("mnuGenOptions")->trigger();
    EXPECT_TRUE(hasMap() && locked());
    EXPECT_EQ(window->editor().view().map.grid.CellW, 2);
    EXPECT_EQ(window->editor().view().map.shown->levels.size(),
              window->editor().view().map.grid.cells());

    control<QTabWidget>("Main_SSTab")->setCurrentIndex(0);
    enter("FOHX_txt", "15");
    control<QTabWidget>("Main_SSTab")->setCurrentIndex(1);
    QTest::qWait(20);
    EXPECT_FALSE(hasMap() || locked()) << "only the map had locked it";
}

TEST_F(Window, ThePointerIsBusyWhileCurvesAreCalculated)
{
    auto* views = window->findChild<ViewPanel*>();
    ASSERT_TRUE(views);
    bool busy = false;
    views->setCurves([&](int points) {
        busy = QApplication::overrideCursor() &&
               QApplication::overrideCursor()->shape() == Qt::WaitCursor;
        const std::vector<float> levels(static_cast<std::size_t>(points), 90.0F);
        return CurvePicture{1, 15, {{levels}}, {}};
    });
    control<DrawingWidget>("AreaSpl_pbx")->picture();
    EXPECT_TRUE(busy);
    EXPECT_FALSE(QApplication::overrideCursor());
    views->setCurves({});
}

TEST_F(Window, AnOpenerThatFailsIsTold)
{
    const QTemporaryDir folder;
    QFile opener(folder.filePath("xdg-open"));
    ASSERT_TRUE(opener.open(QIODevice::WriteOnly));
    opener.write("#!/bin/sh\nexit 3\n");
    opener.close();
    opener.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(folder.path()) + ":" + path);
    ASSERT_TRUE(QFile::copy(opener.fileName(), programFolder.filePath("ORVA-help.pdf")));
    window->findChild<QAction*>("mnuCallHelp")->trigger();
    QMessageBox* box = nullptr;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box) {
            asked = box->text();
            box->button(QMessageBox::Ok)->click();
        }
    });
    look.start(10);
    EXPECT_TRUE(comes([&] { return !asked.isEmpty(); }, 20000));
    EXPECT_TRUE(asked.contains(programFolder.filePath("ORVA-help.pdf"))) << asked.toStdString();
    qputenv("PATH", path);
}

TEST_F(Window, EnterInAboutIsOk)
{
    AboutDialog about(session, window.get());
    about.show();
    for (QWidget* focus : {about.findChild<QWidget*>("cmdOK"), static_cast<QWidget*>(&about)}) {
        focus->setFocus();
        about.show();
        QTest::keyClick(focus, Qt::Key_Return);
        EXPECT_FALSE(about.isVisible());
    }
}

TEST(Placing, ADialogLiesWholeOnTheScreenBesideTheCurve)
{
    const QRect small(0, 0, 1280, 720);
    const QRect large(0, 0, 1920, 1080);
    const std::tuple<const char*, QSize, QRect, QRect, QPoint> cases[] = {
        {"right of it", {500, 300}, {300, 700, 600, 300}, large, {900, 700}},
        {"below", {1500, 300}, {300, 300, 800, 300}, large, {300, 600}},
        {"above", {900, 400}, {400, 430, 600, 280}, small, {380, 30}},
        {"nowhere free", {1200, 700}, {300, 300, 600, 300}, small, {80, 20}},
        {"second screen", {500, 300}, {2220, 700, 600, 300}, {1920, 0, 1920, 1080}, {2820, 700}}};
    for (const auto& [what, size, curve, screen, wanted] : cases) {
        SCOPED_TRACE(what);
        const QRect placed(placeBeside(size, curve, screen), size);
        EXPECT_TRUE(screen.contains(placed));
        EXPECT_EQ(placed.topLeft(), wanted) << placed.x() << ',' << placed.y();
    }
}

TEST_F(Window, CalculationsWaitForAValidSetup)
{
    session.state().settings.AutoCorrect = false;
    click("MapType_opt(2)");
    choose("cmbNumBass", "3");
    for (const char* name : {"CalcAll_cmd", "CalcBand_cmd", "Optimize_cmd"})
        EXPECT_FALSE(control(name)->isEnabled()) << name;
    EXPECT_TRUE(red("cmbNumBass"));
    choose("cmbNumBass", "0");
    for (const char* name : {"CalcAll_cmd", "CalcBand_cmd", "Optimize_cmd"})
        EXPECT_TRUE(control(name)->isEnabled()) << name;
}

TEST_F(Window, SubArrayEntriesFollowUnitAndAngle)
{
    control<QTabWidget>("Main_SSTab")->setCurrentIndex(3);
    enter("SubArray_txt(0)", "-10");
    enter("OpenAng_txt", "90");
    EXPECT_EQ(control<QLineEdit>("VirtDist_txt(0)")->text(), "10");
    QTimer::singleShot(0, window.get(), [] {
        QWidget* options = QApplication::activeModalWidget();
        options->findChild<QAbstractButton*>("Meters_opt(1)")->click();
        options->findChild<QAbstractButton*>("Done_cmb")->click();
    });
    window->findChild<QAction*>("mnuGenOptions")->trigger();
    EXPECT_EQ(control<QLineEdit>("SubArray_txt(0)")->text(), "-32.81") << "two decimals";
    EXPECT_EQ(control<QLineEdit>("VirtDist_txt(0)")->text(), "32.81");
}

TEST_F(Window, TheFirstQuestionChoosesTheSystem)
{
    session.state().settings.ShowNewQuery = true;
    QTimer::singleShot(0, window.get(), [] {
        QWidget* question = QApplication::activeModalWidget();
        ASSERT_EQ(question->objectName(), "frmNewCorS");
        question->findChild<QAbstractButton*>("optSystem(1)")->click();
        question->findChild<QAbstractButton*>("chkShowOnStartup")->click();
        question->findChild<QAbstractButton*>("OKButton")->click();
    });
    window->begin();
    EXPECT_FALSE(control("cmbNumGer")->isVisible());
    EXPECT_EQ(control<QLabel>("lblNumSpk")->text(), "VM 306 C");
    EXPECT_FALSE(session.state().settings.ShowNewQuery);
}

TEST_F(Window, TheLanguageIsAskedForAgainByTheMenu)
{
    store.setValue("MultiLang", "ShowDialog", "False"); // at the start no more
    QString shown;
    QTimer::singleShot(0, window.get(), [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        shown = dialog->objectName();
        dialog->reject();
    });
    window->findChild<QAction*>("mnuToolsChangeLanguage")->trigger();
    EXPECT_EQ(shown, "LanguageSelect");
}

TEST_F(Window, TheSheetSaysWhatContradictsItself)
{
    EXPECT_FALSE(control("lblLastValid")->isVisibleTo(control("rigText_txt")->parentWidget()));
    Project project = window->editor().document().state().project;
    project.array.GBSetNumGerade(3);
    const QTemporaryDir folder;
    const std::string file = folder.filePath("odd.lad").toStdString();
    ASSERT_TRUE(saveProject(project, file));
    window->findChild<ProjectCommands*>()->OpenRecent(file);
    control<QTabWidget>("Main_SSTab")->setCurrentIndex(2);
    EXPECT_TRUE(control("lblLastValid")->isVisible());
    EXPECT_TRUE(
        control<QLabel>("lblLastValid")->text().startsWith("The project counts 3 straight"));
}

} // namespace
} // namespace orva::ui

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
