#include "shell/options_dialog.h"

#include "lang/string_table.h"
#include "shell/pictures.h"
#include "widgets/control_texts.h"
#include "widgets/controls.h"

#include <QGridLayout>
#include <QSignalBlocker>

namespace orva::ui {

OptionsDialog::OptionsDialog(Session& session, QWidget* parent)
    : QDialog(parent), m_session(session), m_form(session.state().settings)
{
    setObjectName("frmOptions");
    auto* layout = new QGridLayout(this);
    Frame1 = unitsFrame();
    Frame2 = warningsFrame();
    fraTemp = temperatureFrame();
    Frame3 = splFrame();
    fraGrid = gridFrame();
    Frame4 = startupFrame();
    layout->addWidget(Frame1, 0, 0);
    layout->addWidget(Frame2, 0, 1);
    layout->addWidget(fraTemp, 1, 0);
    layout->addWidget(Frame3, 1, 1);
    layout->addWidget(fraGrid, 2, 0);
    auto* corner = new QVBoxLayout;
    corner->addWidget(Frame4);
    corner->addStretch();
    corner->addWidget(logoPicture(this), 0, Qt::AlignRight);
    layout->addLayout(corner, 2, 1);
    layout->addWidget(appearanceFrame(), 3, 0);
    layout->addWidget(mapColoursFrame(), 3, 1);
    layout->addLayout(buttons(), 4, 0, 1, 2);

    connect(&session, &Session::LanguageChanged, this, &OptionsDialog::showTexts);
    showTexts();
    display();
}

QLineEdit* OptionsDialog::entry(const QString& name, std::string& text,
                                const std::function<void()>& validate, QWidget* parent)
{
    auto* edit = named<NumberEdit>(name, parent);
    connect(edit, &QLineEdit::textEdited, this, [this, &text](const QString& typed) {
        text = typed.toStdString();
        updateApplyButton();
    });
    connect(edit, &QLineEdit::editingFinished, this, [this, validate] {
        validate();
        display();
    });
    connect(edit, &NumberEdit::cancelled, this, [this, &text, validate] {
        text.clear(); // no number: what was there comes back
        validate();
        display();
    });
    return edit;
}

QButtonGroup* OptionsDialog::pair(const char* name, QRadioButton* (&options)[2], QGroupBox* frame,
                                  const std::function<void(bool first)>& chosen)
{
    auto* group = new QButtonGroup(this);
    for (int i = 0; i < 2; ++i) {
        options[i] = named<QRadioButton>(elementName(name, i), frame);
        group->addButton(options[i], i);
    }
    connect(group, &QButtonGroup::idClicked, this, [this, chosen](int id) {
        chosen(id == 0);
        display();
    });
    return group;
}

QGroupBox* OptionsDialog::unitsFrame()
{
    auto* frame = named<QGroupBox>("Frame1", this);
    pair("Meters_opt", Meters_opt, frame, [this](bool first) { m_form.chooseMetres(first); });
    auto* layout = new QHBoxLayout(frame);
    layout->addWidget(Meters_opt[0]);
    layout->addWidget(Meters_opt[1]);
    return frame;
}

QGroupBox* OptionsDialog::warningsFrame()
{
    auto* frame = named<QGroupBox>("Frame2", this);
    Label1 = named<QLabel>("Label1", frame);
    pair("AutoCor_opt", AutoCor_opt, frame, [this](bool first) { m_form.autoCorrect = first; });
    auto* layout = new QHBoxLayout(frame);
    layout->addWidget(Label1);
    layout->addWidget(AutoCor_opt[0]);
    layout->addWidget(AutoCor_opt[1]);
    return frame;
}

QGroupBox* OptionsDialog::temperatureFrame()
{
    auto* frame = named<QGroupBox>("fraTemp", this);
    pair("optTempUnit", optTempUnit, frame, [this](bool first) { m_form.chooseCelsius(first); });
    txtTemp = entry(
        "txtTemp", m_form.temperature, [this] { m_form.validateTemperature(); }, frame);
    chkWeather = named<QCheckBox>("chkWeather", frame);
    connect(chkWeather, &QCheckBox::clicked, this, [this](bool checked) {
        m_form.weather = checked;
        display();
    });
    lblHumidity = named<QLabel>("lblHumidity", frame);
    txtHumidity = entry(
        "txtHumidity", m_form.humidity, [this] { m_form.validateHumidity(); }, frame);
    lblHumidity->setBuddy(txtHumidity);
    auto* layout = new QGridLayout(frame);
    layout->addWidget(txtTemp, 0, 0);
    layout->addWidget(optTempUnit[0], 0, 1);
    layout->addWidget(optTempUnit[1], 0, 2);
    layout->addWidget(chkWeather, 1, 0, 1, 4);
    layout->addWidget(txtHumidity, 2, 0);
    layout->addWidget(lblHumidity, 2, 1, 1, 3);
    layout->setColumnStretch(3, 1);
    return frame;
}

QGroupBox* OptionsDialog::splFrame()
{
    auto* frame = named<QGroupBox>("Frame3", this);
    Label2 = named<QLabel>("Label2", frame);
    SPLRes_txt = entry(
        "SPLRes_txt", m_form.resolution, [this] { m_form.validateResolution(); }, frame);
    Label2->setBuddy(SPLRes_txt);
    lblUnits[3] = named<QLabel>("lblUnits(3)", frame);
    pixelRes_chk = named<QCheckBox>("pixelRes_chk", frame);
    connect(pixelRes_chk, &QCheckBox::clicked, this, [this](bool checked) {
        m_form.choosePixel(checked);
        display();
    });
    cmbLambda = named<QPushButton>("cmbLambda", frame);
    cmbLambda->setAutoDefault(false);
    connect(cmbLambda, &QPushButton::clicked, this, [this] {
        m_form.chooseLambda8(m_session.state().air.SpeedOfSound);
        display();
    });
    auto* layout = new QGridLayout(frame);
    layout->addWidget(Label2, 0, 0, 1, 4);
    layout->addWidget(SPLRes_txt, 1, 0);
    layout->addWidget(lblUnits[3], 1, 1);
    layout->addWidget(pixelRes_chk, 1, 2);
    layout->addWidget(cmbLambda, 1, 3);
    return frame;
}

QGroupBox* OptionsDialog::gridFrame()
{
    auto* frame = named<QGroupBox>("fraGrid", this);
    auto* layout = new QGridLayout(frame);
    for (int i = 0; i < static_cast<int>(OptionsForm::kGrids); ++i) {
        const auto at = static_cast<std::size_t>(i);
        lblGrid[i] = named<QLabel>(elementName("lblGrid", i), frame);
        txtGridSize[i] = entry(
            elementName("txtGridSize", i), m_form.grids[at],
            [this, at] { m_form.validateGrid(at); }, frame);
        lblUnits[i] = named<QLabel>(elementName("lblUnits", i), frame);
        lblGrid[i]->setBuddy(txtGridSize[i]);
        layout->addWidget(lblGrid[i], i, 0);
        layout->addWidget(txtGridSize[i], i, 1);
        layout->addWidget(lblUnits[i], i, 2);
    }
    layout->setColumnStretch(3, 1);
    return frame;
}

QGroupBox* OptionsDialog::startupFrame()
{
    auto* frame = named<QGroupBox>("Frame4", this);
    chkShowArrTyp = named<QCheckBox>("chkShowArrTyp", frame);
    connect(chkShowArrTyp, &QCheckBox::clicked, this, [this](bool checked) {
        m_form.showNewQuery = checked;
        updateApplyButton();
    });
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(chkShowArrTyp);
    return frame;
}

QComboBox* OptionsDialog::list(const char* name, QGroupBox* frame,
                               const std::function<void(int)>& chosen)
{
    auto* box = named<ListBox>(name, frame);
    connect(box, &QComboBox::activated, this, [this, chosen](int index) {
        chosen(index);
        display();
    });
    return box;
}

QGroupBox* OptionsDialog::appearanceFrame()
{
    fraAppearance = named<QGroupBox>("fraAppearance", this);
    cmbAppearance = list("cmbAppearance", fraAppearance,
                         [this](int index) { m_form.appearance = static_cast<Appearance>(index); });
    auto* layout = new QVBoxLayout(fraAppearance);
    layout->addWidget(cmbAppearance);
    layout->addStretch();
    return fraAppearance;
}

QGroupBox* OptionsDialog::mapColoursFrame()
{
    fraMapColours = named<QGroupBox>("fraMapColours", this);
    cmbMapColours = list("cmbMapColours", fraMapColours, [this](int index) {
        m_form.map.colours = static_cast<MapColours>(index);
    });
    cmbMapRange = list("cmbMapRange", fraMapColours,
                       [this](int index) { m_form.map.range = static_cast<MapRange>(index); });
    lblMapColours = named<QLabel>("lblMapColours", fraMapColours);
    lblMapColours->setBuddy(cmbMapColours);
    lblMapRange = named<QLabel>("lblMapRange", fraMapColours);
    lblMapRange->setBuddy(cmbMapRange);
    chkContours = named<QCheckBox>("chkContours", fraMapColours);
    connect(chkContours, &QCheckBox::clicked, this, [this](bool checked) {
        m_form.map.contours = checked;
        updateApplyButton();
    });
    auto* layout = new QGridLayout(fraMapColours);
    layout->addWidget(lblMapColours, 0, 0);
    layout->addWidget(cmbMapColours, 0, 1);
    layout->addWidget(lblMapRange, 1, 0);
    layout->addWidget(cmbMapRange, 1, 1);
    layout->addWidget(chkContours, 2, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    return fraMapColours;
}

QLayout* OptionsDialog::buttons()
{
    auto* layout = new QHBoxLayout;
    const auto button = [&](const char* name, auto clicked) {
        auto* made = named<QPushButton>(name, this);
        made->setAutoDefault(false); // Enter ends an entry, not the dialog
        connect(made, &QPushButton::clicked, this, clicked);
        layout->addWidget(made);
        return made;
    };
    cmdDefault = button("cmdDefault", [this] {
        m_form.chooseDefaults();
        display();
    });
    layout->addStretch();
    Done_cmb = button("Done_cmb", [this] {
        apply();
        accept();
    });
    Cancel_cmb = button("Cancel_cmb", [this] { reject(); });
    Apply_cmb = button("Apply_cmb", [this] { apply(); });
    return layout;
}

void OptionsDialog::showTexts()
{
    const auto text = [this](Text id) { return m_session.text(id); };
    setWindowTitle(text(Text::GeneralOptions));
    Frame1->setTitle(text(Text::UnitsFrame));
    Meters_opt[0]->setText(text(Text::Meters));
    Meters_opt[1]->setText(text(Text::Feet));
    Frame2->setTitle(text(Text::WarningsFrame));
    Label1->setText(text(Text::AutoCorrect));
    AutoCor_opt[0]->setText(text(Text::Yes));
    AutoCor_opt[1]->setText(text(Text::No));
    fraTemp->setTitle(text(Text::Temperature));
    txtTemp->setAccessibleName(text(Text::Temperature));
    optTempUnit[0]->setText(text(Text::Celsius));
    chkWeather->setText(text(Text::WeatherLabel));
    lblHumidity->setText(text(Text::HumidityLabel));
    optTempUnit[1]->setText(text(Text::Fahrenheit));
    Frame3->setTitle(text(Text::MapFrame));
    Label2->setText(text(Text::MapResolution));
    pixelRes_chk->setText(text(Text::PixelCells));
    cmbLambda->setText(text(Text::Lambda8));
    fraGrid->setTitle(text(Text::GridSize));
    const Text grids[] = {Text::GridRoom, Text::RiggingPage, Text::GridArea};
    for (std::size_t i = 0; i < OptionsForm::kGrids; ++i)
        lblGrid[i]->setText(text(grids[i]));
    Frame4->setTitle(text(Text::StartupFrame));
    chkShowArrTyp->setText(text(Text::ShowSystemSelection));
    fraAppearance->setTitle(text(Text::AppearanceFrame));
    showItems(*cmbAppearance, {Text::AppearanceClassic, Text::AppearanceLight, Text::AppearanceDark,
                               Text::AppearanceDesktop});
    fraMapColours->setTitle(text(Text::MapColoursFrame));
    lblMapColours->setText(text(Text::ColoursLabel));
    showItems(*cmbMapColours, {Text::ColoursClassic, Text::ColoursEven});
    lblMapRange->setText(text(Text::RangeLabel));
    showItems(*cmbMapRange, {Text::RangeGiven, Text::RangeAudience});
    chkContours->setText(text(Text::ContoursLabel));
    cmdDefault->setText(text(Text::Defaults));
    Apply_cmb->setText(text(Text::Apply));
    Cancel_cmb->setText(text(Text::Cancel));
    Done_cmb->setText(text(Text::OptionsOk));
    display();
    explainControls(*this, m_session);
}

void OptionsDialog::showItems(QComboBox& box, std::initializer_list<Text> items)
{
    box.clear();
    for (const Text item : items)
        box.addItem(m_session.text(item));
}

void OptionsDialog::display()
{
    cmbAppearance->setCurrentIndex(static_cast<int>(m_form.appearance));
    cmbMapColours->setCurrentIndex(static_cast<int>(m_form.map.colours));
    cmbMapRange->setCurrentIndex(static_cast<int>(m_form.map.range));
    chkContours->setChecked(m_form.map.contours);
    Meters_opt[m_form.metres ? 0 : 1]->setChecked(true);
    AutoCor_opt[m_form.autoCorrect ? 0 : 1]->setChecked(true);
    optTempUnit[m_form.celsius ? 0 : 1]->setChecked(true);
    showText(*txtTemp, qtText(m_form.temperature));
    chkWeather->setChecked(m_form.weather);
    txtHumidity->setEnabled(m_form.weather);
    showText(*txtHumidity, qtText(m_form.humidity));
    pixelRes_chk->setChecked(m_form.pixel);
    SPLRes_txt->setEnabled(!m_form.pixel);
    showText(*SPLRes_txt,
             m_form.pixel ? m_session.text(Text::PixelShown) : qtText(m_form.resolution));
    for (std::size_t i = 0; i < OptionsForm::kGrids; ++i)
        showText(*txtGridSize[i], qtText(m_form.grids[i]));
    for (QLabel* unit : lblUnits)
        unit->setText(qtText(lengthUnit({m_session.state().gLanguageId, m_form.metres})));
    chkShowArrTyp->setChecked(m_form.showNewQuery);
    updateApplyButton();
}

void OptionsDialog::updateApplyButton()
{
    Apply_cmb->setEnabled(m_form.differsFrom(m_session.state().settings));
}

void OptionsDialog::apply()
{
    Settings& settings = m_session.state().settings;
    settings = m_form.applied(settings);
    m_form = OptionsForm(settings);
    followWeather(m_session.state());
    display();
    emit applied();
}

} // namespace orva::ui
