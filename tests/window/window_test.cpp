#include "app/memory_settings.h"
#include "main/main_window.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace orva::ui {
namespace {

class Window : public testing::Test {
protected:
    void SetUp() override
    {
        session.state.settings.ShowNewQuery = false;
        ASSERT_TRUE(LoadSystemData(session.state, session.programFolder / "bin"));
        window = std::make_unique<MainWindow>(session);
        window->resize(1280, 720);
        window->begin();
        window->show();
        control<QTabWidget>("Main_SSTab")->setCurrentIndex(1);
        QTest::qWait(1);
    }

    template<typename Control = QWidget>
    Control* control(const char* name)
    {
        auto* found = window->findChild<Control*>(name);
        EXPECT_TRUE(found) << name;
        return found;
    }
    void choose(const char* name, const char* text)
    {
        auto* box = control<QComboBox>(name);
        const int index = box->findText(text);
        ASSERT_GE(index, 0) << name << " has no " << text;
        box->setFocus();
        box->setCurrentIndex(index);
        emit box->activated(index);
    }
    void enter(const char* name, const char* text)
    {
        auto* edit = control<QLineEdit>(name);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    void click(const char* name)
    {
        QTest::mouseClick(control<QAbstractButton>(name), Qt::LeftButton);
    }
    bool red(const char* name) { return control(name)->property("invalid").toBool(); }
    QString said(const char* name)
    {
        control<DrawingWidget>(name)->picture();
        return control(name)->accessibleDescription();
    }
    /// Answers the next message and keeps its text.
    void answer(QMessageBox::StandardButton button)
    {
        QTimer::singleShot(0, window.get(), [this, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(box);
            asked = box->text();
            box->button(button)->click();
        });
    }

    MemorySettings store;
    Session session{store, ORVA_BINARY_DIR};
    std::unique_ptr<MainWindow> window;
    QString asked;
};

TEST_F(Window, InvalidEntriesAreRedAndStopCalculations)
{
    session.state.settings.AutoCorrect = false;
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
    EXPECT_FLOAT_EQ(session.state.gLineArray.GFAGetCradleCoord()[1], 6.5F);
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

TEST_F(Window, TheLanguageChangesWhileItIsOpen)
{
    session.ChangeLanguage(1031);
    EXPECT_EQ(control<QTabWidget>("Main_SSTab")->tabText(0), "Spielort");
    EXPECT_EQ(control<QAbstractButton>("CalcBand_cmd")->text(), "Berechnen");
    EXPECT_TRUE(said("AreaSpl_pbx").startsWith("Fläche:"));
    session.ChangeLanguage(9);
    EXPECT_EQ(control<QTabWidget>("Main_SSTab")->tabText(0), "Location");
}

TEST_F(Window, ClosingAsksForUnsavedChanges)
{
    window->close();
    EXPECT_FALSE(window->isVisible()) << "nothing to save, nothing asked";
    window->show();
    enter("Cradle_txt(0)", "2");
    answer(QMessageBox::No);
    window->close();
    EXPECT_EQ(asked, "Save changes made to current project?");
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(store.values.at("Options/Units_Meters"), "True");
}

TEST_F(Window, ADamagedFileChangesNothing)
{
    const QTemporaryDir folder;
    const std::string good = folder.filePath("good.lad").toStdString();
    const std::string bad = folder.filePath("bad.lad").toStdString();
    session.state.gLineArray.GBSetCradleCoord({3, 4});
    ASSERT_TRUE(saveProject(session.state, good));
    QFile damaged(QString::fromStdString(bad));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write(QByteArray::fromStdString(projectBytes(session.state)).left(500));
    damaged.close();

    ProjectCommands& commands = *window->findChild<ProjectCommands*>();
    session.state.gLineArray.GBSetCradleCoord({1, 2});
    answer(QMessageBox::Ok);
    commands.OpenRecent(bad);
    EXPECT_EQ(asked, "The file is either corrupt or invalid.");
    EXPECT_EQ(session.state.gLineArray.GFAGetCradleCoord(), (FloatPair{1, 2}));
    commands.OpenRecent(good);
    EXPECT_EQ(control<QLineEdit>("Cradle_txt(0)")->text(), "3");
    EXPECT_TRUE(window->windowTitle().contains("good.lad"));
    EXPECT_FALSE(window->isWindowModified());
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
