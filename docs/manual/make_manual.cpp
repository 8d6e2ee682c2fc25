// Makes the manual: the texts beside this file with pictures of the real program, as one PDF.
#include "app/state/memory_settings.h"
#include "main/main_window.h"
#include "widgets/appearance.h"

#include <QApplication>
#include <QFile>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTimer>
#include <cstdio>
#include <functional>

using namespace orva;

namespace {

using Pictures = std::vector<std::pair<QString, QImage>>;

void click(const QObject& parent, const char* name)
{
    parent.findChild<QAbstractButton*>(name)->click();
}

/// A finished search over the window.
QImage searchPicture(ui::MainWindow& window)
{
    QImage picture;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &window, [&] {
        auto* dialog = window.findChild<QDialog*>("frmOptimize");
        auto* button = dialog->findChild<QAbstractButton*>("cmdOptimize");
        if (dialog->findChild<QAbstractButton*>("chkArea")->isEnabled()) {
            click(*dialog, "chkQuick");
            button->click();
        } else if (!button->isEnabled()) {
            picture = dialog->grab().toImage();
            poll.stop();
            dialog->reject();
        }
    });
    poll.start(20);
    click(window, "Optimize_cmd");
    return picture;
}

Pictures takePictures(ui::Session& session, const QString& project)
{
    ui::MainWindow window(session);
    window.resize(1280, 720);
    window.begin();
    window.findChild<ui::ProjectCommands*>()->OpenRecent(project.toStdString());
    window.show();
    auto* pages = window.findChild<QTabWidget*>("Main_SSTab");
    Pictures pictures;
    const auto take = [&](int page, const char* name) {
        pages->setCurrentIndex(page);
        QApplication::processEvents();
        pictures.emplace_back(name, window.grab().toImage());
    };
    take(0, "location.png");
    take(1, "setup.png");
    pictures.emplace_back("search.png", searchPicture(window));
    click(window, "MapType_opt(0)");
    click(window, "CalcBand_cmd");
    take(1, "map.png");
    take(2, "rigging.png");
    take(3, "subarray.png");
    return pictures;
}

/// Pictures as wide as the text, each language on a page of its own.
void arrange(QTextDocument& document, qreal textWidth)
{
    bool first = true;
    bool firstPicture = true;
    const auto holdsPicture = [](const QTextBlock& block) {
        return block.isValid() && !block.begin().atEnd() &&
               block.begin().fragment().charFormat().isImageFormat();
    };
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QTextCursor cursor(block);
        QTextBlockFormat format = block.blockFormat();
        if (format.headingLevel() == 1) {
            if (!first)
                format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
            first = false;
            firstPicture = true;
            cursor.setBlockFormat(format);
        }
        // A heading stays with the picture below it.
        if (format.headingLevel() == 2 && holdsPicture(block.next())) {
            if (!firstPicture)
                format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
            firstPicture = false;
            cursor.setBlockFormat(format);
        }
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextFragment fragment = part.fragment();
            if (!fragment.charFormat().isImageFormat())
                continue;
            QTextImageFormat image = fragment.charFormat().toImageFormat();
            const QSize size = document.resource(QTextDocument::ImageResource, QUrl(image.name()))
                                   .value<QImage>()
                                   .size();
            image.setWidth(textWidth);
            image.setHeight(textWidth * size.height() / std::max(1, size.width()));
            cursor.setPosition(fragment.position());
            cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            cursor.setCharFormat(image);
            break;
        }
    }
}

bool makeManual(const QString& texts, const QString& project, const std::filesystem::path& programs,
                const QString& output)
{
    MemorySettings store;
    ui::Session session(store, {programs});
    session.state().settings.ShowNewQuery = false;
    if (!LoadSystemData(session.state(), programs / "bin"))
        return false;

    QTextDocument document;
    document.setDefaultFont(QFont("DejaVu Sans", 9));
    QString markdown;
    Pictures pictures;
    for (const auto& [name, language] : {std::pair("en", 9), std::pair("de", 1031)}) {
        QFile file(texts + "/" + name + ".md");
        if (!file.open(QIODevice::ReadOnly))
            return false;
        QString text = QString::fromUtf8(file.readAll());
        session.ChangeLanguage(language);
        for (const auto& [picture, image] : takePictures(session, project)) {
            const QString unique = QString(name) + "-" + picture;
            text.replace("(" + picture + ")", "(" + unique + ")");
            pictures.emplace_back(unique, image);
        }
        markdown += text + "\n\n";
    }
    document.setMarkdown(markdown);
    for (const auto& [name, image] : pictures)
        document.addResource(QTextDocument::ImageResource, QUrl(name), image);

    QPdfWriter writer(output);
    writer.setResolution(96);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
    writer.setTitle("ORVA");
    const QSizeF page = writer.pageLayout().paintRectPixels(writer.resolution()).size();
    document.setPageSize(page);
    arrange(document, page.width() - 2 * document.documentMargin());
    document.print(&writer);
    return QFile(output).size() > 0;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    ui::useAppearance(Appearance::Classic);
    if (argc != 5) {
        std::fputs("usage: make_manual TEXTS PROJECT.lad PROGRAMS OUT.pdf\n", stderr);
        return 2;
    }
    const bool made = makeManual(argv[1], argv[2], argv[3], argv[4]);
    if (!made)
        std::fputs("make_manual: something is missing\n", stderr);
    return made ? 0 : 1;
}
