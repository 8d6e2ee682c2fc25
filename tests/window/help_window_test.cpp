// The manual inside the program.
#include "shell/help_dialog.h"
#include "window_fixture.h"

#include <QDir>
#include <QFileInfo>
#include <QScrollBar>

namespace orva::ui {
namespace {

class Help : public Window {
protected:
    /// False where the build makes no manual.
    bool putManual()
    {
        const QString made = ORVA_BINARY_DIR "/ORVA-help";
        return QFileInfo::exists(made + "/de.html") &&
               QFile::link(made, programFolder.filePath("ORVA-help"));
    }
    QString section() { return control<QTextBrowser>("txtHelp")->source().fragment(); }
    void ask() { window->findChild<QAction*>("mnuHelpPage")->trigger(); }
};

TEST_F(Help, EachPageHasItsSectionInBothLanguages)
{
    if (!putManual())
        GTEST_SKIP() << "this build makes no manual";
    for (const int language : {9, 1031}) {
        session.ChangeLanguage(language);
        QStringList sections;
        for (int page = 0; page < 4; ++page) {
            control<QTabWidget>("Main_SSTab")->setCurrentIndex(page);
            ask();
            sections += section();
            const QTreeWidgetItem* shown = control<QTreeWidget>("treHelp")->currentItem();
            ASSERT_TRUE(shown) << page;
            EXPECT_EQ(shown->data(0, Qt::UserRole), section()) << page;
            EXPECT_GT(control<QTextBrowser>("txtHelp")->verticalScrollBar()->value(), 0);
        }
        EXPECT_EQ(sections.removeDuplicates(), 0);
    }
}

TEST_F(Help, GoesBackAndForwardAndFollowsTheLanguage)
{
    if (!putManual())
        GTEST_SKIP() << "this build makes no manual";
    auto* pages = control<QTabWidget>("Main_SSTab");
    pages->setCurrentIndex(0);
    ask();
    const QString first = section();
    pages->setCurrentIndex(2);
    ask();
    const QString second = section();
    click("cmdHelpBack");
    EXPECT_EQ(section(), first);
    click("cmdHelpForward");
    EXPECT_EQ(section(), second);
    const QString english = control<QTextBrowser>("txtHelp")->toPlainText();
    const QString chapter = control<QTreeWidget>("treHelp")->topLevelItem(0)->text(0);
    session.ChangeLanguage(1031);
    EXPECT_EQ(section(), second);
    EXPECT_NE(control<QTextBrowser>("txtHelp")->toPlainText(), english);
    EXPECT_GT(control<QTreeWidget>("treHelp")->topLevelItemCount(), 8);
    EXPECT_NE(control<QTreeWidget>("treHelp")->topLevelItem(0)->text(0), chapter);
}

TEST_F(Help, IsSaidToBeMissing)
{
    answer(QMessageBox::Ok);
    ask();
    EXPECT_EQ(asked, "Error: Help File cannot be found.");
    EXPECT_FALSE(window->findChild<QDialog*>("dlgHelp"));
}

TEST_F(Help, TheGermanFileIsTakenInGermanWhereItIsThere)
{
    const auto file = [&] {
        return QFileInfo(helpFile(session, "ORVA-help.pdf", "ORVA-help-de.pdf")).fileName();
    };
    session.ChangeLanguage(1031);
    EXPECT_EQ(file(), "ORVA-help.pdf");
    QFile german(programFolder.filePath("ORVA-help-de.pdf"));
    ASSERT_TRUE(german.open(QIODevice::WriteOnly));
    EXPECT_EQ(file(), "ORVA-help-de.pdf");
    session.ChangeLanguage(9);
    EXPECT_EQ(file(), "ORVA-help.pdf");
}

} // namespace
} // namespace orva::ui
