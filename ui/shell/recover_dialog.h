#pragma once

#include "app/files/recovery.h"
#include "widgets/session.h"

#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace orva::ui {

/// Offers what processes that are gone have left behind. Closing it leaves everything for later.
class RecoverDialog final : public QDialog {
    Q_OBJECT
public:
    RecoverDialog(Session& session, std::vector<LeftBehind>& left, QWidget* parent);

    /// The one to recover; none for later, or when nothing is left.
    std::optional<LeftBehind> chosen();

private:
    void showTexts();
    void showList();
    void discard();
    LeftBehind* current();
    QString entry(const LeftBehind& left) const;

    Session& m_session;
    std::vector<LeftBehind>& m_left;
    QLabel* m_explanation;
    QListWidget* lstRecover;
    QPushButton* cmdRecover;
    QPushButton* cmdRecoverLater;
    QPushButton* cmdDiscard;
};

} // namespace orva::ui
