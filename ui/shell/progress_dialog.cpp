#include "shell/progress_dialog.h"

#include "widgets/controls.h"

#include <QGridLayout>

namespace orva::ui {

ProgressDialog::ProgressDialog(Session& session, QWidget* mainWindow)
    : QDialog(mainWindow), m_session(session)
{
    setObjectName("frmCalculating");
    setModal(true);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(24, 24, 24, 24);
    Label1 = named<QLabel>("Label1", this);
    Label2 = named<QLabel>("Label2", this);
    lblPercent = named<QLabel>("lblPercent", this);
    lblTimeLeft = named<QLabel>("lblTimeLeft", this);
    pbarPercent = named<QProgressBar>("pbarPercent", this);
    pbarPercent->setRange(0, 100);
    pbarPercent->setTextVisible(false);
    pbarPercent->setMinimumWidth(360);
    Abort_cmb = named<QPushButton>("Abort_cmb", this);
    connect(Abort_cmb, &QPushButton::clicked, this, &ProgressDialog::reject);
    layout->addWidget(Label1, 0, 0, 1, 3);
    layout->addWidget(pbarPercent, 1, 0, 1, 3);
    layout->addWidget(Label2, 2, 0);
    layout->addWidget(lblPercent, 2, 1);
    layout->addWidget(lblTimeLeft, 2, 2, Qt::AlignRight);
    layout->addWidget(Abort_cmb, 3, 2, Qt::AlignRight);
    layout->setColumnStretch(1, 1);
    connect(&session, &Session::LanguageChanged, this, &ProgressDialog::showTexts);
    showTexts();
    adjustSize();
    move(mainWindow->mapToGlobal(mainWindow->rect().center()) - rect().center());
}

void ProgressDialog::showTexts()
{
    setWindowTitle(m_session.text(Text::ProgressTitle).trimmed());
    Label1->setText(m_session.text(Text::Calculating));
    Label2->setText(m_session.text(Text::ProgressPercent));
    Abort_cmb->setText(m_session.text(Text::Abort));
    pbarPercent->setAccessibleName(m_session.text(Text::ProgressPercent));
}

void ProgressDialog::beginStage(const QString& caption, bool canAbort)
{
    Label1->setText(caption);
    Abort_cmb->setEnabled(canAbort);
    m_since.start();
    lblTimeLeft->clear();
    showPercent(0);
}

void ProgressDialog::beginWaiting(const QString& caption)
{
    beginStage(caption, true);
    pbarPercent->setRange(0, 0);
    Label2->hide();
    lblPercent->hide();
}

void ProgressDialog::showPercent(int percent)
{
    pbarPercent->setValue(percent);
    lblPercent->setText(QString::number(percent) + "%");
    constexpr qint64 kSettledMs = 300; // earlier estimates jump about
    if (percent <= 0 || m_since.elapsed() < kSettledMs)
        return;
    lblTimeLeft->setText(m_session.timeLeft(static_cast<double>(m_since.elapsed()) *
                                            (100 - percent) / percent / 1000));
}

} // namespace orva::ui
