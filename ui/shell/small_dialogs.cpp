#include "shell/small_dialogs.h"

#include "lang/decimal_text.h"
#include "model/systems.h"
#include "shell/pictures.h"
#include "widgets/controls.h"
#include "widgets/outside_program.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QLocale>
#include <QProcess>
#include <QStandardPaths>

namespace orva::ui {

namespace {

constexpr std::string_view kLanguageSection = "MultiLang";

/// What the language calls itself.
QString GetLocaleLanguageName(Language language)
{
    return language == Language::German
               ? QLocale(QLocale::German).nativeLanguageName()
               : QLocale(QLocale::English, QLocale::World).nativeLanguageName();
}

/// Programs that show what the machine is made of, with their arguments.
const QList<QStringList> kSystemInformation = {{"kinfocenter"},
                                               {"hardinfo2"},
                                               {"hardinfo"},
                                               {"gnome-control-center", "info-overview"},
                                               {"gnome-control-center", "system"},
                                               {"gnome-system-monitor"},
                                               {"mate-system-monitor"}};

QVBoxLayout* centred(QDialog* dialog)
{
    auto* layout = new QVBoxLayout(dialog);
    layout->setContentsMargins(24, 24, 24, 24);
    layout->setSpacing(12);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    return layout;
}

} // namespace

AboutDialog::AboutDialog(Session& session, QWidget* parent) : QDialog(parent), m_session(session)
{
    setObjectName("frmAbout");
    auto* layout = centred(this);
    auto* top = new QHBoxLayout;
    layout->addLayout(top);
    top->setSpacing(24);
    top->addWidget(picture("Image2", "icon.svg", this), 0, Qt::AlignTop);
    auto* texts = new QVBoxLayout;
    top->addLayout(texts);
    const auto label = [&](const char* name) {
        auto* made = named<QLabel>(name, this);
        made->setTextInteractionFlags(Qt::TextSelectableByMouse);
        texts->addWidget(made);
        return made;
    };
    lblTitle = label("lblTitle");
    QFont font = lblTitle->font();
    font.setBold(true);
    lblTitle->setFont(font);
    lblVersion = label("lblVersion");
    lblDescription = label("lblDescription");
    texts->addWidget(lineDivider(this));
    lblDisclaimer = label("lblDisclaimer");

    auto* bottom = new QHBoxLayout;
    layout->addLayout(bottom);
    bottom->addWidget(logoPicture(this));
    bottom->addStretch();
    cmdLogFolder = named<QPushButton>("cmdLogFolder", this);
    cmdLogFolder->setAutoDefault(false);
    cmdLogFolder->setVisible(!session.folders().logFile.empty());
    connect(cmdLogFolder, &QPushButton::clicked, this, [this] {
        openOutside(m_session,
                    QString::fromStdString(m_session.folders().logFile.parent_path().string()),
                    this);
    });
    cmdSysInfo = named<QPushButton>("cmdSysInfo", this);
    cmdOK = named<QPushButton>("cmdOK", this);
    cmdSysInfo->setAutoDefault(false); // Enter is OK, wherever the focus is
    cmdOK->setDefault(true);
    cmdOK->setFocus();
    bottom->addWidget(cmdLogFolder);
    bottom->addWidget(cmdSysInfo);
    bottom->addWidget(cmdOK);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdSysInfo, &QPushButton::clicked, this, &AboutDialog::StartSysInfo);
    connect(&session, &Session::LanguageChanged, this, &AboutDialog::showTexts);
    showTexts();
}

void AboutDialog::showTexts()
{
    setWindowTitle(m_session.text(Text::AboutCaption) + kProgramTitle);
    lblTitle->setText(QString(kProgramTitle) + "\r\n" + m_session.text(Text::AboutProgram));
    lblVersion->setText(m_session.text(Text::AboutVersion) + ORVA_VERSION);
    lblDescription->setText(m_session.text(Text::AboutDescription));
    lblDisclaimer->setText(m_session.text(Text::AboutCredit));
    cmdOK->setText(m_session.text(Text::Ok));
    cmdLogFolder->setText(m_session.text(Text::OpenLogFolder));
    cmdSysInfo->setText(m_session.text(Text::SystemInfo));
}

void AboutDialog::StartSysInfo()
{
    for (const QStringList& command : kSystemInformation) {
        const QString program = QStandardPaths::findExecutable(command.front());
        if (!program.isEmpty() && QProcess::startDetached(program, command.mid(1)))
            return;
    }
    showMessage(this, m_session.text(Text::NoSystemInformation));
}

