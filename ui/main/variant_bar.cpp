#include "main/variant_bar.h"

#include "document/variants_edit.h"

#include <QBoxLayout>
#include <QEvent>
#include <QInputDialog>
#include <QLineEdit>

namespace orva::ui {

namespace {

constexpr int kVariants = static_cast<int>(Variants::kMost);

QString letter(int variant)
{
    return QString(QChar(Variants::letterOf(static_cast<std::size_t>(variant))));
}

} // namespace

VariantBar::VariantBar(Editor& editor, QWidget* parent) : Page(editor, parent)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(1);
    for (int i = 0; i < kVariants; ++i) {
        cmdVariant[i] = named<QToolButton>(elementName("cmdVariant", i), this);
        cmdVariant[i]->setCheckable(true);
        cmdVariant[i]->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        cmdVariant[i]->installEventFilter(this);
        connect(cmdVariant[i], &QToolButton::clicked, this, [this, i] { choose(i); });
        layout->addWidget(cmdVariant[i], 1);
    }
    layout->addSpacing(4);
    for (int i = 0; i < kVariants; ++i) {
        cmdKeep[i] = named<QToolButton>(elementName("cmdKeep", i), this);
        connect(cmdKeep[i], &QToolButton::clicked, this,
                [this, i] { m_editor.keepAs(static_cast<std::size_t>(i)); });
        layout->addWidget(cmdKeep[i]);
    }
    layout->addSpacing(4);
    cmbCompare = named<ListBox>("cmbCompare", this);
    cmbCompare->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbCompare->setMinimumContentsLength(9);
    connect(cmbCompare, &QComboBox::activated, this, &VariantBar::compare);
    connect(&editor, &Editor::comparedChanged, this, &VariantBar::displayCompared);
    layout->addWidget(cmbCompare, 1);
    display();
}

void VariantBar::choose(int variant)
{
    m_editor.chooseVariant(static_cast<std::size_t>(variant));
    display(); // a click has checked it, whatever came of it
}

void VariantBar::display()
{
    const Variants& variants = m_editor.document().state().project.variants;
    const bool free = !m_editor.view().locked;
    for (int i = 0; i < kVariants; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const bool current = at == variants.current;
        const QString title = qtText(variantTitle(variants, at));
        constexpr int kWidest = 56;
        cmdVariant[i]->setText(
            cmdVariant[i]->fontMetrics().elidedText(title, Qt::ElideRight, kWidest));
        cmdVariant[i]->setChecked(current);
        cmdVariant[i]->setEnabled(current || (free && variants.kept[at]));
        cmdKeep[i]->setText("→" + letter(i));
        cmdKeep[i]->setVisible(!current);
        cmdKeep[i]->setEnabled(free);
        cmdKeep[i]->setAccessibleName(m_editor.session().text(Text::KeepAs).arg(letter(i)));
        cmdKeep[i]->setToolTip(m_editor.session().text(Text::KeepAs).arg(letter(i)) + ". " +
                               m_editor.session().text(Text::TipCmdKeep));
        cmdVariant[i]->setAccessibleName(m_editor.session().text(Text::NameCmdVariant).arg(title));
        cmdVariant[i]->setToolTip(m_editor.session().text(Text::TipCmdVariant));
    }
    displayCompared();
}

/// Nothing, each variant that is kept, and the other project that was chosen.
void VariantBar::displayCompared()
{
    const Variants& variants = m_editor.document().state().project.variants;
    const auto& compared = m_editor.view().compared;
    cmbCompare->clear();
    cmbCompare->addItem(m_editor.session().text(Text::CompareNone), -1);
    const auto less = [this](const std::string& title) {
        return m_editor.session().text(Text::CompareWith).arg(qtText(title));
    };
    for (int i = 0; i < kVariants; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (!variants.kept[at])
            continue;
        cmbCompare->addItem(less(variantTitle(variants, at)), i);
        if (compared && compared->variant == at)
            cmbCompare->setCurrentIndex(cmbCompare->count() - 1);
    }
    if (compared && !compared->variant) {
        cmbCompare->addItem(less(compared->title), kVariants);
        cmbCompare->setCurrentIndex(cmbCompare->count() - 1);
    }
    cmbCompare->setEnabled(cmbCompare->count() > 1);
}

void VariantBar::compare(int index)
{
    const int chosen = cmbCompare->itemData(index).toInt();
    if (chosen < 0)
        m_editor.compareWith({});
    else if (chosen < kVariants)
        m_editor.compareWith(ViewState::Compared{static_cast<std::size_t>(chosen)});
}

bool VariantBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::MouseButtonDblClick || m_editor.view().locked)
        return false;
    for (int i = 0; i < kVariants; ++i)
        if (watched == cmdVariant[i] && cmdVariant[i]->isEnabled()) {
            askName(i);
            return true;
        }
    return false;
}

void VariantBar::askName(int variant)
{
    const auto at = static_cast<std::size_t>(variant);
    const Session& session = m_editor.session();
    bool taken = false;
    const QString name = QInputDialog::getText(
        window(), session.text(Text::StepVariantName),
        session.text(Text::VariantNameTitle).arg(letter(variant)), QLineEdit::Normal,
        qtText(m_editor.document().state().project.variants.names[at]), &taken);
    if (taken)
        m_editor.nameVariant(at, name.trimmed().toStdString());
}

} // namespace orva::ui
