#include "main/last_session.h"

#include <QSplitter>
#include <QTabWidget>

namespace orva::ui {

namespace {

constexpr const char* kSection = "Session";
constexpr const char* kWindow = "Window";
constexpr const char* kPage = "Page";
constexpr const char* kAveraging = "Averaging";
constexpr const char* kBand = "Band";
constexpr const char* kSplitters[] = {"splRoom", "splCurve"};
constexpr int kMostPixels = 100'000;

/// Where the curve has its controls below it, nothing is there to divide.
bool divides(const QSplitter& splitter)
{
    return splitter.orientation() ==
           (splitter.objectName() == kSplitters[0] ? Qt::Vertical : Qt::Horizontal);
}

QString asText(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toBase64(QByteArray::Base64UrlEncoding));
}

QByteArray asBytes(const QString& text)
{
    return QByteArray::fromBase64(text.toLatin1(), QByteArray::Base64UrlEncoding);
}

/// An index below `count`.
std::optional<int> indexOf(const QString& text, qsizetype count)
{
    bool number = false;
    const int index = text.toInt(&number);
    return number && index >= 0 && index < count ? std::optional(index) : std::nullopt;
}

} // namespace

QString lastSession(const SettingsStore& store, const QString& key)
{
    return QString::fromStdString(store.value(kSection, key.toStdString()).value_or(""));
}

void keepForNextSession(SettingsStore& store, const QMap<QString, QString>& values)
{
    // What cannot be stored is told at the end of the program.
    (void)store.exchange([&] {
        for (auto value = values.begin(); value != values.end(); ++value)
            store.setValue(kSection, value.key().toStdString(), value.value().toStdString());
    });
}

bool restoreWindow(QMainWindow& window, Editor& editor)
{
    const SettingsStore& store = editor.session().store();
    const auto value = [&](const QString& key) { return lastSession(store, key); };
    auto* pages = window.findChild<QTabWidget*>("Main_SSTab");
    if (const auto page = indexOf(value(kPage), pages->count()))
        pages->setCurrentIndex(*page);
    editor.chooseLevels([&](LevelChoiceForm& levels) {
        const auto size = [](const ChoiceList& list) {
            return static_cast<qsizetype>(list.items.size());
        };
        if (const auto averaging = indexOf(value(kAveraging), size(levels.Average_cmb)))
            levels.chooseAveraging(*averaging);
        if (const auto band = indexOf(value(kBand), size(levels.cmbTerzOktave)))
            levels.chooseBand(*band);
    });
    return window.restoreGeometry(asBytes(value(kWindow)));
}

void restoreDivisions(const QMainWindow& window, const SettingsStore& store)
{
    for (const char* name : kSplitters) {
        auto* splitter = window.findChild<QSplitter*>(name);
        QList<int> sizes;
        for (const QString& part : lastSession(store, name).split(' '))
            if (const auto size = indexOf(part, kMostPixels))
                sizes += *size;
        if (sizes.size() == splitter->count() && divides(*splitter))
            splitter->setSizes(sizes);
    }
}

void keepWindow(const QMainWindow& window, const Editor& editor)
{
    QMap<QString, QString> values;
    values[kWindow] = asText(window.saveGeometry());
    values[kPage] = QString::number(window.findChild<QTabWidget*>("Main_SSTab")->currentIndex());
    for (const char* name : kSplitters) {
        const auto* splitter = window.findChild<QSplitter*>(name);
        QStringList sizes;
        for (const int size : splitter->sizes())
            sizes += QString::number(size);
        if (divides(*splitter))
            values[name] = sizes.join(' ');
    }
    values[kAveraging] = QString::number(editor.view().levels.averaging());
    values[kBand] = QString::number(editor.view().levels.band());
    keepForNextSession(editor.session().store(), values);
}

} // namespace orva::ui
