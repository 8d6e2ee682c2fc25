#include "window_fixture.h"

#include <QClipboard>
#include <QTableWidget>

namespace orva::ui {
namespace {

class Probe : public Window {
protected:
    QString probe() { return control<QLabel>("lblStatusProbe")->text(); }
    QTableWidget* table(const char* name) { return control<QTableWidget>(name); }
};

TEST_F(Probe, TellsWhatIsHeardUnderThePointer)
{
    auto& section = *control<DrawingWidget>("Main_pbx");
    EXPECT_FALSE(control("lblStatusProbe")->isVisible());
    moveTo(section, pixel(section, room().foh()));
    EXPECT_TRUE(control("lblStatusProbe")->isVisible());
    const Editor& editor = window->editor();
    const Point at = *editor.view().probe;
    const float level = editor.levelsAlong({at, at, 0, 0}, 1).front();
    const auto box = nearestBox(placedSources(array()), at);
    EXPECT_TRUE(probe().contains(QString::number(static_cast<double>(level), 'f', 1) + " dB"))
        << probe().toStdString();
    EXPECT_TRUE(probe().contains(QString("box %1: ").arg(box->position + 1)));
    EXPECT_TRUE(probe().endsWith(
        QString::number(box->distanceM / session.state().air.SpeedOfSound * 1000, 'f', 1) + " ms"));

    auto& curve = *control<DrawingWidget>("AreaSpl_pbx");
    curve.picture();
    moveTo(curve, {50 + static_cast<int>(curveEnd(curve.width()) / 2), 20});
    const Segment area = room().area(1);
    EXPECT_NEAR(editor.view().probe->x, area.at(area.lengthM / 2).x, area.lengthM * 0.01);
    moveTo(curve, {10, 20});
    EXPECT_FALSE(editor.view().probe) << "left of the area";
    moveTo(curve, {60, 20});
    EXPECT_TRUE(editor.view().probe);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&curve, &leave);
    EXPECT_FALSE(control("lblStatusProbe")->isVisible());
}

TEST_F(Probe, MarkersStayAreListedAndGo)
{
    auto& section = *control<DrawingWidget>("Main_pbx");
    control<QTabWidget>("Curve_tab")->setCurrentIndex(1);
    control<QAbstractButton>("chkProbe")->click();
    const DocumentState before = window->editor().document().state();
    for (int marker = 0; marker < 10; ++marker)
        QTest::mouseClick(&section, Qt::LeftButton, {}, pixel(section, {4.0 + 2 * marker, 4}));
    EXPECT_EQ(table("tblProbes")->rowCount(), 8) << "no more than eight";
    EXPECT_TRUE(table("tblProbes")->isVisible());
    EXPECT_EQ(window->editor().view().selectedBox, std::nullopt);
    const QString level = table("tblProbes")->item(2, 3)->text();
    choose("cmbNumSpk", "4");
    EXPECT_NE(table("tblProbes")->item(2, 3)->text(), level) << "they follow";
    window->findChild<QAction*>("mnuUndo")->trigger();
    EXPECT_EQ(table("tblProbes")->item(2, 3)->text(), level);
    const QString last = table("tblProbes")->item(7, 1)->text();
    QTest::mouseClick(&section, Qt::LeftButton, {}, pixel(section, {8, 4}));
    ASSERT_EQ(table("tblProbes")->rowCount(), 7);
    EXPECT_EQ(table("tblProbes")->item(6, 1)->text(), last);
    EXPECT_NE(table("tblProbes")->item(2, 3)->text(), level) << "that one went";
    EXPECT_EQ(window->editor().document().state(), before);
    window->findChild<ProjectCommands*>()->New(kStandardSystem);
    EXPECT_FALSE(table("tblProbes")->isVisible()) << "of another room";
}

TEST_F(Probe, TheCurveShowsAnyAreas)
{
    auto& curve = *control<DrawingWidget>("AreaSpl_pbx");
    const QImage alone = curve.picture().toImage();
    control<QTabWidget>("Main_SSTab")->setCurrentIndex(0);
    choose("numAreas_cmb", "3");
    control<QTabWidget>("Main_SSTab")->setCurrentIndex(1);
    EXPECT_FALSE(control("chkCurveArea(0)")->isVisible());
    control<QAbstractButton>("chkAllAreas")->click();
    QTest::qWait(1);
    std::vector<QImage> pictures{alone, curve.picture().toImage()};
    EXPECT_FALSE(control("chkCurveArea(0)")->isEnabled()) << "the selected one";
    for (const char* area : {"chkCurveArea(1)", "chkCurveArea(2)"}) {
        EXPECT_TRUE(control(area)->isVisible());
        control<QAbstractButton>(area)->click();
        QTest::qWait(1);
        const QImage picture = curve.picture().toImage();
        EXPECT_EQ(std::count(pictures.begin(), pictures.end(), picture), 0) << area;
        pictures.push_back(picture);
    }
    control<QAbstractButton>("chkCurveArea(1)")->click();
    control<QAbstractButton>("chkCurveArea(2)")->click();
    QTest::qWait(1);
    EXPECT_EQ(curve.picture().toImage(), pictures[1]);
    control<QTabWidget>("Main_SSTab")->setCurrentIndex(0);
    choose("numAreas_cmb", "2");
    control<QTabWidget>("Main_SSTab")->setCurrentIndex(1);
    EXPECT_FALSE(control("chkCurveArea(2)")->isVisible());
}

TEST_F(Probe, RowsHaveTheFiguresOfTheirPlaces)
{
    control<QTabWidget>("Curve_tab")->setCurrentIndex(3);
    const Segment area = room().area(1);
    EXPECT_EQ(table("tblRows")->rowCount(), static_cast<int>(area.lengthM / 0.9) + 1);
    enter("txtRowPitch", "3");
    enter("txtRowOffset", "1");
    EXPECT_EQ(table("tblRows")->rowCount(), static_cast<int>((area.lengthM - 1) / 3) + 1);
    for (const char* wrong : {"0", "-1", "x"}) {
        enter("txtRowPitch", wrong);
        EXPECT_EQ(control<QLineEdit>("txtRowPitch")->text(), "3");
    }
    const Point second = area.at(4);
    const float level = window->editor().levelsAlong({second, second, 0, 0}, 1).front();
    const QStringList wanted = {"2", "4.00", QString::number(second.x, 'f', 2),
                                QString::number(second.y, 'f', 2),
                                QString::number(static_cast<double>(level), 'f', 1)};
    for (int column = 0; column < wanted.size(); ++column)
        EXPECT_EQ(table("tblRows")->item(1, column)->text(), wanted[column]) << column;
    table("tblRows")->setFocus();
    table("tblRows")->selectRow(1);
    QTest::keyClick(table("tblRows"), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith(wanted.join('\t')));
}

TEST_F(Probe, PredictionsKeptAreThoseCalculatedAnew)
{
    const Editor& editor = window->editor();
    const auto literally = [&](int points, const LevelChoice& choice) {
        return levelsAlong(*session.state().levelKernel(), session.state().speakerData.BandLevel,
                           array(), room().area(1), choice, points)
            .levels;
    };
    Prediction& kept = *editor.prediction();
    for (const LevelChoice& choice : {LevelChoice{{0, 21}, LevelField::Continuous, true},
                                      LevelChoice{{0, 21}, LevelField::Peak, false},
                                      LevelChoice{{8, 8}, LevelField::Relative, false},
                                      LevelChoice{{4, 12}, LevelField::Relative, true}})
        for (const int points : {1, 7, 200, 700})
            EXPECT_EQ(kept.levelsAlong(room().area(1), points, choice), literally(points, choice))
                << points;
    const auto bands = kept.bandsAlong(room().area(1), 9, {{3, 3}, LevelField::Continuous, true});
    const auto alone = literally(9, {{3, 3}, LevelField::Continuous, true});
    for (std::size_t point = 0; point < 9; ++point)
        EXPECT_NEAR(bands[3][point], alone[point], 0.01);
}

} // namespace
} // namespace orva::ui
