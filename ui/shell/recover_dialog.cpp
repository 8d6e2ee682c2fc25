#include "shell/recover_dialog.h"

#include "widgets/controls.h"

#include <QBoxLayout>
#include <QDateTime>
#include <QLocale>

namespace orva::ui {

RecoverDialog::RecoverDialog(Session& session, std::vector<LeftBehind>& left, QWidget* parent)
    : QDialog(parent), m_session(session), m_left(left)
{
    setObjectName("dlgRecover");
    auto* layout = new QVBoxLayout(this);
    m_explanation = named<QLabel>("lblRecover", this);
    m_explanation->setWordWrap(true);
    lstRecover = named<QListWidget>("lstRecover", this);
    lstRecover->setMinimumWidth(560);
    m_explanation->setBuddy(lstRecover);
    auto* buttons = new QHBoxLayout;
    cmdDiscard = named<QPushButton>("cmdDiscard", this);
    cmdRecoverLater = named<QPushButton>("cmdRecoverLater", this);
    cmdRecover = named<QPushButton>("cmdRecover", this);
    cmdRecover->setDefault(true);
    buttons->addWidget(cmdDiscard);
    buttons->addStretch(1);
    buttons->addWidget(cmdRecoverLater);
    buttons->addWidget(cmdRecover);
    layout->addWidget(m_explanation);
    layout->addWidget(lstRecover);
    layout->addLayout(buttons);
    connect(cmdRecover, &QPushButton::clicked, this, &QDialog::accept);
    connect(lstRecover, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(cmdRecoverLater, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdDiscard, &QPushButton::clicked, this, &RecoverDialog::discard);
    connect(&session, &Session::LanguageChanged, this, &RecoverDialog::showTexts);
    showTexts();
}

void RecoverDialog::showTexts()
{
    setWindowTitle(m_session.text(Text::RecoverTitle));
    m_explanation->setText(m_session.text(Text::RecoverExplanation));
    lstRecover->setAccessibleName(m_session.text(Text::RecoverTitle));
    cmdRecover->setText(m_session.text(Text::Recover));
    cmdRecoverLater->setText(m_session.text(Text::RecoverLater));
    cmdDiscard->setText(m_session.text(Text::RecoverDiscard));
    showList();
}

QString RecoverDialog::entry(const LeftBehind& left) const
{
    const QLocale locale(m_session.state().gLanguageId == Language::German ? QLocale::German
                                                                           : QLocale::English);
    const auto written = std::chrono::system_clock::to_time_t(left.written);
    const QString when = locale.toString(QDateTime::fromSecsSinceEpoch(written), "d MMM yyyy h:mm");
    const QString project =
        QString::fromStdString(left.unsaved.state.project.room.GSGetProjectName()).trimmed();
    const QString what = left.unsaved.file.path.empty()
                             ? m_session.text(Text::RecoverNeverSaved)
                             : QString::fromStdString(left.unsaved.file.path);
    return when + "   " + (project.isEmpty() ? QString() : project + "   ") + what;
}

void RecoverDialog::showList()
{
    lstRecover->clear();
    for (const LeftBehind& left : m_left)
        lstRecover->addItem(entry(left));
    lstRecover->setCurrentRow(0);
}

/// The one that is selected; null where none is.
LeftBehind* RecoverDialog::current()
{
    const int row = lstRecover->currentRow();
    return row < 0 ? nullptr : &m_left.at(static_cast<std::size_t>(row));
}

void RecoverDialog::discard()
{
    LeftBehind* unwanted = current();
    if (!unwanted || Question(this, m_session.text(Text::RecoverDiscardSure).arg(entry(*unwanted)),
                              QMessageBox::Yes | QMessageBox::No)
                             .exec() != QMessageBox::Yes)
        return;
    removeLeftBehind(*unwanted);
    m_left.erase(m_left.begin() + lstRecover->currentRow());
    if (m_left.empty())
        reject();
    else
        showList();
}

std::optional<LeftBehind> RecoverDialog::chosen()
{
    if (exec() != Accepted || !current())
        return std::nullopt;
    return std::move(*current());
}

} // namespace orva::ui
