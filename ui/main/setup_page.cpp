#include "main/setup_page.h"

#include "lang/number_text.h"
#include "lang/string_table.h"
#include "lang/typed_number.h"
#include "widgets/controls.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <tuple>
#include <utility>

namespace orva::ui {

namespace {

QString oneDecimal(double degrees)
{
    return qtText(plainText(degrees, 1));
}

/// A box of red text on the ground of entries.
std::pair<QFrame*, QLabel*> warningBox(const char* boxName, const char* textName, QWidget* parent)
{
    auto* box = named<QFrame>(boxName, parent);
    box->setFrameShape(QFrame::Box);
    box->setAutoFillBackground(true);
    box->setBackgroundRole(QPalette::Base);
    auto* text = named<QLabel>(textName, box);
    text->setForegroundRole(QPalette::BrightText);
    text->setWordWrap(true);
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(text);
    return {box, text};
}

} // namespace

SetupPage::SetupPage(Editor& editor, QWidget* parent) : Page(editor, parent), m_entries(editor)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* column = new QWidget;
    auto* controls = new QVBoxLayout(column);
    controls->setContentsMargins(0, 0, 0, 0);
    controls->addWidget(countsFrame());
    controls->addWidget(mountingFrame());
    controls->addWidget(pointsFrame());
    std::tie(Warning_fra, Warning_lbl) = warningBox("Warning_fra", "Warning_lbl", this);
    std::tie(m_countsBox, m_countsText) = warningBox("Counts_fra", "Counts_lbl", this);
    controls->addWidget(Warning_fra);
    controls->addWidget(m_countsBox);
    controls->addStretch();
    layout->addWidget(new ColumnArea(column, this));
    m_column = new ArrayColumn(editor, this);
    layout->addWidget(m_column);

    connect(&editor, &Editor::projectReplaced, this, &SetupPage::showEndOfColumn);
    connect(&editor.session(), &Session::LanguageChanged, this, &SetupPage::showTexts);
    showTexts();
    display();
}

/// A stack is looked at from its bottom, a flown array from its top.
void SetupPage::showEndOfColumn()
{
    if (m_editor.setup().stacked)
        m_column->scrollToBottom();
    else
        m_column->scrollToTop();
}

void SetupPage::addCount(QComboBox* box, Text step, ChoiceList SetupForm::*list,
                         void (SetupForm::*choose)(int, bool))
{
    connect(box, &QComboBox::activated, this, [this, step, list, choose](int index) {
        const ChoiceList& counts = m_editor.setup().*list;
        if (index != counts.selected)
            m_editor.editSetup(
                {step, counts.items.at(static_cast<std::size_t>(index)).value},
                [&](SetupForm& setup) { (setup.*choose)(index, m_editor.autoCorrect()); });
    });
}

QWidget* SetupPage::countsFrame()
{
    auto* frame = named<QGroupBox>("fraCounts", this);
    auto* layout = new QGridLayout(frame);
    int row = 0;
    const auto line = [&](const char* labelName, const char* listName, QLabel*& label,
                          QComboBox*& box) {
        label = named<QLabel>(labelName, frame);
        box = named<ListBox>(listName, frame);
        label->setBuddy(box);
        layout->addWidget(label, row, 0);
        layout->addWidget(box, row++, 1);
    };
    line("lblNumSpk", "cmbNumSpk", lblNumSpk, cmbNumSpk);
    line("lblTotGer", "cmbNumGer", lblTotGer, cmbNumGer);
    line("lblTotSch", "cmbNumSch", lblTotSch, cmbNumSch);
    line("lblTotSub", "cmbNumBass", lblTotSub, cmbNumBass);
    layout->setColumnStretch(0, 1);
    addCount(cmbNumSpk, Text::StepMidHigh, &SetupForm::cmbNumSpk, &SetupForm::chooseNumSpk);
    addCount(cmbNumGer, Text::StepStraight, &SetupForm::cmbNumGer, &SetupForm::chooseNumGer);
    addCount(cmbNumSch, Text::StepTrapezoidal, &SetupForm::cmbNumSch, &SetupForm::chooseNumSch);
    addCount(cmbNumBass, Text::StepBass, &SetupForm::cmbNumBass, &SetupForm::chooseNumBass);
    return frame;
}

