#include "widgets/control_texts.h"

#include "widgets/controls.h"

#include <QHash>
#include <QScrollBar>

namespace orva::ui {

namespace {

struct ControlText {
    const char* control;
    int elements; ///< of a control array; 0: a single control
    Text name;    ///< None: its own text or its label
    Text tip;
};

// clang-format off
constexpr ControlText kTexts[] = {
    {"ProjectName_txt", 0, Text::None, Text::TipProjectNameTxt},
    {"Author_txt", 0, Text::None, Text::TipAuthorTxt},
    {"Comments_txt", 0, Text::None, Text::TipCommentsTxt},
    {"RoomWidth_txt", 0, Text::NameRoomWidthTxt, Text::TipRoomWidthTxt},
    {"RoomHeight_txt", 0, Text::NameRoomHeightTxt, Text::TipRoomHeightTxt},
    {"refX_txt", 0, Text::NameRefXTxt, Text::TipRefXTxt},
    {"refY_txt", 0, Text::NameRefYTxt, Text::TipRefYTxt},
    {"FOHX_txt", 0, Text::NameFOHXTxt, Text::TipFOHXTxt},
    {"FOHY_txt", 0, Text::NameFOHYTxt, Text::TipFOHYTxt},
    {"numAreas_cmb", 0, Text::NameNumAreasCmb, Text::TipNumAreasCmb},
    {"txtXone", 3, Text::NameTxtXone, Text::TipTxtXone},
    {"txtYone", 3, Text::NameTxtYone, Text::TipTxtYone},
    {"txtXtwo", 3, Text::NameTxtXtwo, Text::TipTxtXtwo},
    {"txtYtwo", 3, Text::NameTxtYtwo, Text::TipTxtYtwo},
    {"txtAngle", 3, Text::NameTxtAngle, Text::TipTxtAngle},
    {"txtLength", 3, Text::NameTxtLength, Text::TipTxtLength},
    {"Room_pbx", 0, Text::NameRoomPbx, Text::TipRoomPbx},
    {"cmbNumSpk", 0, Text::NameCmbNumSpk, Text::TipCmbNumSpk},
    {"cmbNumGer", 0, Text::NameCmbNumGer, Text::TipCmbNumGer},
    {"cmbNumSch", 0, Text::NameCmbNumSch, Text::TipCmbNumSch},
    {"cmbNumBass", 0, Text::NameCmbNumBass, Text::TipCmbNumBass},
    {"Stacked_chk", 0, Text::NameStackedChk, Text::TipStackedChk},
    {"PinAngle_opt(0)", 0, Text::NamePinAngleOptFirst, Text::TipPinAngleOptFirst},
    {"PinAngle_opt(1)", 0, Text::NamePinAngleOptSecond, Text::TipPinAngleOptSecond},
    {"PinNumber_cmb", 0, Text::NamePinNumberCmb, Text::TipPinNumberCmb},
    {"box1Angle_txt", 0, Text::NameBox1AngleTxt, Text::TipBox1AngleTxt},
    {"cmdAuto", 0, Text::NameCmdAuto, Text::TipCmdAuto},
    {"Cradle_txt(0)", 0, Text::NameCradleTxtFirst, Text::TipCradleTxtFirst},
    {"Cradle_txt(1)", 0, Text::NameCradleTxtSecond, Text::TipCradleTxtSecond},
    {"optBassYesNo(0)", 0, Text::NameOptBassYesNoFirst, Text::TipOptBassYesNoFirst},
    {"optBassYesNo(1)", 0, Text::NameOptBassYesNoSecond, Text::TipOptBassYesNoSecond},
    {"BassBox_txt(0)", 0, Text::NameBassBoxTxtFirst, Text::TipBassBoxTxtFirst},
    {"BassBox_txt(1)", 0, Text::NameBassBoxTxtSecond, Text::TipBassBoxTxtSecond},
    {"ShowDelay_chk", 0, Text::None, Text::TipShowDelayChk},
    {"cmdUp", 31, Text::NameCmdUp, Text::None},
    {"cmdDown", 31, Text::NameCmdDown, Text::None},
    {"cmbCompare", 0, Text::NameCmbCompare, Text::TipCmbCompare},
    {"cmdHang", 0, Text::None, Text::TipCmdHang},
    {"chkProbe", 0, Text::None, Text::TipChkProbe},
    {"chkAllAreas", 0, Text::None, Text::TipChkAllAreas},
    {"chkCurveArea", 3, Text::None, Text::TipChkCurveArea},
    {"txtRowPitch", 0, Text::None, Text::TipRowPitch},
    {"txtRowOffset", 0, Text::None, Text::TipRowOffset},
    {"cmdRowsCsv", 0, Text::None, Text::TipRowsCsv},
    {"tblRows", 0, Text::NameTblRows, Text::None},
    {"tblVariants", 0, Text::NameTblVariants, Text::None},
    {"tblProbes", 0, Text::NameTblProbes, Text::None},
    {"Spectrum_pbx", 0, Text::NameSpectrumPbx, Text::None},
    {"Strip_pbx", 0, Text::NameStripPbx, Text::None},
    {"chkLive", 0, Text::None, Text::TipChkLive},
    {"Lock_chk", 0, Text::None, Text::TipLockChk},
    {"cmbType", 32, Text::NameCmbType, Text::TipCmbType},
    {"cmbAngle", 31, Text::NameCmbAngle, Text::TipCmbAngle},
    {"areaBoxes", 0, Text::NameBoxes, Text::None},
    {"VScroll1", 0, Text::NameVScroll1, Text::TipVScroll1},
    {"spkUp_cmd", 0, Text::NameSpkUpCmd, Text::TipSpkUpCmd},
    {"spkDown_cmd", 0, Text::NameSpkDownCmd, Text::TipSpkDownCmd},
    {"MapType_opt(0)", 0, Text::NameMapTypeOptFirst, Text::TipMapTypeOptFirst},
    {"MapType_opt(1)", 0, Text::NameMapTypeOptSecond, Text::TipMapTypeOptSecond},
    {"MapType_opt(2)", 0, Text::NameMapTypeOptThird, Text::TipMapTypeOptThird},
    {"Average_cmb", 0, Text::NameAverageCmb, Text::TipAverageCmb},
    {"cmbTerzOktave", 0, Text::NameCmbTerzOktave, Text::TipCmbTerzOktave},
    {"chkAWeight", 0, Text::None, Text::TipChkAWeight},
    {"chkAiming", 0, Text::None, Text::TipChkAiming},
    {"CalcBand_cmd", 0, Text::None, Text::TipCalcBandCmd},
    {"CalcAll_cmd", 0, Text::None, Text::TipCalcAllCmd},
    {"chkDrawLine", 0, Text::None, Text::TipChkDrawLine},
    {"Optimize_cmd", 0, Text::NameOptimizeCmd, Text::TipOptimizeCmd},
    {"cmdSuggest", 0, Text::None, Text::TipCmdSuggest},
    {"lblGap", 0, Text::None, Text::TipLblGap},
    {"Main_pbx", 0, Text::NameMainPbx, Text::TipMainPbx},
    {"AreaSpl_pbx", 0, Text::NameAreaSplPbx, Text::None},
    {"rigText_txt", 0, Text::NameRigTextTxt, Text::TipRigTextTxt},
    {"lstPins", 0, Text::NameLstPins, Text::TipLstPins},
    {"RigHScroll", 0, Text::NameRigHScroll, Text::TipRigHScroll},
    {"RigVScroll", 0, Text::NameRigVScroll, Text::TipRigVScroll},
    {"OpenAng_txt", 0, Text::NameOpenAngTxt, Text::TipOpenAngTxt},
    {"SubArray_txt", 10, Text::NameSubArrayTxt, Text::TipSubArrayTxt},
    {"VirtDist_txt", 10, Text::NameVirtDistTxt, Text::TipVirtDistTxt},
    {"SubDelay_txt", 10, Text::NameSubDelayTxt, Text::TipSubDelayTxt},
    {"picSubArray", 0, Text::NamePicSubArray, Text::TipPicSubArray},
    {"Meters_opt(0)", 0, Text::None, Text::TipMetersOptFirst},
    {"Meters_opt(1)", 0, Text::None, Text::TipMetersOptSecond},
    {"AutoCor_opt(0)", 0, Text::NameAutoCorOptFirst, Text::TipAutoCorOptFirst},
    {"AutoCor_opt(1)", 0, Text::NameAutoCorOptSecond, Text::TipAutoCorOptSecond},
    {"txtTemp", 0, Text::None, Text::TipTxtTemp},
    {"chkWeather", 0, Text::None, Text::TipChkWeather},
    {"txtHumidity", 0, Text::NameTxtHumidity, Text::TipTxtHumidity},
    {"optTempUnit(0)", 0, Text::None, Text::TipOptTempUnitFirst},
    {"optTempUnit(1)", 0, Text::None, Text::TipOptTempUnitSecond},
    {"SPLRes_txt", 0, Text::None, Text::TipSPLResTxt},
    {"pixelRes_chk", 0, Text::None, Text::TipPixelResChk},
    {"cmbLambda", 0, Text::None, Text::TipCmbLambda},
    {"txtGridSize", 3, Text::None, Text::TipTxtGridSize},
    {"chkShowArrTyp", 0, Text::None, Text::TipChkShowArrTyp},
    {"cmbAppearance", 0, Text::NameCmbAppearance, Text::TipCmbAppearance},
    {"cmbMapColours", 0, Text::NameCmbMapColours, Text::TipCmbMapColours},
    {"cmbMapRange", 0, Text::NameCmbMapRange, Text::TipCmbMapRange},
    {"chkContours", 0, Text::None, Text::TipChkContours},
    {"cmdDefault", 0, Text::None, Text::TipCmdDefault},
    {"Rigging_pbx", 0, Text::NameRiggingPbx, Text::None},
    {"chkArea", 0, Text::None, Text::TipChkArea},
    {"chkNeighbor", 0, Text::None, Text::TipChkNeighbor},
    {"chkQuick", 0, Text::None, Text::TipChkQuick},
    {"optMeasure(0)", 0, Text::None, Text::TipOptMeasureFirst},
    {"optMeasure(1)", 0, Text::None, Text::TipOptMeasureSecond},
    {"optMeasure(2)", 0, Text::None, Text::TipOptMeasureThird},
    {"txtNumPts", 0, Text::None, Text::TipTxtNumPts},
    {"cmdMore", 0, Text::None, Text::TipCmdMore},
    {"chkSearchArea", 3, Text::None, Text::TipChkSearchArea},
    {"txtWeight", 3, Text::NameTxtWeight, Text::TipTxtWeight},
    {"txtPerDoubling", 0, Text::None, Text::TipTxtPerDoubling},
    {"chkFreePin", 0, Text::None, Text::TipChkFreePin},
    {"chkFreeHeight", 0, Text::None, Text::TipChkFreeHeight},
    {"txtHeight(0)", 0, Text::NameTxtHeightFirst, Text::None},
    {"txtHeight(1)", 0, Text::NameTxtHeightSecond, Text::None},
    {"txtHeight(2)", 0, Text::NameTxtHeightThird, Text::None},
    {"chkQuickOnly", 0, Text::None, Text::TipChkQuickOnly},
    {"txtBudget", 0, Text::NameTxtBudget, Text::None},
    {"tblResults", 0, Text::NameTblResults, Text::None},
    {"cmbConfigs", 0, Text::None, Text::TipCmbConfigs},
    {"chkShowSetup", 0, Text::None, Text::TipChkShowSetup},
    {"dbgpbx", 0, Text::NameDbgpbx, Text::None},
    {"cmdOptimize", 0, Text::None, Text::TipCmdOptimize},
    {"cmdCommit", 0, Text::None, Text::TipCmdCommit},
    {"cmdCancel", 0, Text::None, Text::TipCmdCancel},
    {"txtLength", 0, Text::NameTriangleTxtLength, Text::TipTriangleTxtLength},
    {"txtXone", 0, Text::NameTriangleTxtXone, Text::TipTriangleTxtXone},
    {"txtXtwo", 0, Text::NameTriangleTxtXtwo, Text::TipTriangleTxtXtwo},
};
// clang-format on

} // namespace

void explainControls(QWidget& window, const Session& session)
{
    QHash<QString, QWidget*> byName;
    for (QWidget* widget : window.findChildren<QWidget*>())
        if (!byName.contains(widget->objectName()))
            byName.insert(widget->objectName(), widget);
    const auto explain = [&](const QString& control, const ControlText& texts, int index) {
        QWidget* widget = byName.value(control);
        if (!widget)
            return;
        const auto text = [&](Text id) {
            return session.text(id)
                .replace("%1", QString::number(index + 1))
                .replace("%2", QString::number(index + 2));
        };
        if (texts.name != Text::None)
            widget->setAccessibleName(text(texts.name));
        if (texts.tip != Text::None)
            widget->setToolTip(text(texts.tip));
    };
    for (const ControlText& texts : kTexts) {
        if (texts.elements == 0)
            explain(texts.control, texts, 0);
        for (int i = 0; i < texts.elements; ++i)
            explain(elementName(texts.control, i), texts, i);
    }
    for (auto* area : window.findChildren<QAbstractScrollArea*>()) {
        const QString name = area->accessibleName().isEmpty() ? session.text(Text::NameControls)
                                                              : area->accessibleName();
        area->verticalScrollBar()->setAccessibleName(session.text(Text::ScrollDownward).arg(name));
        area->horizontalScrollBar()->setAccessibleName(
            session.text(Text::ScrollSideways).arg(name));
    }
}

} // namespace orva::ui
