#pragma once

#include "trust/modelcomparison.h"
#include "trust/searchprogress.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QStandardItemModel;
class QTableView;

namespace trust
{

/// A table of all models on the same data, sortable by any column.
class ModelComparisonWindow : public QWidget
{
    Q_OBJECT

public:
    ModelComparisonWindow();

    /// Shows the start of a comparison and returns its progress object.
    ProgressBarProgress begin();
    /// Shows the models; none after a cancelled comparison.
    void showModels(const std::vector<ComparedModel>& models);

signals:
    void modelChosen(int model, const fit::Parameters& start);

protected:
    void closeEvent(QCloseEvent* event) override; // ends a comparison

private:
    void layOut();
    void announceRow(const QModelIndex& index);
    void sortByCurrentColumn();
    void copy();

    QLabel* m_hint;
    QProgressBar* m_progress;
    QTableView* m_table;
    QStandardItemModel* m_cells;
    QPushButton *m_cancel, *m_copy;
    std::vector<ComparedModel> m_models;
    bool m_cancelled = false;
};

} // namespace trust