QWidget* SetupPage::mountingFrame()
{
    auto* frame = named<QGroupBox>("fraMounting", this);
    auto* layout = new QGridLayout(frame);
    Stacked_chk = named<QCheckBox>("Stacked_chk", frame);
    connect(Stacked_chk, &QCheckBox::clicked, this, [this](bool stacked) {
        m_editor.editSetup({Text::StepMounting},
                           [&](SetupForm& setup) { setup.stacked = stacked; });
        showEndOfColumn();
    });
    auto* group = new QButtonGroup(this);
    for (int i = 0; i < 2; ++i) {
        PinAngle_opt[i] = named<QRadioButton>(elementName("PinAngle_opt", i), frame);
        group->addButton(PinAngle_opt[i], i);
    }
    connect(group, &QButtonGroup::idClicked, this, [this](int id) {
        if (m_editor.setup().pinMode != (id == 0))
            m_editor.editSetup({Text::StepPinMode},
                               [&](SetupForm& setup) { setup.pinMode = id == 0; });
    });
    PinNumber_cmb = named<ListBox>("PinNumber_cmb", frame);
    connect(PinNumber_cmb, &QComboBox::activated, this, [this](int index) {
        if (index != m_editor.setup().PinNumber_cmb.selected)
            m_editor.choosePin(
                m_editor.setup().PinNumber_cmb.items[static_cast<std::size_t>(index)].value - 1);
    });
    Label10 = named<QLabel>("Label10", frame);
    PinAngle_lbl = named<QLabel>("PinAngle_lbl", frame);
    box1_lbl = named<QLabel>("box1_lbl", frame);
    box1Angle_txt = named<NumberEdit>("box1Angle_txt", frame);
    box1_lbl->setBuddy(box1Angle_txt);
    lblAngleMeas = named<QLabel>("lblAngleMeas", frame);
    m_entries.add(
        box1Angle_txt,
        [this](const QString& text, Gesture gesture) {
            const std::optional<double> angle = typedAngle(text.toStdString());
            if (angle)
                m_editor.editSetup(
                    {Text::StepFirstAngle},
                    [&](SetupForm& setup) { setup.box1Angle = SetupForm::validAngle(*angle); },
                    gesture);
            return angle.has_value();
        },
        [this] { return oneDecimal(m_editor.setup().box1Angle); });
    Label12 = named<QLabel>("Label12", frame);
    AnglePin_lbl = named<QLabel>("AnglePin_lbl", frame);
    Label11 = named<QLabel>("Label11", frame);
    RemAng_lbl = named<QLabel>("RemAng_lbl", frame);
    cmdAuto = named<QPushButton>("cmdAuto", frame);
    cmdAuto->setAutoDefault(false);
    connect(cmdAuto, &QPushButton::clicked, this, &SetupPage::autoAimAsked);

    layOutMounting(*layout);
    return frame;
}

void SetupPage::layOutMounting(QGridLayout& layout)
{
    setTabOrder(PinAngle_opt[0], PinNumber_cmb);
    setTabOrder(PinNumber_cmb, PinAngle_opt[1]);
    setTabOrder(PinAngle_opt[1], cmdAuto);
    setTabOrder(cmdAuto, box1Angle_txt);
    layout.addWidget(Stacked_chk, 0, 0, 1, 4);
    layout.addWidget(PinAngle_opt[0], 1, 0);
    layout.addWidget(PinNumber_cmb, 1, 1);
    layout.addWidget(Label10, 1, 2);
    layout.addWidget(PinAngle_lbl, 1, 3);
    layout.addWidget(PinAngle_opt[1], 2, 0);
    layout.addWidget(cmdAuto, 2, 2, 1, 2);
    layout.addWidget(box1_lbl, 3, 0);
    layout.addWidget(box1Angle_txt, 3, 1);
    layout.addWidget(lblAngleMeas, 3, 2);
    layout.addWidget(Label12, 4, 0);
    layout.addWidget(AnglePin_lbl, 4, 1);
    layout.addWidget(Label11, 4, 2);
    layout.addWidget(RemAng_lbl, 4, 3);
    layout.setColumnStretch(0, 1);
}

