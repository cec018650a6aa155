#include "lifetimes/lifetimeswindow.h"

#include "lifetimes/errorratiochoice.h"
#include "lifetimes/fitpage.h"
#include "lifetimes/picturepage.h"
#include "models/catalogue.h"
#include "trust/tableview.h"
#include "ui/clipboard.h"
#include "ui/closing.h"
#include "ui/wrappinglabel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace lifetimes
{

using trust::makeTable;
using trust::qtText;

LifetimesWindow::LifetimesWindow()
    : m_finding(ui::wrappingLabel("lblFinding", this)), m_remarks(ui::wrappingLabel("lblDataRemarks", this)),
      m_errors(new ErrorRatioChoice(this)), m_assumption(ui::wrappingLabel("lblErrorRatio", this)),
      m_modelCaption(new QLabel(tr("&Model:"), this)), m_models(new QComboBox(this)),
      m_verdict(ui::wrappingLabel("lblTogetherVerdict", this)), m_picture(new PicturePage(this)),
      m_pages(new QTabWidget(this)), m_fit(new FitPage(this)), m_samples(makeTable("grdSamples", tr("Samples"), this)),
      m_static(makeTable("grdStaticFactor", tr("Static factor"), this)),
      m_ranking(makeTable("grdRanking", tr("Models, best first"), this)),
      m_readAgain(new QPushButton(tr("Read the Sheet A&gain"), this)),
      m_type(new QPushButton(tr("&Type These Values"), this)),
      m_copySentence(new QPushButton(tr("Copy as S&entence"), this)), m_copy(new QPushButton(tr("&Copy"), this)),
      m_close(new QPushButton(tr("C&lose"), this))
{
    setWindowTitle(tr("Intensities and Lifetimes"));
    nameControls();
    layOut();
    ui::closeOnEscape(*this);
    connectControls();
    showModel();
    m_close->setFocus();
}

void LifetimesWindow::nameControls()
{
    m_models->setObjectName("cboTogetherModel");
    m_modelCaption->setBuddy(m_models);
    m_pages->setObjectName("tabTogether");
    m_readAgain->setObjectName("cmdReadAgain");
    m_type->setObjectName("cmdTypeTogether");
    m_copySentence->setObjectName("cmdCopyTogetherSentence");
    m_copy->setObjectName("cmdCopyTogether");
    m_close->setObjectName("cmdCloseTogether");
    QFont bold = m_finding->font();
    bold.setBold(true);
    m_finding->setFont(bold);
    m_ranking->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_ranking->setSelectionMode(QAbstractItemView::SingleSelection);
}

void LifetimesWindow::layOut()
{
    auto* choices = new QHBoxLayout;
    choices->addWidget(m_modelCaption);
    choices->addWidget(m_models);
    choices->addWidget(m_verdict, 1);
    auto* parts = new QSplitter(this);
    parts->addWidget(m_picture);
    parts->addWidget(pages());
    parts->setChildrenCollapsible(false);
    parts->setSizes({3000, 5000}); // shares, larger than any minimum
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_readAgain);
    buttons->addStretch();
    for (QPushButton* button : {m_type, m_copySentence, m_copy, m_close})
        buttons->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    for (QWidget* widget : std::initializer_list<QWidget*>{m_finding, m_remarks, m_errors, m_assumption})
        layout->addWidget(widget);
    layout->addLayout(choices);
    layout->addWidget(parts, 1);
    layout->addLayout(buttons);
}

QWidget* LifetimesWindow::pages()
{
    m_pages->addTab(m_fit, tr("Co&nstants"));
    m_pages->addTab(tablePage(tr("&Ratios and mean lifetimes τ:"), *m_samples,
                              tr("τ is weighted by the amplitudes. Means weighted by intensity are never fitted.")),
                    tr("&Samples"));
    m_pages->addTab(
        tablePage(tr("Static factor s = (Φ0/Φ)/(τ0/τ) with stan&dard errors:"), *m_static,
                  tr("For collisions alone s is 1. For a dark complex (s − 1)/Q is level, for a dark sphere "
                     "ln s/Q.")),
        tr("Static &Factor"));
    m_pages->addTab(tablePage(tr("Models, &best first; a click shows one:"), *m_ranking,
                              tr("AICc counts intensities and lifetimes; lower is better. Models with constants that "
                                 "the data do not determine come after the others.")),
                    tr("M&odels"));
    return m_pages;
}

QWidget* LifetimesWindow::tablePage(const QString& caption, QTableWidget& table, const QString& meaning)
{
    auto* page = new QWidget(this);
    auto* label = new QLabel(caption, page);
    label->setBuddy(&table);
    auto* words = new QLabel(meaning, page);
    words->setWordWrap(true);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(label);
    layout->addWidget(words);
    layout->addWidget(&table, 1);
    return page;
}

