#include "main/room_page.h"

#include "drawing/room_drawing.h"
#include "lang/decimal_text.h"
#include "lang/number_text.h"
#include "lang/string_table.h"
#include "main/section_hand.h"
#include "widgets/controls.h"

#include <QGridLayout>

namespace orva::ui {

namespace {

QString trimmed(const std::string& padded)
{
    return qtText(padded).trimmed();
}

} // namespace

RoomPage::RoomPage(Editor& editor, QWidget* parent) : Page(editor, parent), m_entries(editor)
{
    auto* layout = new QHBoxLayout(this);
    auto* column = new QWidget;
    auto* columnLayout = new QVBoxLayout(column);
    columnLayout->setContentsMargins(0, 0, 6, 0);
    columnLayout->addWidget(projectFrame());
    columnLayout->addWidget(roomFrame());
    columnLayout->addWidget(areasFrame());
    columnLayout->addStretch();
    layout->addWidget(new ColumnArea(column, this));

    Room_pbx = new DrawingWidget(
        "Room_pbx",
        [this](DrawingSurface& surface) {
            GDrawRoomBasic(surface, m_editor.room(), m_editor.session().drawingOptions(), true);
        },
        this);
    layout->addWidget(Room_pbx, 1);
    auto* hand = new SectionHand(m_editor, *Room_pbx, false);
    Room_pbx->setOverlay([hand](DrawingSurface& surface) { hand->drawOverlay(surface); });

    connect(&editor.session(), &Session::LanguageChanged, this, &RoomPage::showTexts);
    showTexts();
    display();
}

QWidget* RoomPage::projectFrame()
{
    Project_fra = named<QGroupBox>("Project_fra", this);
    auto* layout = new QGridLayout(Project_fra);
    int row = 0;
    const auto line = [&](const char* labelName, const char* editName, QLabel*& label,
                          QLineEdit*& edit) {
        label = named<QLabel>(labelName, Project_fra);
        edit = named<QLineEdit>(editName, Project_fra);
        label->setBuddy(edit);
        layout->addWidget(label, row, 0);
        layout->addWidget(edit, row++, 1);
    };
    line("pname_lbl", "ProjectName_txt", pname_lbl, ProjectName_txt);
    line("aname_lbl", "Author_txt", aname_lbl, Author_txt);
    line("comnt_lbl", "Comments_txt", comnt_lbl, Comments_txt);
    addTextEntry(ProjectName_txt, 50, &Room::GSGetProjectName, &Room::GBSetProjectName);
    addTextEntry(Author_txt, 50, &Room::GSGetAuthorName, &Room::GBSetAuthorName);
    addTextEntry(Comments_txt, 200, &Room::GSGetComment, &Room::GBSetComment);
    return Project_fra;
}

void RoomPage::addTextEntry(QLineEdit* edit, int maxLength, std::string (Room::*get)() const,
                            bool (Room::*set)(std::string_view))
{
    edit->setMaxLength(maxLength);
    m_entries.add(
        edit,
        [this, set](const QString& text, Gesture gesture) {
            return m_editor.editRoom(
                {Text::StepProjectText},
                [&](Room& room) { return (room.*set)(text.toStdString()); }, gesture);
        },
        [this, get] { return trimmed((m_editor.room().*get)()); });
}

void RoomPage::addPairEntry(QLineEdit* edit, Text step, int element, FloatPair (Room::*get)() const,
                            bool (Room::*set)(std::span<const float>))
{
    const auto at = static_cast<std::size_t>(element);
    m_entries.addLength(
        edit,
        [this, step, at, get, set](double metres, Gesture gesture) {
            return m_editor.editRoom(
                {step},
                [&](Room& room) {
                    FloatPair pair = (room.*get)();
                    pair[at] = static_cast<float>(metres);
                    return (room.*set)(pair);
                },
                gesture);
        },
        [this, at, get] { return static_cast<double>((m_editor.room().*get)()[at]); });
}

QWidget* RoomPage::roomFrame()
{
    auto* frame = named<QGroupBox>("fraRoom", this);
    auto* layout = new QGridLayout(frame);
    const auto entry = [&](const char* name, QLineEdit*& edit, int row, int column) {
        edit = named<NumberEdit>(name, frame);
        layout->addWidget(edit, row, column);
        auto* unit = new QLabel(frame);
        m_units.push_back(unit);
        layout->addWidget(unit, row, column + 1);
    };
    const auto label = [&](const char* name, int row, int column) {
        auto* made = named<QLabel>(name, frame);
        layout->addWidget(made, row, column);
        return made;
    };
    lblRoom = label("lblRoom", 0, 0);
    roomWid_lbl = label("roomWid_lbl", 0, 1);
    entry("RoomWidth_txt", RoomWidth_txt, 0, 2);
    roomHei_lbl = label("roomHei_lbl", 0, 4);
    entry("RoomHeight_txt", RoomHeight_txt, 0, 5);
    roomWid_lbl->setBuddy(RoomWidth_txt);
    roomHei_lbl->setBuddy(RoomHeight_txt);
    const auto position = [&](const char* name, QLabel*& what, const char* xName, QLineEdit*& x,
                              const char* yName, QLineEdit*& y, int row) {
        what = label(name, row, 0);
        m_axes.push_back(label("lblX", row, 1));
        entry(xName, x, row, 2);
        m_axes.back()->setBuddy(x);
        m_axes.push_back(label("lblY", row, 4));
        entry(yName, y, row, 5);
        m_axes.back()->setBuddy(y);
    };
    position("Label2", Label2, "refX_txt", refX_txt, "refY_txt", refY_txt, 1);
    position("Label21", Label21, "FOHX_txt", FOHX_txt, "FOHY_txt", FOHY_txt, 2);
    layout->setColumnStretch(0, 1);
    addPairEntry(RoomWidth_txt, Text::StepRoomSize, 0, &Room::GFAGetRoomDims, &Room::GBSetRoomDims);
    addPairEntry(RoomHeight_txt, Text::StepRoomSize, 1, &Room::GFAGetRoomDims,
                 &Room::GBSetRoomDims);
    addPairEntry(refX_txt, Text::StepReference, 0, &Room::GFAGetPointOfRef, &Room::GBSetPointOfRef);
    addPairEntry(refY_txt, Text::StepReference, 1, &Room::GFAGetPointOfRef, &Room::GBSetPointOfRef);
    addPairEntry(FOHX_txt, Text::StepFoh, 0, &Room::GFAGetFOH, &Room::GBSetFOH);
    addPairEntry(FOHY_txt, Text::StepFoh, 1, &Room::GFAGetFOH, &Room::GBSetFOH);
    return frame;
}

QWidget* RoomPage::areasFrame()
{
    auto* frame = new QWidget(this);
    auto* layout = new QGridLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    Label1 = named<QLabel>("Label1", frame);
    numAreas_cmb = named<ListBox>("numAreas_cmb", frame);
    numAreas_cmb->addItems({"1", "2", "3"});
    Label1->setBuddy(numAreas_cmb);
    layout->addWidget(Label1, 0, 0);
    layout->addWidget(numAreas_cmb, 0, 1, Qt::AlignLeft);
    layout->setColumnStretch(1, 1);
    connect(numAreas_cmb, &QComboBox::activated, this, [this](int index) {
        m_editor.editRoom({Text::StepAreaCount}, [&](Room& room) {
            return room.GBSetNumAreas(static_cast<std::int16_t>(index + 1));
        });
    });

    for (int i = 0; i < Room::kAreas; ++i) {
        addArea(i, frame);
        layout->addWidget(m_areas[static_cast<std::size_t>(i)].frame, i + 1, 0, 1, 2);
    }
    return frame;
}

void RoomPage::addArea(int i, QWidget* frame)
{
    const char* const names[] = {"txtXone", "txtYone",  "txtXtwo",
                                 "txtYtwo", "txtAngle", "txtLength"};
    const char* const labels[] = {"lblXone", "lblYone", "lblXtwo", "lblYtwo", "lblAAng", "lblLen"};
    Area& area = m_areas[static_cast<std::size_t>(i)];
    area.frame = named<QGroupBox>(elementName("fraArea", i), frame);
    auto* grid = new QGridLayout(area.frame);
    for (std::size_t k = 0; k < kAreaEntries.size(); ++k) {
        const AreaEntry entry = kAreaEntries[k];
        QLineEdit* edit = named<NumberEdit>(elementName(names[k], i), area.frame);
        QLabel* label = named<QLabel>(elementName(labels[k], i), area.frame);
        label->setBuddy(edit);
        area.edits[k] = edit;
        area.labels[k] = label;
        const int row = static_cast<int>(k) / 2;
        const int column = static_cast<int>(k) % 2 * 3;
        grid->addWidget(label, row, column);
        grid->addWidget(edit, row, column + 1);
        auto* unit = new QLabel(area.frame);
        if (entry == AreaEntry::Angle)
            unit->setText(m_editor.session().text(Text::Degrees));
        else
            m_units.push_back(unit);
        grid->addWidget(unit, row, column + 2);
        grid->setColumnStretch(column, 1);

        m_entries.add(
            edit,
            [this, i, entry](const QString& text, Gesture gesture) {
                return m_editor.editRoom(
                    {Text::StepArea, i + 1},
                    [&](Room& room) {
                        const auto synced =
                            SyncAreaEntries(*room.GFAGetAudienceAreaSelect(i + 1), entry,
                                            text.toStdString(), m_editor.inMetres());
                        return synced && setArea(room, i + 1, *synced);
                    },
                    gesture);
            },
            [this, i, k, entry] {
                const double value = (*m_editor.room().GFAGetAudienceAreaSelect(i + 1))[k];
                return qtText(entry == AreaEntry::Angle ? plainText(value, 3)
                                                        : shownLength(value, m_editor.inMetres()));
            });
    }
}

void RoomPage::showTexts()
{
    const auto text = [this](Text id) { return m_editor.session().text(id); };
    Project_fra->setTitle(text(Text::ProjectInfo));
    pname_lbl->setText(text(Text::ProjectLabel));
    aname_lbl->setText(text(Text::AuthorLabel));
    comnt_lbl->setText(text(Text::CommentsLabel));
    lblRoom->setText(text(Text::RoomLabel));
    roomWid_lbl->setText(text(Text::LengthLabel));
    roomHei_lbl->setText(text(Text::HeightLabel));
    Label21->setText(text(Text::Foh));
    Label2->setText(text(Text::ReferencePoint));
    for (std::size_t i = 0; i < m_axes.size(); ++i)
        m_axes[i]->setText(text(i % 2 == 0 ? Text::XLabel : Text::YLabel));
    Label1->setText(text(Text::AudienceAreas));
    const Text entries[] = {Text::AreaX1, Text::AreaY1, Text::AreaX2,
                            Text::AreaY2, Text::Angle,  Text::Length};
    for (std::size_t i = 0; i < m_areas.size(); ++i) {
        m_areas[i].frame->setTitle(text(areaText(static_cast<int>(i) + 1)));
        for (std::size_t k = 0; k < kAreaEntries.size(); ++k)
            m_areas[i].labels[k]->setText(text(entries[k]));
    }
}

/// The drawing in words.
QString RoomPage::summary() const
{
    const Room& room = m_editor.room();
    const auto length = [this](double metres) {
        return qtText(shownLength(metres, m_editor.inMetres()));
    };
    QString text = m_editor.session()
                       .text(Text::RoomSummary)
                       .arg(length(room.size().width), length(room.size().height),
                            qtText(lengthUnit(m_editor.session().textOptions())));
    for (int number = 1; number <= room.GIGetNumAreas(); ++number) {
        const Segment area = room.area(number);
        text += m_editor.session()
                    .text(Text::AreaSummary)
                    .arg(number)
                    .arg(length(area.start.x), length(area.start.y), length(area.end.x),
                         length(area.end.y));
    }
    return text;
}

void RoomPage::display()
{
    const Room& room = m_editor.room();
    m_entries.display();
    for (QLabel* unit : m_units)
        unit->setText(qtText(lengthUnit(m_editor.session().textOptions())));
    numAreas_cmb->setCurrentIndex(room.GIGetNumAreas() - 1);
    Room_pbx->redraw();
    Room_pbx->setAccessibleDescription(summary());

    const OutOfRoom& outside = m_editor.outside();
    const QString where = m_editor.session().text(Text::InvalidOutside);
    markInvalid(*refX_txt, outside.reference[0], where);
    markInvalid(*refY_txt, outside.reference[1], where);
    markInvalid(*FOHX_txt, outside.foh[0], where);
    markInvalid(*FOHY_txt, outside.foh[1], where);
    for (std::size_t i = 0; i < m_areas.size(); ++i) {
        const bool used = static_cast<int>(i) < room.GIGetNumAreas();
        for (std::size_t k = 0; k < kAreaEntries.size(); ++k) {
            m_areas[i].edits[k]->setEnabled(used);
            m_areas[i].labels[k]->setEnabled(used);
            if (k < 4)
                markInvalid(*m_areas[i].edits[k], outside.areas[i][k], where);
        }
    }
}

} // namespace orva::ui