void SetupPage::addPoint(QLineEdit* edit, Text step, std::size_t element,
                         FloatPair (LineArray::*get)() const, bool (LineArray::*set)(FloatPair))
{
    m_entries.addLength(
        edit,
        [this, step, element, get, set](double metres, Gesture gesture) {
            return m_editor.editArray(
                {step},
                [&](LineArray& array) {
                    FloatPair point = (array.*get)();
                    point[element] = static_cast<float>(metres);
                    return (array.*set)(point);
                },
                gesture);
        },
        [this, element, get] { return static_cast<double>((m_editor.array().*get)()[element]); });
}

QWidget* SetupPage::pointsFrame()
{
    auto* frame = named<QGroupBox>("fraPoints", this);
    auto* layout = new QGridLayout(frame);
    const auto entry = [&](const char* name, int index, int row, int column, QLabel* axis) {
        QLineEdit* edit = named<NumberEdit>(elementName(name, index), frame);
        axis->setBuddy(edit);
        auto* unit = new QLabel(frame);
        m_units.push_back(unit);
        layout->addWidget(axis, row, column);
        layout->addWidget(edit, row, column + 1);
        layout->addWidget(unit, row, column + 2);
        return edit;
    };
    Label18 = named<QLabel>("Label18", frame);
    layout->addWidget(Label18, 0, 0, 1, 6);
    cmdHang = named<QPushButton>("cmdHang", frame);
    cmdHang->setCheckable(true);
    connect(cmdHang, &QPushButton::clicked, &m_editor, &Editor::setHanging);
    connect(&m_editor, &Editor::hangingChanged, this,
            [this] { cmdHang->setChecked(m_editor.view().hanging); });
    layout->addWidget(cmdHang, 2, 0, 1, 6);
    Label15 = named<QLabel>("Label15", frame);
    layout->addWidget(Label15, 3, 0, 1, 6);
    bassX_lbl = named<QLabel>("bassX_lbl", frame);
    bassY_lbl = named<QLabel>("bassY_lbl", frame);
    QLabel* const bassAxes[] = {bassX_lbl, bassY_lbl};
    auto* group = new QButtonGroup(this);
    auto* yesNo = new QHBoxLayout;
    for (int i = 0; i < 2; ++i) {
        m_cradleAxes[i] = new QLabel(frame);
        Cradle_txt[i] = entry("Cradle_txt", i, 1, 3 * i, m_cradleAxes[i]);
        addPoint(Cradle_txt[i], Text::StepCradle, static_cast<std::size_t>(i),
                 &LineArray::GFAGetCradleCoord, &LineArray::GBSetCradleCoord);
    }
    for (int i = 0; i < 2; ++i) {
        optBassYesNo[i] = named<QRadioButton>(elementName("optBassYesNo", i), frame);
        group->addButton(optBassYesNo[i], i);
        yesNo->addWidget(optBassYesNo[i]);
    }
    yesNo->addStretch();
    layout->addLayout(yesNo, 4, 0, 1, 6);
    for (int i = 0; i < 2; ++i) {
        BassBox_txt[i] = entry("BassBox_txt", i, 5, 3 * i, bassAxes[i]);
        addPoint(BassBox_txt[i], Text::StepBassBox, static_cast<std::size_t>(i),
                 &LineArray::GFAGetBassBoxCoord, &LineArray::GBSetBassBoxCoord);
    }
    connect(group, &QButtonGroup::idClicked, this, [this](int id) {
        if (m_editor.array().GBGetBassBox() != (id == 0))
            m_editor.editArray({Text::StepBassBox},
                               [&](LineArray& array) { return array.GBSetBassBox(id == 0); });
    });
    ShowDelay_chk = named<QCheckBox>("ShowDelay_chk", frame);
    connect(ShowDelay_chk, &QCheckBox::clicked, &m_editor, &Editor::setShowDelay);
    layout->addWidget(ShowDelay_chk, 6, 0, 1, 6);
    Lock_chk = named<QCheckBox>("Lock_chk", frame);
    connect(Lock_chk, &QCheckBox::clicked, &m_editor, &Editor::setLocked);
    layout->addWidget(lineDivider(frame), 7, 0, 1, 6);
    layout->addWidget(Lock_chk, 8, 0, 1, 6);
    return frame;
}

