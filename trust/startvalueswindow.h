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

/// Start values on their way and found: progress, the solutions to choose from, and what they mean.
class StartValuesWindow : public QWidget
{
    Q_OBJECT

public:
    StartValuesWindow();

    /// Shows that a search begins; the progress to hand to it.
    ProgressBarProgress begin(const QString& heading);
    /// Shows what came of it, with the first solution chosen; none: it was cancelled or found nothing.
    void showFound(const FoundStarts& found);
    void showNothingFound(const QString& reason);

signals:
    void startChosen(const fit::Parameters& values);
    void backChosen(); // to the typed values

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
    QPushButton *m_cancel, *m_back, *m_copy;
    FoundStarts m_found;
    bool m_cancelled = false;
};

} // namespace trust
