#include "window_fixture.h"

#include <QAction>
#include <QDir>
#include <QFile>

namespace orva::ui {
namespace {

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

TEST_F(Window, StaysOpenWhereTheAnswerWasYesAndTheDiskSaysNo)
{
    auto folder = std::make_unique<QTemporaryDir>();
    const std::string file = folder->filePath("gone.lad").toStdString();
    ASSERT_TRUE(saveProject(window->editor().document().state().project, file));
    window->findChild<ProjectCommands*>()->OpenRecent(file);
    ASSERT_TRUE(comes([&] { return window->editor().document().path() == file; }, 5000));
    folder.reset();
    enter("Cradle_txt(0)", "2");
    QStringList told;
    QTimer clicks;
    QObject::connect(&clicks, &QTimer::timeout, window.get(), [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            told += box->text();
            box->button(told.size() == 1 ? QMessageBox::Yes : QMessageBox::Ok)->click();
        }
    });
    clicks.start(5);
    window->close();
    ASSERT_EQ(told.size(), 2);
    EXPECT_EQ(told[1], "Save failed.");
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->editor().document().modified());
}

TEST_F(Window, OptionsThatCannotBeStoredAreTold)
{
    store.fault = Message("No space left on device");
    answer(QMessageBox::Ok);
    window->close();
    EXPECT_EQ(asked, "The options could not be stored.\nNo space left on device");
}

TEST_F(Window, ALongRecentPathKeepsBothEnds)
{
    const QTemporaryDir folder;
    const QString deep = folder.path() + "/" + QString("tour & co ").repeated(20).trimmed();
    ASSERT_TRUE(QDir().mkpath(deep));
    const QString file = deep + "/halle.lad";
    ASSERT_TRUE(saveProject(window->editor().document().state().project, file.toStdString()));
    window->findChild<ProjectCommands*>()->OpenRecent(file.toStdString());
    const auto* recent = control<QAction>("mnuMRU(0)");
    EXPECT_EQ(recent->toolTip(), file);
    EXPECT_LT(recent->text().size(), file.size());
    EXPECT_TRUE(recent->text().endsWith("/halle.lad"));
    EXPECT_TRUE(recent->text().startsWith(folder.path().left(5)));
    EXPECT_FALSE(QString(recent->text()).remove("&&").contains('&')) << "no shortcut";
}

TEST_F(Window, ADamagedFileChangesNothing)
{
    const QTemporaryDir folder;
    const std::string good = folder.filePath("good.lad").toStdString();
    const std::string bad = folder.filePath("bad.lad").toStdString();
    Project project = window->editor().document().state().project;
    project.array.GBSetCradleCoord({3, 4});
    ASSERT_TRUE(saveProject(project, good));
    QFile damaged(QString::fromStdString(bad));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write(QByteArray::fromStdString(projectBytes(project)).left(500));
    damaged.close();

    ProjectCommands& commands = *window->findChild<ProjectCommands*>();
    const DocumentState before = window->editor().document().state();
    answer(QMessageBox::Ok);
    commands.OpenRecent(bad);
    EXPECT_EQ(asked.section("\n", 0, 0), "The file is either corrupt or invalid.");
    EXPECT_EQ(window->editor().document().state(), before);
    commands.OpenRecent(good);
    EXPECT_EQ(control<QLineEdit>("Cradle_txt(0)")->text(), "3");
    EXPECT_TRUE(window->windowTitle().contains("good.lad"));
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(Window, EscIsNoAnswerToTheSaveQuestion)
{
    enter("Cradle_txt(0)", "2");
    for (const bool byKey : {true, false}) {
        QTimer::singleShot(0, window.get(), [byKey] {
            QWidget* box = QApplication::activeModalWidget();
            if (byKey)
                QTest::keyClick(box, Qt::Key_Escape);
            else
                box->close();
        });
        window->close();
        EXPECT_TRUE(window->isVisible()) << byKey;
        EXPECT_TRUE(window->isWindowModified());
    }
}

} // namespace
} // namespace orva::ui
