#pragma once

#include "trust/searchprogress.h"
#include "trust/startstext.h"

#include <QWidget>

class QLabel;
class QListWidget;
class QPlainTextEdit;
class QPushButton;

namespace trust
{

/// The window of a search for start values: its progress, the solutions to choose from, and their explanation.
class StartValuesWindow : public QWidget
{
    Q_OBJECT

public:
    StartValuesWindow();

    /// Shows the start of a search and returns its progress object.
    ProgressBarProgress begin(const QString& heading);
    /// Shows the solutions and selects the first one.
    void showFound(const FoundStarts& found);
    void showNothingFound(const QString& reason);

signals:
    void startChosen(const fit::Parameters& values);
    void backChosen(); // the user wants the typed values again
    void fitChosen();  // from the values in the boxes

protected:
    void closeEvent(QCloseEvent* event) override; // ends a search

private:
    void layOut();
    void showChoice(int row);
    void goBack();
    void copy();

    QLabel* m_heading;
    QProgressBar* m_progress;
    QListWidget* m_solutions;
    QPlainTextEdit* m_text;
    QPushButton *m_cancel, *m_back, *m_copy, *m_fit, *m_close;
    FoundStarts m_found;
    bool m_cancelled = false;
};

} // namespace trust