void SetupPage::showTexts()
{
    const auto text = [this](Text id) { return m_editor.session().text(id); };
    m_countsText->setText(text(Text::CountsDiffer));
    Stacked_chk->setText(text(Text::GroundStacked));
    PinAngle_opt[0]->setText(text(Text::PinPoint));
    PinAngle_opt[1]->setText(text(Text::AngleLabel));
    Label10->setText(text(Text::AngleLabel));
    box1_lbl->setText(text(Text::FirstBox));
    lblAngleMeas->setText(text(Text::Degrees));
    lblAngleMeas->setToolTip(text(Text::AngleUnitHint));
    Label12->setText(text(Text::PinLabel));
    Label11->setText(text(Text::Remainder));
    cmdAuto->setText(text(Text::Auto));
    Label18->setText(text(Text::CradlePickPoint).simplified());
    cmdHang->setText(text(Text::HangLabel));
    for (int i = 0; i < 2; ++i)
        m_cradleAxes[i]->setText(text(i == 0 ? Text::XLabel : Text::YLabel));
    Label15->setText(text(Text::IncludeBassBox));
    optBassYesNo[0]->setText(text(Text::Yes));
    optBassYesNo[1]->setText(text(Text::No));
    bassX_lbl->setText(text(Text::XLabel));
    bassY_lbl->setText(text(Text::YLabel));
    ShowDelay_chk->setText(text(Text::ShowAlignmentDelay));
    Lock_chk->setText(text(Text::LockSetup));
    display();
}

void SetupPage::display()
{
    displayCounts();
    displayMounting();
    displayPoints();
    m_column->display();
    m_entries.display();
    const QStringList warnings = m_editor.warnings();
    Warning_lbl->setText(warnings.join("\n"));
    Warning_fra->setVisible(!warnings.empty());
    m_countsBox->setVisible(!m_editor.setup().SetupInvalid.any() &&
                            m_editor.setup().countsDiffer());
}

void SetupPage::displayCounts()
{
    const SetupForm& setup = m_editor.setup();
    const Session& session = m_editor.session();
    const SystemRecord& system = m_editor.array().system();
    const auto label = [&](Text own, BoxKind kind) {
        return own == Text::None ? qtText(setup.modelName(kind)) : session.text(own);
    };
    lblNumSpk->setText(label(system.midHighLabel, BoxKind::Straight));
    lblTotSub->setText(label(system.bassLabel, BoxKind::Bass));
    lblTotGer->setText(session.text(Text::StraightCount));
    lblTotSch->setText(session.text(Text::TrapezoidalCount));
    for (QWidget* control : {static_cast<QWidget*>(lblTotGer), static_cast<QWidget*>(lblTotSch),
                             static_cast<QWidget*>(cmbNumGer), static_cast<QWidget*>(cmbNumSch)})
        control->setVisible(setup.countsKinds());
    showList(*cmbNumSpk, setup.cmbNumSpk, session.text(Text::InvalidCount));
    showList(*cmbNumGer, setup.cmbNumGer, session.text(Text::InvalidCount));
    showList(*cmbNumSch, setup.cmbNumSch, session.text(Text::InvalidCount));
    showList(*cmbNumBass, setup.cmbNumBass, session.text(Text::InvalidCount));
    for (QComboBox* box : {cmbNumSpk, cmbNumGer, cmbNumSch, cmbNumBass})
        box->setEnabled(!m_editor.view().locked);
}

