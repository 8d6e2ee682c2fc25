#pragma once

#include "app/forms/options_form.h"
#include "widgets/session.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace orva::ui {

/// General Options.
class OptionsDialog final : public QDialog {
    Q_OBJECT
public:
    OptionsDialog(Session& session, QWidget* parent);

signals:
    /// The settings have changed.
    void applied();

private:
    QGroupBox* unitsFrame();
    QGroupBox* warningsFrame();
    QGroupBox* temperatureFrame();
    QGroupBox* splFrame();
    QGroupBox* gridFrame();
    QGroupBox* startupFrame();
    QGroupBox* appearanceFrame();
    QGroupBox* mapColoursFrame();
    QComboBox* list(const char* name, QGroupBox* frame, const std::function<void(int)>& chosen);
    void showItems(QComboBox& box, std::initializer_list<Text> items);
    QLayout* buttons();
    /// An entry of the form: taken over while it is typed, validated when it is left.
    QLineEdit* entry(const QString& name, std::string& text, const std::function<void()>& validate,
                     QWidget* parent);
    QButtonGroup* pair(const char* name, QRadioButton* (&options)[2], QGroupBox* frame,
                       const std::function<void(bool first)>& chosen);

    void showTexts();
    void display();
    void updateApplyButton();
    void apply();

    Session& m_session;
    OptionsForm m_form;
    QGroupBox* Frame1;
    QGroupBox* Frame2;
    QGroupBox* fraTemp;
    QGroupBox* Frame3;
    QGroupBox* fraGrid;
    QGroupBox* Frame4;
    QGroupBox* fraAppearance;
    QComboBox* cmbAppearance;
    QGroupBox* fraMapColours;
    QLabel* lblMapColours;
    QComboBox* cmbMapColours;
    QLabel* lblMapRange;
    QComboBox* cmbMapRange;
    QCheckBox* chkContours;
    QRadioButton* Meters_opt[2];
    QRadioButton* AutoCor_opt[2];
    QRadioButton* optTempUnit[2];
    QLabel* Label1;
    QLabel* Label2;
    QLineEdit* txtTemp;
    QCheckBox* chkWeather;
    QLineEdit* txtHumidity;
    QLabel* lblHumidity;
    QLineEdit* SPLRes_txt;
    QCheckBox* pixelRes_chk;
    QPushButton* cmbLambda;
    QLabel* lblGrid[OptionsForm::kGrids];
    QLineEdit* txtGridSize[OptionsForm::kGrids];
    QLabel* lblUnits[4];
    QCheckBox* chkShowArrTyp;
    QPushButton* cmdDefault;
    QPushButton* Apply_cmb;
    QPushButton* Cancel_cmb;
    QPushButton* Done_cmb;
};

} // namespace orva::ui
