#include "window_fixture.h"

#include <QClipboard>
#include <QMimeData>

namespace orva::ui {
namespace {

class Section : public Window {
protected:
    DrawingWidget& view(int page)
    {
        control<QTabWidget>("Main_SSTab")->setCurrentIndex(page);
        return *control<DrawingWidget>(page == 0 ? "Room_pbx" : "Main_pbx");
    }
    void drag(DrawingWidget& view, const Point& from, const Point& to,
              Qt::KeyboardModifiers keys = {})
    {
        const QPoint start = pixel(view, from);
        const QPoint end = pixel(view, to);
        QTest::mousePress(&view, Qt::LeftButton, keys, start);
        moveTo(view, (start + end) / 2, keys, Qt::LeftButton);
        moveTo(view, end, keys, Qt::LeftButton);
        QTest::mouseRelease(&view, Qt::LeftButton, keys, end);
    }
    void wheel(DrawingWidget& view, const Point& at, int notches, Qt::KeyboardModifiers keys = {})
    {
        const QPointF position = pixel(view, at);
        QWheelEvent event(position, view.mapToGlobal(position), {}, {0, 120 * notches},
                          Qt::NoButton, keys, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&view, &event);
    }
    const DocumentState& state() const { return window->editor().document().state(); }
    QAction* undo() { return window->findChild<QAction*>("mnuUndo"); }
};

TEST_F(Section, DragsAreWhatTypingTheSameFiguresIs)
{
    using Typed = std::vector<std::pair<const char*, const char*>>;
    struct Case {
        int page;
        Point from;
        Point to;
        Typed typed;
    };
    // A new project: areas from (5, 1.7) to (20, 1.7) and on, FOH at (20, 1.7) until here.
    enter("FOHX_txt", "14");
    enter("FOHY_txt", "3");
    enter("txtYtwo(0)", "2.7");
    const Point end = room().area(1).end;
    const QByteArray oldX = QByteArray::number(end.x);
    const QByteArray oldY = QByteArray::number(end.y);
    const Point middle{(5 + end.x) / 2, (1.7 + end.y) / 2};
    const FloatPair cradle = array().GFAGetCradleCoord();
    const Case cases[] = {
        {1, {cradle[0], cradle[1]}, {2, 7}, {{"Cradle_txt(0)", "2"}, {"Cradle_txt(1)", "7"}}},
        {1, {14, 3}, {17, 4}, {{"FOHX_txt", "17"}, {"FOHY_txt", "4"}}},
        {0, {14, 3}, {17, -9}, {{"FOHX_txt", "17"}, {"FOHY_txt", "0"}}},
        {0,
         {5, 1.7},
         {7, 1},
         {{"txtXone(0)", "7"}, {"txtYone(0)", "1"}, {"txtXtwo(0)", oldX}, {"txtYtwo(0)", oldY}}},
        {1, end, {18, 4}, {{"txtXtwo(0)", "18"}, {"txtYtwo(0)", "4"}}},
        {0, middle, {middle.x + 1, middle.y + 1}, {{"txtXone(0)", "6"}, {"txtYone(0)", "2.7"}}},
        {0, {0, 0}, {1, 2}, {{"refX_txt", "1"}, {"refY_txt", "2"}}}};
    for (const Case& c : cases) {
        const DocumentState before = state();
        drag(view(c.page), c.from, c.to);
        const DocumentState dragged = state();
        EXPECT_NE(dragged, before) << c.typed[0].first;
        undo()->trigger();
        EXPECT_EQ(state(), before) << "one step";
        for (const auto& [entry, text] : c.typed)
            enter(entry, text);
        EXPECT_EQ(state().project.room, dragged.project.room) << c.typed[0].first;
        EXPECT_EQ(state().project.array, dragged.project.array) << c.typed[0].first;
        while (state() != before)
            undo()->trigger();
    }
}

TEST_F(Section, DragsKeepToAnAxisTheRasterAndTheLock)
{
    DrawingWidget& section = view(1);
    const FloatPair start = array().GFAGetCradleCoord();
    const Point from{start[0], start[1]};
    drag(section, from, {from.x + 3, from.y - 1}, Qt::ShiftModifier);
    EXPECT_EQ(array().GFAGetCradleCoord()[1], start[1]);
    EXPECT_GT(array().GFAGetCradleCoord()[0], start[0] + 2);
    undo()->trigger();

    const DocumentState before = state();
    QTest::mousePress(&section, Qt::LeftButton, {}, pixel(section, from));
    moveTo(section, pixel(section, {from.x + 2, from.y}), {}, Qt::LeftButton);
    EXPECT_NE(state(), before);
    QTest::keyClick(&section, Qt::Key_Escape);
    EXPECT_EQ(state(), before);
    moveTo(section, pixel(section, {from.x + 4, from.y}), {}, Qt::LeftButton);
    EXPECT_EQ(state(), before) << "the drag has ended";
    QTest::mouseRelease(&section, Qt::LeftButton, {}, pixel(section, {from.x + 4, from.y}));
    EXPECT_FALSE(undo()->isEnabled());

    QTest::mouseClick(&section, Qt::LeftButton, {}, pixel(section, from));
    QTest::keyClick(&section, Qt::Key_Right);
    EXPECT_FLOAT_EQ(array().GFAGetCradleCoord()[0], start[0] + 0.1F);
    undo()->trigger();
    session.state().settings.Units_Meters = false; // it is at 3.28 feet
    QTest::keyClick(&section, Qt::Key_Right);
    EXPECT_FLOAT_EQ(array().GFAGetCradleCoord()[0], 3.4F * 0.3048F);
    undo()->trigger();

    control<QAbstractButton>("Lock_chk")->click();
    drag(section, from, {from.x + 3, from.y});
    wheel(section, {array().axes()[3].from.x, array().axes()[3].from.y}, 1);
    QTest::keyClick(&section, Qt::Key_Right);
    EXPECT_EQ(state(), before);
}

TEST_F(Section, TheAreaUnderThePointerIsFramed)
{
    DrawingWidget& section = view(1);
    const auto picture = [&] {
        return section.grab().toImage().convertToFormat(QImage::Format_RGB32);
    };
    const QImage before = picture();
    moveTo(section, pixel(section, {12, 1.8})); // area 1: 5 to 20 m, 1.7 m high
    const QImage framed = picture();
    const auto changed = [&](const Point& place) {
        const QPoint at = pixel(section, place);
        bool found = false;
        for (int i = 0; i < 9; ++i) {
            const QPoint near = at + QPoint(i % 3 - 1, i / 3 - 1);
            found = found || before.pixel(near) != framed.pixel(near);
        }
        return found;
    };
    for (const Point& edge : {Point{10, 1.9}, Point{15, 1.5}, Point{4.8, 1.7}, Point{20.2, 1.7}})
        EXPECT_TRUE(changed(edge)) << edge.x << ", " << edge.y;
    for (const Point& beyond : {Point{10, 2.3}, Point{15, 1.1}, Point{24, 1.9}})
        EXPECT_FALSE(changed(beyond)) << beyond.x << ", " << beyond.y;
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&section, &leave);
    EXPECT_EQ(picture(), before);
}

TEST_F(Section, TheWheelTurnsTheSelectedBoxAndZooms)
{
    DrawingWidget& section = view(1);
    const Scale given = section.scale();
    const Point at = array().axes()[5].from;
    QTest::mouseClick(&section, Qt::LeftButton, {}, pixel(section, at));
    ASSERT_TRUE(window->editor().view().selectedBox);
    const int box = *window->editor().view().selectedBox;
    const int before = state().setup.cmbAngle[static_cast<std::size_t>(box - 1)].selected;
    wheel(section, at, -1);
    wheel(section, at, -1);
    EXPECT_EQ(state().setup.cmbAngle[static_cast<std::size_t>(box - 1)].selected,
              std::max(0, before - 2));
    wheel(section, at, 1);
    EXPECT_EQ(window->editor().document().undoName()->number, box);
    EXPECT_EQ(section.scale().width, given.width);

    wheel(section, {20, 3}, 4, Qt::ControlModifier);
    EXPECT_LT(section.scale().width, given.width / 2);
    const QPoint still = pixel(section, {20, 3});
    wheel(section, {20, 3}, 1, Qt::ControlModifier);
    EXPECT_LE((pixel(section, {20, 3}) - still).manhattanLength(), 2) << "under the pointer";
    const double left = section.scale().left;
    QTest::mousePress(&section, Qt::MiddleButton, {}, {100, 100});
    moveTo(section, {160, 100}, {}, Qt::MiddleButton);
    QTest::mouseRelease(&section, Qt::MiddleButton, {}, {160, 100});
    EXPECT_LT(section.scale().left, left);
    QTest::keyClick(&section, Qt::Key_0);
    EXPECT_EQ(section.scale().width, given.width);
    EXPECT_EQ(section.scale().left, given.left);
    QTest::keyClick(&section, Qt::Key_Escape);
    EXPECT_FALSE(window->editor().view().selectedBox);
}

TEST_F(Window, EveryPictureIsCopiedAndDrawnAsSvg)
{
    for (auto* picture : window->findChildren<DrawingWidget*>()) {
        SCOPED_TRACE(picture->objectName().toStdString());
        const QImage shown = picture->picture().toImage();
        QTest::keyClick(picture, Qt::Key_C, Qt::ControlModifier);
        const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
        ASSERT_TRUE(copied && copied->hasImage());
        EXPECT_EQ(qvariant_cast<QImage>(copied->imageData()).size(), shown.size());
        const QByteArray svg = copied->data("image/svg+xml");
        EXPECT_TRUE(svg.startsWith("<?xml") && svg.contains("</svg>"));
        EXPECT_GT(picture->png().size(), 100);
    }
    EXPECT_TRUE(control<DrawingWidget>("Main_pbx")->svg().contains("FOH")) << "texts stay texts";
    EXPECT_EQ(window->editor().array(), newProject(0).array);
}

} // namespace
} // namespace orva::ui
