#pragma once

#include "drawing/spectrum_drawing.h"
#include "main/editor.h"
#include "main/page.h"
#include "widgets/drawing_widget.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>

namespace orva::ui {

/// A page that shows levels: of the array, the room and what is chosen.
class LevelPage : public Page {
public:
    LevelPage(Editor& editor, QWidget* parent);

protected:
    bool concerns(const Shown& what) const override
    {
        const Changes& changes = what.changes;
        return what.everything || what.view || changes.room || changes.array || changes.setup ||
               changes.variants;
    }
};

/// The spectrum at the pointer and at the markers, which are listed beside it.
class SpectrumPage final : public LevelPage {
public:
    SpectrumPage(Editor& editor, QWidget* parent);

protected:
    void display() override;

private:
    void prepare();

    DrawingWidget* Spectrum_pbx;
    QTableWidget* tblProbes;
    std::vector<Spectrum> m_spectra;
};

/// The strip of the selected area: distance against frequency.
class StripPage final : public LevelPage {
public:
    StripPage(Editor& editor, QWidget* parent);

protected:
    void display() override;

private:
    void prepare();
    void showFigure(QPointF position);

    DrawingWidget* Strip_pbx;
    Strip m_strip;
};

/// The rows of the selected area as a table.
class RowsPage final : public LevelPage {
public:
    RowsPage(Editor& editor, QWidget* parent);

protected:
    void display() override;

private:
    QLineEdit* entry(const char* name, double ViewState::*metres, bool aboveZero);
    void copy() const;

    QTableWidget* tblRows;
    QLabel* m_pitch;
    QLabel* m_offset;
    QLineEdit* txtRowPitch;
    QLineEdit* txtRowOffset;
    QPushButton* cmdRowsCsv;
};

/// The variants with their figures.
class VariantsPage final : public LevelPage {
public:
    VariantsPage(Editor& editor, QWidget* parent);

protected:
    void display() override;

private:
    QTableWidget* tblVariants;
};

/// What is below the room view: the curve, and beside it spectrum, strip and rows.
class LevelPages final : public QTabWidget {
public:
    LevelPages(Editor& editor, QWidget* curve, QWidget* parent);

private:
    void showTexts();

    Editor& m_editor;
};

} // namespace orva::ui