void SetupPage::displayMounting()
{
    const SetupForm& setup = m_editor.setup();
    const LineArray& array = m_editor.array();
    const bool pinShown = setup.pinMode && !setup.stacked;
    Stacked_chk->setChecked(setup.stacked);
    PinAngle_opt[setup.pinMode ? 0 : 1]->setChecked(true);
    showList(*PinNumber_cmb, setup.PinNumber_cmb, m_editor.session().text(Text::InvalidPin));

    // Pin angles mean nothing for an array that is not whole.
    const bool known = m_editor.arrayWhole();
    const std::int16_t pin = static_cast<std::int16_t>(setup.PinNumber_cmb.value() - 1);
    const bool exists = pin >= 0 && pin < array.system().cradle.pinCount();
    PinAngle_lbl->setText(known && exists ? oneDecimal(array.GFAngleFromPin(pin)) +
                                                m_editor.session().text(Text::Degrees)
                                          : QString());
    AnglePin_lbl->setText(known ? QString::number(array.GIPinPoint() + 1) : QString());
    RemAng_lbl->setText(known ? oneDecimal(array.GFPinPointRemainder()) : QString());

    PinNumber_cmb->setVisible(pinShown);
    Label10->setVisible(pinShown);
    PinAngle_lbl->setVisible(pinShown);
    for (QWidget* control : {static_cast<QWidget*>(box1_lbl), static_cast<QWidget*>(box1Angle_txt),
                             static_cast<QWidget*>(lblAngleMeas)})
        control->setVisible(!pinShown);
    for (QWidget* control : {Label12, AnglePin_lbl, Label11, RemAng_lbl})
        control->setVisible(!pinShown && !setup.stacked);

    const bool enabled = !m_editor.view().locked;
    Stacked_chk->setEnabled(enabled);
    for (QRadioButton* option : PinAngle_opt)
        option->setEnabled(enabled && !setup.stacked);
    PinNumber_cmb->setEnabled(enabled);
    box1Angle_txt->setEnabled(enabled);
    cmdAuto->setEnabled(enabled);
}

void SetupPage::displayPoints()
{
    const bool enabled = !m_editor.view().locked;
    const bool bass = m_editor.array().GBGetBassBox();
    const OutOfRoom& outside = m_editor.outside();
    for (QLabel* unit : m_units)
        unit->setText(qtText(lengthUnit(m_editor.session().textOptions())));
    const QString where = m_editor.session().text(Text::InvalidOutside);
    for (std::size_t i = 0; i < 2; ++i) {
        Cradle_txt[i]->setEnabled(enabled);
        cmdHang->setEnabled(enabled);
        markInvalid(*Cradle_txt[i], outside.cradle[i], where);
        BassBox_txt[i]->setEnabled(enabled && bass);
        markInvalid(*BassBox_txt[i], outside.bassBox[i], where);
        optBassYesNo[i]->setEnabled(enabled);
    }
    bassX_lbl->setEnabled(bass);
    bassY_lbl->setEnabled(bass);
    optBassYesNo[bass ? 0 : 1]->setChecked(true);
    ShowDelay_chk->setEnabled(bass);
    ShowDelay_chk->setChecked(m_editor.session().state().settings.ShowDelay == 1);
    Lock_chk->setChecked(m_editor.view().locked);
}

} // namespace orva::ui