void LifetimesWindow::connectControls()
{
    connect(m_models, &QComboBox::activated, this, &LifetimesWindow::chooseModel);
    connect(m_ranking, &QTableWidget::currentCellChanged, this, &LifetimesWindow::chooseModel);
    connect(m_errors, &ErrorRatioChoice::ratioChanged, this, &LifetimesWindow::ratioChanged);
    connect(m_readAgain, &QPushButton::clicked, this, &LifetimesWindow::readAgainChosen);
    connect(m_type, &QPushButton::clicked, this, [this] {
        const Place* place = shownPlace();
        emit valuesChosen(place->model, place->fit->minimum.values);
    });
    connect(m_copySentence, &QPushButton::clicked, this, [this] { copy(m_fitText.sentence); });
    connect(m_copy, &QPushButton::clicked, this,
            [this] { copy(plainText(m_text) + "\r\n" + (m_fitText.heading.empty() ? "" : plainText(m_fitText))); });
    connect(m_close, &QPushButton::clicked, this, &QWidget::close);
}

ErrorRatio LifetimesWindow::ratio() const { return m_errors->ratio(); }

void LifetimesWindow::showOverview(const Overview& overview, const QString& complaint)
{
    m_overview = overview;
    m_text = overviewText(overview);
    m_changed = false;
    showFinding();
    m_remarks->setText(qtText(m_text.remarks));
    m_remarks->setVisible(!m_text.remarks.empty());
    m_assumption->setText(complaint.isEmpty()
                              ? qtText(m_text.errors)
                              : tr("%1 Until then both are taken to have the same relative error.").arg(complaint));
    m_errors->offerEstimates(canEstimateEach(overview.measurements));
    trust::fillTable(*m_samples, m_text.samples);
    trust::fillTable(*m_static, m_text.staticFactor);
    fillModels();
    showModel();
}

void LifetimesWindow::fillModels()
{
    const QSignalBlocker filling(m_ranking);
    trust::fillTable(*m_ranking, m_text.ranking);
    m_models->clear();
    for (const Place& place : m_overview.places)
        m_models->addItem(tr("Model %1: %2").arg(place.model).arg(qtText(std::string(models::row(place.model).name))));
    const auto& places = m_overview.places;
    const auto chosen = std::ranges::find(places, m_chosen, &Place::model);
    const int row = chosen == places.end() ? 0 : static_cast<int>(chosen - places.begin());
    m_models->setCurrentIndex(row);
    m_ranking->setCurrentCell(row, 0);
}

void LifetimesWindow::chooseModel(int row)
{
    if (row < 0)
        return;
    const QSignalBlocker showing(m_ranking);
    m_models->setCurrentIndex(row);
    m_ranking->setCurrentCell(row, std::max(0, m_ranking->currentColumn()));
    m_chosen = shownPlace()->model;
    showModel();
}

const Place* LifetimesWindow::shownPlace() const
{
    const int row = m_models->currentIndex();
    return row < 0 ? nullptr : &m_overview.places[static_cast<std::size_t>(row)];
}

void LifetimesWindow::showModel()
{
    const Place* place = shownPlace();
    const CombinedFit* fit = place && place->fit ? &*place->fit : nullptr;
    m_fitText = fit ? fitText(m_overview, *fit) : FitText{};
    m_verdict->setText(qtText(fit ? m_fitText.verdict : place ? place->whyNotFitted : ""));
    m_picture->showFit(m_overview.measurements, fit);
    const models::Model row = fit ? models::row(fit->model) : models::Model{};
    m_fit->showFit(m_fitText, row.uses(models::Box::K) && row.uses(models::Box::kq2));
    m_copy->setEnabled(place);
    for (QPushButton* button : {m_type, m_copySentence})
        button->setEnabled(fit);
}

QString LifetimesWindow::dated(const QString& text) const
{
    return m_changed ? tr("of data changed since: %1").arg(text) : text;
}

void LifetimesWindow::copy(const std::string& text) const { ui::copyText(dated(qtText(text))); }

void LifetimesWindow::showFinding()
{
    m_finding->setText(dated(qtText(m_text.finding)));
    m_readAgain->setEnabled(m_changed);
}

void LifetimesWindow::showChanged(bool changed)
{
    m_changed = changed;
    showFinding();
}

void LifetimesWindow::closeEvent(QCloseEvent* event)
{
    m_chosen = 0;
    QWidget::closeEvent(event);
}

} // namespace lifetimes