SystemDialog::SystemDialog(Session& session, QWidget* parent) : QDialog(parent), m_session(session)
{
    setObjectName("frmNewCorS");
    auto* layout = centred(this);
    auto* fraSel = named<QGroupBox>("fraSel", this);
    auto* choices = new QVBoxLayout(fraSel);
    for (std::size_t i = 0; i < allSystems().size(); ++i) {
        optSystem.push_back(
            named<QRadioButton>(elementName("optSystem", static_cast<int>(i)), fraSel));
        choices->addWidget(optSystem.back());
    }
    chkShowOnStartup = named<QCheckBox>("chkShowOnStartup", this);
    OKButton = named<QPushButton>("OKButton", this);
    OKButton->setDefault(true);
    layout->addWidget(fraSel);
    layout->addWidget(lineDivider(this));
    layout->addWidget(chkShowOnStartup);
    layout->addWidget(OKButton, 0, Qt::AlignRight);

    const Settings& settings = session.state().settings;
    optSystem.at(static_cast<std::size_t>(settings.newSystem))->setChecked(true);
    chkShowOnStartup->setChecked(settings.ShowNewQuery);
    connect(OKButton, &QPushButton::clicked, this, [this] {
        for (std::size_t i = 0; i < optSystem.size(); ++i)
            if (optSystem[i]->isChecked())
                m_session.state().settings.newSystem = static_cast<std::int16_t>(i);
        m_session.state().settings.ShowNewQuery = chkShowOnStartup->isChecked();
        accept();
    });
    connect(&session, &Session::LanguageChanged, this, &SystemDialog::showTexts);
    showTexts();
}

void SystemDialog::showTexts()
{
    setWindowTitle(m_session.text(Text::SelectSystem));
    for (std::size_t i = 0; i < optSystem.size(); ++i)
        optSystem[i]->setText(m_session.text(allSystems()[i]->title));
    chkShowOnStartup->setText(m_session.text(Text::ShowAtStart));
    OKButton->setText(m_session.text(Text::Ok));
}

void LanguageDialog::applyStored(Session& session)
{
    const std::string stored = session.store().value(kLanguageSection, "LangId").value_or("");
    session.ChangeLanguage(static_cast<std::int32_t>(storedLanguage(stored)));
}

void LanguageDialog::ShowDialog(Session& session, bool startup, QWidget* parent)
{
    SettingsStore& store = session.store();
    if (startup)
        applyStored(session);
    const bool asked = store.value(kLanguageSection, "ShowDialog") != "False";
    if (startup && !asked)
        return;
    LanguageDialog dialog(session, asked, parent);
    dialog.exec();
    const auto id = static_cast<std::int32_t>(session.state().gLanguageId);
    store.setValue(kLanguageSection, "LangId", std::to_string(id));
    store.setValue(kLanguageSection, "LangName", MlLanguageName(id));
    // An answer counts only when the dialog was left with OK.
    const bool show =
        dialog.result() == QDialog::Accepted ? dialog.chkShowOnStartup->isChecked() : asked;
    store.setValue(kLanguageSection, "ShowDialog", show ? "True" : "False");
    (void)store.flush(); // told at the end of the program
}

LanguageDialog::LanguageDialog(Session& session, bool showOnStartup, QWidget* parent)
    : QDialog(parent), m_session(session)
{
    setObjectName("LanguageSelect");
    auto* layout = centred(this);
    LanguageList = named<QListWidget>("LanguageList", this);
    LanguageList->setFixedHeight(96);
    for (const Language language : MlSupportedLanguages()) {
        auto* entry = new QListWidgetItem(GetLocaleLanguageName(language), LanguageList);
        entry->setData(Qt::UserRole, static_cast<int>(language));
        if (language == session.state().gLanguageId)
            LanguageList->setCurrentItem(entry);
    }
    chkShowOnStartup = named<QCheckBox>("chkShowOnStartup", this);
    chkShowOnStartup->setChecked(showOnStartup);
    OKButton = named<QPushButton>("OKButton", this);
    OKButton->setDefault(true);
    layout->addWidget(LanguageList);
    layout->addWidget(chkShowOnStartup);
    layout->addWidget(OKButton, 0, Qt::AlignRight);
    connect(OKButton, &QPushButton::clicked, this, &LanguageDialog::choose);
    connect(LanguageList, &QListWidget::itemDoubleClicked, this, &LanguageDialog::choose);
    connect(&session, &Session::LanguageChanged, this, &LanguageDialog::showTexts);
    showTexts();
}

void LanguageDialog::showTexts()
{
    setWindowTitle(m_session.text(Text::SelectLanguage));
    LanguageList->setAccessibleName(m_session.text(Text::SelectLanguage));
    chkShowOnStartup->setText(m_session.text(Text::ShowAtStart));
    OKButton->setText(m_session.text(Text::Ok));
}

void LanguageDialog::choose()
{
    const QList<QListWidgetItem*> chosen = LanguageList->selectedItems();
    if (chosen.isEmpty())
        return;
    m_session.ChangeLanguage(chosen.front()->data(Qt::UserRole).toInt());
    accept();
}

} // namespace orva::ui
