#pragma once

#include "widgets/session.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <vector>

namespace orva::ui {

/// About, with the way to the desktop's system information.
class AboutDialog final : public QDialog {
    Q_OBJECT
public:
    AboutDialog(Session& session, QWidget* parent);

private:
    void showTexts();
    void StartSysInfo();

    Session& m_session;
    QLabel* lblTitle;
    QLabel* lblVersion;
    QLabel* lblDescription;
    QLabel* lblDisclaimer;
    QPushButton* cmdOK;
    QPushButton* cmdLogFolder;
    QPushButton* cmdSysInfo;
};

/// Chooses the system of a new project.
class SystemDialog final : public QDialog {
    Q_OBJECT
public:
    SystemDialog(Session& session, QWidget* parent);

private:
    void showTexts();

    Session& m_session;
    std::vector<QRadioButton*> optSystem; ///< in the order of the systems
    QCheckBox* chkShowOnStartup;
    QPushButton* OKButton;
};

/// Chooses the language.
class LanguageDialog final : public QDialog {
    Q_OBJECT
public:
    /// At start the stored language is applied, and the dialog is shown only where the user wants
    /// that; otherwise it is always shown.
    static void applyStored(Session& session);
    static void ShowDialog(Session& session, bool startup, QWidget* parent);

private:
    LanguageDialog(Session& session, bool showOnStartup, QWidget* parent);
    void showTexts();
    void choose();

    Session& m_session;
    QListWidget* LanguageList;
    QCheckBox* chkShowOnStartup;
    QPushButton* OKButton;
};

} // namespace orva::ui
