#include "app/files/program_folder.h"
#include "lang/string_table.h"
#include "main/main_window.h"
#include "shell/small_dialogs.h"
#include "start/splash_screen.h"
#include "widgets/appearance.h"

#include <QApplication>
#include <QStyleFactory>

namespace orva::ui {

namespace {

/// Says what helps where loudspeaker data are missing or damaged.
void showDataFault(const Session& session, const QString& text, const QString& found)
{
    showMessage(nullptr, text, kProgramTitle, found + session.text(Text::DataFileAdvice));
}

int run()
{
    const std::unique_ptr<SettingsStore> store = platformSettingsStore();
    Session session(*store, programFolder(QCoreApplication::applicationDirPath().toStdString()));
    MlInit();
    useAppearance(LoadSettings(*store).Appearance);
    LanguageDialog::ShowDialog(session, true, nullptr);

    {
        SplashScreen splash(session);
        splash.exec();
        StartData& loaded = splash.loaded();
        if (!loaded.load) {
            showDataFault(session, session.text(loaded.load.error()), {});
            return 1;
        }
        const Language language = session.state().gLanguageId;
        session.state() = std::move(loaded.state);
        session.state().gLanguageId = language;
        for (const SpeakerDataLoad& file : *loaded.load)
            if (file.error)
                showDataFault(session, session.text(Text::LoadDataFailed),
                              session.text(*file.error) + "\n\n");
            else if (file.note)
                showDataFault(session, session.text(*file.note), {});
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
    return orva::ui::run();
}
