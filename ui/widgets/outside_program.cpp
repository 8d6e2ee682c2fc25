#include "widgets/outside_program.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace orva::ui {

namespace {

/// Without the desktop's opener.
bool openByQt(const QString& file)
{
    // Qt would say on the console what the window says.
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const bool opened = QDesktopServices::openUrl(QUrl::fromLocalFile(file));
    qInstallMessageHandler(before);
    return opened;
}

} // namespace

void openOutside(const Session& session, const QString& file, QWidget* window)
{
    const auto failed = [&session, file, window] {
        showMessage(window, session.text(Text::NotOpened).arg(file));
    };
    const QString opener = QStandardPaths::findExecutable("xdg-open");
    if (opener.isEmpty()) {
        if (!openByQt(file))
            failed();
        return;
    }
    // Its exit status tells whether a program was found. It has no parent: the program that it runs
    // must not end with the window.
    auto* process = new QProcess;
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    QObject::connect(process, &QProcess::finished, window,
                     [failed](int code, QProcess::ExitStatus status) {
                         if (code != 0 || status != QProcess::NormalExit)
                             failed();
                     });
    QObject::connect(process, &QProcess::errorOccurred, window,
                     [failed](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart)
                             failed();
                     });
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    QObject::connect(process, &QProcess::errorOccurred, process, &QObject::deleteLater);
    process->start(opener, {file});
}

} // namespace orva::ui
