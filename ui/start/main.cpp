#include "app/files/program_folder.h"
#include "app/files/recovery.h"
#include "app/files/state_folder.h"
#include "app/forms/start_options.h"
#include "app/state/memory.h"
#include "lang/string_table.h"
#include "main/main_window.h"
#include "shell/small_dialogs.h"
#include "start/emergency.h"
#include "start/logging.h"
#include "start/splash_screen.h"
#include "version/version.h"
#include "widgets/appearance.h"

#include <QApplication>
#include <QFileInfo>
#include <QTimer>
#include <QUrl>
#include <cstdio>
#include <new>
#include <utility>

namespace orva::ui {

namespace {

/// Goes on where the memory did not suffice for what an event brought, and says so.
class Program final : public QApplication {
public:
    using QApplication::QApplication;
    void setTell(std::function<void()> tell) { m_tell = std::move(tell); }

    bool notify(QObject* receiver, QEvent* event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::bad_alloc&) {
            qCritical("out of memory");
            if (m_tell && !std::exchange(m_telling, true))
                QTimer::singleShot(0, this, [this] {
                    m_tell();
                    m_telling = false;
                });
            return true;
        }
    }

private:
    std::function<void()> m_tell;
    bool m_telling = false;
};

/// Says what helps where loudspeaker data are missing or damaged.
void showDataFault(const Session& session, const QString& text, const QString& found)
{
    showMessage(nullptr, text, kProgramTitle, found + session.text(Text::DataFileAdvice));
}

/// A path or a file URL as an absolute path.
QString fileOf(const std::string& argument)
{
    const QString text = QString::fromLocal8Bit(argument.c_str());
    const QUrl url(text);
    return QFileInfo(url.isLocalFile() ? url.toLocalFile() : text).absoluteFilePath();
}

int run(Program& program, const StartOptions& options)
{
    // Before anything reads them.
    if (options.resetSettings)
        if (const Result<std::string> aside = setSettingsAside(); !aside) {
            std::fprintf(stderr, "orva: %s\n", aside.error().text().c_str());
            return 1;
        }
    const std::unique_ptr<SettingsStore> store = platformSettingsStore();
    const std::filesystem::path state = stateFolder();
    const Folders folders{
        programFolder(QCoreApplication::applicationDirPath().toStdString()), state,
        options.log ? std::filesystem::absolute(*options.log) : state / "orva.log"};
    startLog(folders.logFile);
    logStartFacts();
    Session session(*store, folders);
    MlInit();
    program.setTell(
        [&session] { showMessage(QApplication::activeWindow(), session.text(Text::OutOfMemory)); });
    useAppearance(LoadSettings(*store).Appearance);
    if (options.language)
        session.ChangeLanguage(static_cast<std::int32_t>(*options.language));
    else if (options.file)
        LanguageDialog::applyStored(session);
    else
        LanguageDialog::ShowDialog(session, true, nullptr);

    {
        SplashScreen splash(session, !options.noSplash && !options.file);
        splash.exec();
        StartData& loaded = splash.loaded();
        if (!loaded.load) {
            showDataFault(session, session.text(loaded.load.error()), {});
            return 1;
        }
        const Language language = session.state().gLanguageId;
        session.state() = std::move(loaded.state);
        session.state().gLanguageId = language;
        session.settingsLoaded();
        for (const SpeakerDataLoad& file : *loaded.load)
            if (file.error)
                showDataFault(session, session.text(Text::LoadDataFailed),
                              session.text(*file.error) + "\n\n");
            else if (file.note)
                showDataFault(session, session.text(*file.note), {});
    }

    MainWindow window(session);
    const Emergency emergency([&window] { window.endUnasked(); });
    window.begin(options.file ? fileOf(*options.file) : QString());
    window.show();
    return QApplication::exec();
}

} // namespace

} // namespace orva::ui

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const orva::Result<orva::StartOptions> options = orva::startOptions(arguments);
    if (!options) {
        std::fprintf(stderr, "orva: %s\n%s", options.error().text().c_str(),
                     orva::startHelp().c_str());
        return 2;
    }
    if (options->help || options->version) { // without a display
        std::puts((options->help ? orva::startHelp() : orva::versionText("orva")).c_str());
        return 0;
    }
    orva::returnLargeMemory();
    orva::ui::Program application(argc, argv);
    QApplication::setOrganizationName("ORVA");
    QApplication::setApplicationName("ORVA");
    QApplication::setApplicationVersion(ORVA_VERSION);
    QApplication::setDesktopFileName("orva"); // whose icon and name docks show
    return orva::ui::run(application, *options);
}
