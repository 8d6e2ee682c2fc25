#include "start/logging.h"

#include "app/files/log.h"
#include "version/version.h"

#include <QDateTime>
#include <QGuiApplication>
#include <QScreen>
#include <QSysInfo>

#include <unistd.h>

namespace orva::ui {

namespace {

/// Stays to the very end: the toolkit may say something after main().
LogFile* logFile = nullptr;
QtMessageHandler console = nullptr;

const char* levelName(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "debug";
    case QtInfoMsg:
        return "info";
    case QtWarningMsg:
        return "warning";
    case QtCriticalMsg:
        return "error";
    case QtFatalMsg:
        return "fatal";
    }
    return "";
}

void handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const std::string_view category = context.category ? context.category : "";
    if (type != QtDebugMsg)
        logFile->write(QString("%1 [%2] %3 %4: %5")
                           .arg(QDateTime::currentDateTime().toString(Qt::ISODateWithMs))
                           .arg(::getpid())
                           .arg(levelName(type), context.category ? context.category : "",
                                QString(text).replace('\n', "; "))
                           .toStdString());
    if (!category.starts_with("orva."))
        console(type, context, text);
}

} // namespace

void startLog(const std::string& file)
{
    static auto& made = *new LogFile(file);
    logFile = &made;
    console = qInstallMessageHandler(handle);
}

void logStartFacts()
{
    qCInfo(logStart, "%s, Qt %s, %s, %s", versionText("ORVA").c_str(), qVersion(),
           qPrintable(QSysInfo::prettyProductName()), qPrintable(QGuiApplication::platformName()));
    for (const QScreen* screen : QGuiApplication::screens())
        qCInfo(logStart, "screen %s: %d x %d at %d, %d, ratio %g", qPrintable(screen->name()),
               screen->geometry().width(), screen->geometry().height(), screen->geometry().x(),
               screen->geometry().y(), screen->devicePixelRatio());
}

} // namespace orva::ui
