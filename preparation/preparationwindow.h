#pragma once

#include "preparation/preparationtext.h"

#include <QWidget>

class QCheckBox;
class QLabel;
class QPushButton;

namespace ui
{
class Prompter;
class TextBox;
} // namespace ui

namespace preparation
{

class SampleTable;

/// "Prepare Intensities": readings and what corrects them are typed into a table, which shows the prepared intensities
/// beside those of the sheet. What was typed stays while the program runs.
class PreparationWindow : public QWidget
{
    Q_OBJECT

public:
    explicit PreparationWindow(ui::Prompter& prompter);
    ~PreparationWindow() override;
    PreparationWindow(const PreparationWindow&) = delete;
    PreparationWindow& operator=(const PreparationWindow&) = delete;

    /// The samples that the sheet has now. As long as nothing was typed, its intensities are the readings.
    void showSheet(const SheetSamples& sheet);
    /// Intensities of the sheet as readings, and the volumes added before them, in place of what was typed.
    void showTitration(const SheetSamples& sheet, const std::vector<std::string>& added);

signals:
    void applied(const preparation::SheetSamples& texts); // for the sheet
    /// The relative errors of the samples.
    void errorsKnown(const std::vector<double>& errors);

private:
    struct StepBox {
        QCheckBox* box;
        bool Steps::*step;
    };
    void nameControls();
    void layOut();
    TypedSeries typed() const;
    void takeFromSheet();
    void look();
    void showRefusalOf(ui::TextBox& box, Box place, const Refusal* refusal);
    void apply();

    ui::Prompter& m_prompter;
    std::array<StepBox, 4> m_steps;
    ui::TextBox *m_V0, *m_stock;
    SampleTable* m_table;
    QLabel *m_sheetNote, *m_notes;
    QPushButton* m_take;
    QCheckBox* m_handErrors;
    QPushButton *m_apply, *m_close;
    SheetSamples m_sheet;
    SheetSamples m_takenFrom;             // the sheet from which the readings were taken
    SheetSamples m_applied;               // what the last Apply has written
    std::vector<TypedSample> m_untouched; // the table when nothing had been typed since
};

} // namespace preparation
