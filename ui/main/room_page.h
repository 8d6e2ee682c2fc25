#pragma once

#include "main/entries.h"
#include "main/page.h"
#include "widgets/drawing_widget.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QWidget>
#include <array>

namespace orva::ui {

/// The page of the venue: project texts, room, positions, audience areas, and the bare section.
class RoomPage final : public Page {
    Q_OBJECT
public:
    RoomPage(Editor& editor, QWidget* parent);

protected:
    bool concerns(const Shown& what) const override
    {
        const Changes& changes = what.changes; // the array may leave the room
        return what.everything || changes.room || changes.texts || changes.array;
    }
    void display() override;

private:
    QWidget* projectFrame();
    QWidget* roomFrame();
    QWidget* areasFrame();
    void addArea(int i, QWidget* frame);
    void addTextEntry(QLineEdit* edit, int maxLength, std::string (Room::*get)() const,
                      bool (Room::*set)(std::string_view));
    void addPairEntry(QLineEdit* edit, Text step, int element, FloatPair (Room::*get)() const,
                      bool (Room::*set)(std::span<const float>));
    void showTexts();
    QString summary() const;

    Entries m_entries;
    QGroupBox* Project_fra;
    QLabel* pname_lbl;
    QLabel* aname_lbl;
    QLabel* comnt_lbl;
    QLineEdit* ProjectName_txt;
    QLineEdit* Author_txt;
    QLineEdit* Comments_txt;

    QLabel* lblRoom;
    QLabel* roomWid_lbl;
    QLabel* roomHei_lbl;
    QLabel* Label21; ///< FOH
    QLabel* Label2;  ///< point of reference
    QLineEdit* RoomWidth_txt;
    QLineEdit* RoomHeight_txt;
    QLineEdit* FOHX_txt;
    QLineEdit* FOHY_txt;
    QLineEdit* refX_txt;
    QLineEdit* refY_txt;
    std::vector<QLabel*> m_axes; ///< X and Y of the positions, in turn
    std::vector<QLabel*> m_units;

    QLabel* Label1;
    QComboBox* numAreas_cmb;
    struct Area {
        QGroupBox* frame;
        std::array<QLabel*, kAreaEntries.size()> labels;
        std::array<QLineEdit*, kAreaEntries.size()> edits;
    };
    std::array<Area, Room::kAreas> m_areas;
    DrawingWidget* Room_pbx;
};

} // namespace orva::ui
