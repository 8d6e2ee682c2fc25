#pragma once

#include "widgets/session.h"

#include <QDialog>
#include <QPushButton>
#include <QTextBrowser>
#include <QTreeWidget>

namespace orva::ui {

/// A file of the manual in the current language, "ORVA-help-de.pdf"; where that is not there, the
/// English one.
QString helpFile(const Session& session, const QString& english, const QString& german);

/// The manual beside the work: contents, text, back and forward. Follows the language.
class HelpDialog final : public QDialog {
    Q_OBJECT
public:
    /// The page that is shown; empty when it is not there.
    static QString page(const Session& session);

    HelpDialog(Session& session, QWidget* window);

    /// The section with that name, "setup". False: there is none.
    bool showSection(const QString& name);

private:
    void showTexts();
    void listContents();

    Session& m_session;
    QTreeWidget* treHelp;
    QTextBrowser* txtHelp;
    QPushButton* cmdHelpBack;
    QPushButton* cmdHelpForward;
    QPushButton* cmdCloseHelp;
};

} // namespace orva::ui
