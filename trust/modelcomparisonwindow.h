#pragma once

#include "trust/modelcomparison.h"
#include "trust/searchprogress.h"

#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QStandardItemModel;
class QTableView;

namespace trust
{

class ErrorsChoice;

/// A table of all models on the same data, sortable by any column, with notes below it.
class ModelComparisonWindow : public QWidget
{
    Q_OBJECT

public:
    ModelComparisonWindow();

    /// Shows the start of a comparison and returns its progress object.
    ProgressBarProgress begin(const QString& heading);
    /// Shows the models; none after a cancelled comparison.
    void showModels(const Comparison& comparison);
    void showErrors(const noise::Errors& errors);
    const Comparison& comparison() const { return m_comparison; } // the last one shown

signals:
    void errorsChanged(const noise::Errors& errors);
    void modelChosen(models::Analysis analysis, int model, const fit::Parameters& start);

protected:
    void closeEvent(QCloseEvent* event) override; // ends a comparison

private:
    void layOut();
    void fillRows();
    void fitColumns();
    void announceRow(const QModelIndex& index);
    void sortByCurrentColumn();
    void copy();

    QLabel *m_heading, *m_hint;
    ErrorsChoice* m_errors;
    QProgressBar* m_progress;
    QTableView* m_table;
    QStandardItemModel* m_cells;
    QPlainTextEdit* m_notes;
    QPushButton *m_cancel, *m_copy;
    Comparison m_comparison;
    bool m_cancelled = false;
};

} // namespace trust
