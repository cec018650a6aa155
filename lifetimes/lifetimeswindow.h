#pragma once

#include "lifetimes/fittext.h"
#include "lifetimes/overviewtext.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;
class QTableWidget;
class QTabWidget;

namespace lifetimes
{

class ErrorRatioChoice;
class FitPage;
class PicturePage;

/// Intensities and lifetimes together: a picture of both ratios beside tables of the samples, the static factor, the
/// fit of a model and all models. It shows what was read last and does not follow the sheet.
class LifetimesWindow : public QWidget
{
    Q_OBJECT

public:
    LifetimesWindow();

    ErrorRatio ratio() const;
    /// complaint: why the chosen errors cannot be used; empty if they can. A model that was chosen stays chosen until
    /// the window is closed.
    void showOverview(const Overview& overview, const QString& complaint);
    /// Whether the sheet still holds what is shown.
    void showChanged(bool changed);

signals:
    void ratioChanged(const ErrorRatio& ratio);
    void readAgainChosen();
    void valuesChosen(int model, const fit::Parameters& values);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void nameControls();
    void layOut();
    QWidget* pages();
    QWidget* tablePage(const QString& caption, QTableWidget& table, const QString& meaning);
    void connectControls();
    void fillModels();
    void chooseModel(int row);
    void showModel();
    QString dated(const QString& text) const; // says if the data were changed since
    void copy(const std::string& text) const;
    void showFinding();
    const Place* shownPlace() const;

    QLabel *m_finding, *m_remarks;
    ErrorRatioChoice* m_errors;
    QLabel *m_assumption, *m_modelCaption;
    QComboBox* m_models;
    QLabel* m_verdict;
    PicturePage* m_picture;
    QTabWidget* m_pages;
    FitPage* m_fit;
    QTableWidget *m_samples, *m_static, *m_ranking;
    QPushButton *m_readAgain, *m_type, *m_copySentence, *m_copy, *m_close;
    Overview m_overview;
    OverviewText m_text;
    FitText m_fitText;
    int m_chosen = 0; // model; 0: the user has not chosen one, and the first is shown
    bool m_changed = false;
};

} // namespace lifetimes
