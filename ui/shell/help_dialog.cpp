#include "shell/help_dialog.h"

#include "widgets/controls.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QRegularExpression>
#include <QSplitter>
#include <QTextBlock>
#include <QVBoxLayout>

namespace orva::ui {

namespace {

constexpr int kPictureWidth = 620; ///< pixels at most

/// Shows what is of the text in a page for browsers, its pictures as wide as fits beside the work.
class Browser final : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& name) override
    {
        const QUrl url = source().resolved(name);
        if (type == QTextDocument::HtmlResource)
            return text(url.toLocalFile());
        if (type == QTextDocument::ImageResource)
            return picture(url.toLocalFile());
        return {};
    }

private:
    static QString text(const QString& file)
    {
        QFile page(file);
        if (!page.open(QIODevice::ReadOnly))
            return {};
        QString html = QString::fromUtf8(page.readAll());
        html = html.section("<main>", 1).section("</main>", 0, 0);
        html.replace("<pre>", "<pre style=\"white-space: pre-wrap\">");
        static const QRegularExpression kSize("width=\"(\\d+)\" height=\"(\\d+)\"");
        qsizetype from = 0;
        for (auto size = kSize.match(html); size.hasMatch(); size = kSize.match(html, from)) {
            QSize shown(size.captured(1).toInt(), size.captured(2).toInt());
            if (shown.width() > kPictureWidth)
                shown.scale(kPictureWidth, shown.height(), Qt::KeepAspectRatio);
            const QString now =
                QString("width=\"%1\" height=\"%2\"").arg(shown.width()).arg(shown.height());
            html.replace(size.capturedStart(), size.capturedLength(), now);
            from = size.capturedStart() + now.size();
        }
        return html;
    }

    QImage picture(const QString& file) const
    {
        const QImage image(file);
        const int width = qRound(kPictureWidth * devicePixelRatioF());
        return image.width() > width ? image.scaledToWidth(width, Qt::SmoothTransformation) : image;
    }
};

/// Of a heading.
QString nameOf(const QTextBlock& block)
{
    for (auto part = block.begin(); !part.atEnd(); ++part)
        if (const QStringList names = part.fragment().charFormat().anchorNames(); !names.isEmpty())
            return names.constLast();
    return {};
}

} // namespace

QString helpFile(const Session& session, const QString& english, const QString& german)
{
    const QDir folder(QString::fromStdString(session.programFolder().string()));
    const bool inGerman = session.state().gLanguageId == Language::German &&
                          QFileInfo::exists(folder.filePath(german));
    return folder.filePath(inGerman ? german : english);
}

QString HelpDialog::page(const Session& session)
{
    const QString file = helpFile(session, "ORVA-help/en.html", "ORVA-help/de.html");
    return QFileInfo::exists(file) ? file : QString();
}

HelpDialog::HelpDialog(Session& session, QWidget* window) : QDialog(window), m_session(session)
{
    setObjectName("dlgHelp");
    setAttribute(Qt::WA_DeleteOnClose);
    cmdHelpBack = named<QPushButton>("cmdHelpBack", this);
    cmdHelpForward = named<QPushButton>("cmdHelpForward", this);
    cmdCloseHelp = named<QPushButton>("cmdCloseHelp", this);
    auto* splitter = named<QSplitter>("splHelp", this);
    treHelp = named<QTreeWidget>("treHelp", splitter);
    treHelp->setHeaderHidden(true);
    txtHelp = named<Browser>("txtHelp", splitter);
    splitter->addWidget(treHelp);
    splitter->addWidget(txtHelp);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({fontMetrics().averageCharWidth() * 34, kPictureWidth + 60});
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdHelpBack);
    buttons->addWidget(cmdHelpForward);
    buttons->addStretch();
    buttons->addWidget(cmdCloseHelp);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
    layout->addLayout(buttons);
    for (QPushButton* button : {cmdHelpBack, cmdHelpForward, cmdCloseHelp})
        button->setAutoDefault(false);
    connect(cmdHelpBack, &QPushButton::clicked, txtHelp, &QTextBrowser::backward);
    connect(cmdHelpForward, &QPushButton::clicked, txtHelp, &QTextBrowser::forward);
    connect(cmdCloseHelp, &QPushButton::clicked, this, &QDialog::reject);
    connect(txtHelp, &QTextBrowser::backwardAvailable, cmdHelpBack, &QWidget::setEnabled);
    connect(txtHelp, &QTextBrowser::forwardAvailable, cmdHelpForward, &QWidget::setEnabled);
    for (QPushButton* button : {cmdHelpBack, cmdHelpForward})
        button->setEnabled(false);
    connect(treHelp, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem* item) { showSection(item->data(0, Qt::UserRole).toString()); });
    connect(treHelp, &QTreeWidget::itemActivated, this,
            [this](QTreeWidgetItem* item) { showSection(item->data(0, Qt::UserRole).toString()); });
    connect(&session, &Session::LanguageChanged, this, &HelpDialog::showTexts);
    showTexts();
    resize(fontMetrics().averageCharWidth() * 40 + kPictureWidth + 90, fontMetrics().height() * 40);
}

bool HelpDialog::showSection(const QString& name)
{
    QUrl url = txtHelp->source();
    url.setFragment(name);
    if (url != txtHelp->source())
        txtHelp->setSource(url);
    else
        txtHelp->scrollToAnchor(name);
    for (QTreeWidgetItemIterator it(treHelp); *it; ++it)
        if ((*it)->data(0, Qt::UserRole) == name) {
            treHelp->setCurrentItem(*it);
            return true;
        }
    return false;
}

void HelpDialog::showTexts()
{
    setWindowTitle("ORVA: " + m_session.text(Text::MenuCallHelp));
    cmdHelpBack->setText(m_session.text(Text::HelpBack));
    cmdHelpForward->setText(m_session.text(Text::HelpForward));
    cmdCloseHelp->setText(m_session.text(Text::CloseDialog));
    treHelp->setAccessibleName(m_session.text(Text::HelpContents));
    txtHelp->setAccessibleName(m_session.text(Text::HelpText));
    const QString section = txtHelp->source().fragment();
    txtHelp->setSource(QUrl::fromLocalFile(page(m_session)));
    txtHelp->clearHistory();
    listContents();
    if (!section.isEmpty())
        showSection(section);
}

void HelpDialog::listContents()
{
    treHelp->clear();
    QTreeWidgetItem* chapter = nullptr;
    const QTextDocument& text = *txtHelp->document();
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level != 1 && (level != 2 || !chapter))
            continue;
        auto* item = new QTreeWidgetItem(QStringList{block.text()});
        item->setData(0, Qt::UserRole, nameOf(block));
        item->setToolTip(0, block.text());
        if (level == 1) {
            treHelp->addTopLevelItem(item);
            chapter = item;
        } else {
            chapter->addChild(item);
        }
    }
}

} // namespace orva::ui
