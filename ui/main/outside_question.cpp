#include "main/outside_question.h"

#include <QPushButton>

namespace orva::ui {

OutsideAnswer askOutside(const Session& session, QWidget* window, const QString& file, bool removed,
                         bool loses)
{
    QMessageBox box(
        QMessageBox::Question, kProgramTitle,
        session.text(removed ? Text::RemovedOutside : Text::ChangedOutside).arg("\n" + file),
        QMessageBox::NoButton, window);
    box.setObjectName("dlgOutside");
    box.setTextFormat(Qt::PlainText);
    const auto button = [&](const char* name, Text text, QMessageBox::ButtonRole role) {
        QPushButton* made = box.addButton(session.text(text), role);
        made->setObjectName(name);
        return made;
    };
    const QPushButton* reload =
        removed ? nullptr : button("cmdReload", Text::OutsideReload, QMessageBox::DestructiveRole);
    if (reload && loses)
        box.setInformativeText(session.text(Text::ReloadLoses));
    QPushButton* keep = button("cmdKeepMine", Text::OutsideKeep, QMessageBox::AcceptRole);
    const QPushButton* saveAs =
        button("cmdOutsideSaveAs", Text::OutsideSaveAs, QMessageBox::ActionRole);
    QPushButton* later = button("cmdOutsideLater", Text::OutsideLater, QMessageBox::RejectRole);
    box.setEscapeButton(later);
    box.setDefaultButton(later);
    box.exec();
    if (reload && box.clickedButton() == reload)
        return OutsideAnswer::Reload;
    if (box.clickedButton() == keep)
        return OutsideAnswer::KeepMine;
    return box.clickedButton() == saveAs ? OutsideAnswer::SaveAs : OutsideAnswer::None;
}

} // namespace orva::ui
