#include "app/program_folder.h"
#include "lang/string_table.h"
#include "main/main_window.h"
#include "shell/colours.h"
#include "shell/small_dialogs.h"
#include "start/splash_screen.h"

#include <QApplication>
#include <QMessageBox>
#include <QStyleFactory>

namespace orva::ui {

namespace {

/// Shows what is missing; the program cannot do without.
int failed(const Error& error)
{
    QMessageBox box(QMessageBox::Critical, kProgramTitle, qtText(error.text()), QMessageBox::Ok);
    box.setTextFormat(Qt::PlainText);
    box.exec();
    return 1;
}

int run()
{
    const std::unique_ptr<SettingsStore> store = platformSettingsStore();
    Session session(*store, programFolder(QCoreApplication::applicationDirPath().toStdString()));
    MlInit();
    LanguageDialog::ShowDialog(session, true, nullptr);

    {
        SplashScreen splash(session);
        splash.exec();
        StartData& loaded = splash.loaded();
        if (!loaded.load)
            return failed(loaded.load.error());
        const Language language = session.state.gLanguageId;
        session.state = std::move(loaded.state);
        session.state.gLanguageId = language;
        for (const auto& file : {loaded.load->standard, loaded.load->compact})
            if (file)
                showMessage(nullptr, "Load data failed");
    }

    MainWindow window(session);
    window.begin();
    window.show();
    return QApplication::exec();
}

} // namespace

} // namespace orva::ui

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QApplication::setOrganizationName("ORVA");
    QApplication::setApplicationName("ORVA");
    QApplication::setApplicationVersion(ORVA_VERSION);
    orva::ui::useColours();
    return orva::ui::run();
}
