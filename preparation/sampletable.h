#pragma once

#include "preparation/preparationtext.h"

#include <QTableWidget>

namespace ui
{
class Prompter;
}

namespace preparation
{

/// The table of "Prepare Intensities": what is typed for each sample, and beside it what comes out. Blocks of typed
/// cells are copied, pasted and emptied with the usual keys.
class SampleTable : public QTableWidget
{
    Q_OBJECT

public:
    static constexpr int kSamples = 20;

    SampleTable(ui::Prompter& prompter, QWidget* parent);

    std::vector<TypedSample> typed() const;
    /// Replaces all readings; the other entries stay.
    void setReadings(const std::vector<std::string>& readings);
    void setVolumes(const std::vector<std::string>& added);
    void showSteps(const Steps& steps);
    void showFigures(const Prepared& prepared, const SheetSamples& before);
    /// Marks a cell, for the tooltip and for screen readers; without a cell, none.
    void showRefusal(const Cell* cell, const QString& reason);
    void goTo(const Cell& cell);

signals:
    void edited();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void setColumn(Entry entry, const std::vector<std::string>& texts);
    QTableWidgetItem* item(int sample, Entry entry) const;
    void copy() const;
    void paste();
    void fill(const QString& block);
    void clear(const QModelIndexList& cells);

    ui::Prompter& m_prompter;
};

} // namespace preparation
