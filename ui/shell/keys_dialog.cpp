#include "shell/keys_dialog.h"

#include "widgets/controls.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace orva::ui {

KeysDialog::KeysDialog(const Session& session, QWidget& window) : QDialog(&window)
{
    setObjectName("frmKeys");
    setWindowTitle(session.text(Text::KeysTitle));
    auto* table = named<QTableWidget>("tblKeys", this);
    table->setColumnCount(2);
    table->setHorizontalHeaderLabels(
        {session.text(Text::KeyColumn), session.text(Text::CommandColumn)});
    table->setAccessibleName(session.text(Text::KeysTitle));
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->verticalHeader()->hide();
    const auto plain = [](QString text) { // "&&" is an ampersand, "&" marks a letter
        return text.replace("&&", QChar(0)).remove('&').replace(QChar(0), '&').trimmed();
    };
    for (const QAction* action : window.findChildren<QAction*>()) {
        if (action->shortcut().isEmpty() || !action->isVisible())
            continue;
        const int row = table->rowCount();
        table->insertRow(row);
        table->setItem(row, 0,
                       new QTableWidgetItem(QKeySequence::listToString(action->shortcuts(),
                                                                       QKeySequence::NativeText)));
        table->setItem(row, 1, new QTableWidgetItem(plain(action->text())));
    }
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    auto* more = named<QLabel>("lblKeys", this);
    more->setText(session.text(Text::KeyMenus));
    more->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    buttons->button(QDialogButtonBox::Ok)->setText(session.text(Text::OptionsOk));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(table);
    layout->addWidget(more);
    layout->addWidget(buttons);
    resize(fontMetrics().averageCharWidth() * 70, fontMetrics().height() * 32);
}

} // namespace orva::ui
