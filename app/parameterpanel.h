#pragma once

#include "app/panelvalues.h"
#include "models/catalogue.h"

#include <QWidget>

class QButtonGroup;
class QCheckBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLayout;
class QLineEdit;

namespace app
{

class EditSteps;
class ModelFrame;
struct SharedState;

/// Model, start values and fit controls. The panel keeps texts as typed; a command converts them when it runs.
class ParameterPanel : public QWidget, public PanelEditor
{
    Q_OBJECT

public:
    explicit ParameterPanel(SharedState& shared, QWidget* parent = nullptr);

    PanelState panelState() const override;
    /// Shows a state. A model outside 1..13 does not change the selected model.
    void setPanelState(const PanelState& panel) override;

    /// Chooses a model and enables the boxes that it uses; a number outside 1..13 does nothing.
    void chooseModel(int model);

    /// Copies the model and the start values from the texts of a results row, columns 0..8 as displayed.
    void restore(const QStringList& resultRow);

    /// Announces what the user enters and what commands fill in, as steps.
    EditSteps& steps() { return *m_steps; }

signals:
    void changed(); // a text, the model or an option

private:
    QGroupBox* makeFitRegionFrame();
    QLayout* makeParameterBoxes();
    struct Cell {
        int row, column;
    };
    /// A box with its label left of it; the cell is that of the label.
    QLineEdit* addBox(QGridLayout& grid, Cell cell, QLabel* label, const char* name);
    void showPanel(const PanelState& panel);
    QLineEdit* box(models::Box box) const;
    void modelChosen(int model);
    void fitRegionToggled(int option, bool chosen);

    SharedState& m_shared;
    ModelFrame* m_models;
    QButtonGroup* m_fitRegions;
    EditSteps* m_steps;
    QLabel* m_kq1Label;
    QLineEdit *m_kq1, *m_kq2, *m_K, *m_F, *m_s, *m_Cp, *m_tolerance, *m_iteration, *m_fitRegion;
    QCheckBox *m_fixKq2, *m_fixF;
};

} // namespace app
