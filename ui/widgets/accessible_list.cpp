#include "widgets/accessible_list.h"

#include "widgets/controls.h"

#include <QAccessibleWidget>

namespace orva::ui {

namespace {

class AccessibleList final : public QAccessibleWidget {
public:
    explicit AccessibleList(ListBox& box)
        : QAccessibleWidget(&box, QAccessible::ComboBox), m_box(box)
    {
    }

    QString text(QAccessible::Text what) const override
    {
        return what == QAccessible::Value ? m_box.currentText() : QAccessibleWidget::text(what);
    }
    QStringList actionNames() const override { return {showMenuAction()}; }
    void doAction(const QString& action) override
    {
        if (action == showMenuAction())
            m_box.showPopup();
    }

private:
    ListBox& m_box;
};

QAccessibleInterface* accessibleList(const QString&, QObject* object)
{
    auto* box = qobject_cast<ListBox*>(object);
    return box ? new AccessibleList(*box) : nullptr;
}

} // namespace

void nameAccessibleLists()
{
    QAccessible::installFactory(accessibleList);
}

} // namespace orva::ui
