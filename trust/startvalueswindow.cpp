#include "trust/startvalueswindow.h"

#include "trust/tableview.h"
#include "ui/clipboard.h"
#include "ui/closing.h"
#include "ui/oldernote.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace trust
{

StartValuesWindow::StartValuesWindow()
    : m_heading(new QLabel(this)), m_progress(new QProgressBar(this)), m_solutions(new QListWidget(this)),
      m_text(new QPlainTextEdit(this)), m_cancel(new QPushButton(tr("C&ancel"), this)),
      m_back(new QPushButton(tr("&Back"), this)), m_copy(new QPushButton(tr("&Copy"), this)),
      m_fit(new QPushButton(tr("&Fit"), this)), m_close(new QPushButton(tr("C&lose"), this))
{
    setWindowTitle(tr("Start Values"));
    m_heading->setObjectName("lblSearch");
    m_progress->setObjectName("barSearch");
    m_progress->setAccessibleName(tr("Progress of the search"));
    m_progress->setTextVisible(false);
    m_solutions->setObjectName("lstSolutions");
    m_solutions->setAccessibleName(tr("Solutions"));
    m_text->setObjectName("txtFound");
    m_text->setAccessibleName(tr("Result of the search"));
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_cancel->setObjectName("cmdCancelSearch");
    m_back->setObjectName("cmdBack");
    m_copy->setObjectName("cmdCopyFound");
    m_fit->setObjectName("cmdFit");
    m_close->setObjectName("cmdCloseStarts");
    layOut();
    ui::closeOnEscape(*this);
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_cancelled = true; });
    connect(m_back, &QPushButton::clicked, this, &StartValuesWindow::goBack);
    connect(m_copy, &QPushButton::clicked, this, &StartValuesWindow::copy);
    connect(m_fit, &QPushButton::clicked, this, &StartValuesWindow::fitChosen);
    connect(m_close, &QPushButton::clicked, this, &QWidget::close);
    connect(m_solutions, &QListWidget::currentRowChanged, this, &StartValuesWindow::showChoice);
}

void StartValuesWindow::layOut()
{
    auto* caption = new QLabel(tr("&Solutions, the best one first:"), this);
    caption->setBuddy(m_solutions);
    m_solutions->setMaximumHeight(4 * m_solutions->fontMetrics().lineSpacing() + 12);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {m_cancel, m_back, m_copy, m_fit, m_close})
        buttons->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_heading);
    layout->addWidget(ui::makeOlderNote(this));
    layout->addWidget(m_progress);
    layout->addWidget(caption);
    layout->addWidget(m_solutions);
    layout->addWidget(m_text);
    layout->addLayout(buttons);
}

ProgressBarProgress StartValuesWindow::begin(const QString& heading)
{
    m_cancelled = false;
    m_heading->setText(heading);
    m_found = {};
    {
        const QSignalBlocker filling(m_solutions);
        m_solutions->clear();
    }
    m_text->setPlainText(tr("Searching..."));
    m_cancel->setEnabled(true);
    m_back->setEnabled(false);
    m_copy->setEnabled(false);
    m_fit->setEnabled(false);
    m_cancel->setFocus();
    return {*m_progress, m_cancelled};
}

void StartValuesWindow::showFound(const FoundStarts& found)
{
    m_found = found;
    m_progress->setValue(m_progress->maximum());
    m_cancel->setEnabled(false);
    m_back->setEnabled(true);
    m_copy->setEnabled(true);
    m_fit->setEnabled(true);
    for (const FoundStart& start : m_found.starts)
        m_solutions->addItem(qtText(valuesText(m_found.model, start.solution.values)));
    m_solutions->setCurrentRow(0); // which chooses it
    m_solutions->setFocus();
}

void StartValuesWindow::showNothingFound(const QString& reason)
{
    m_cancel->setEnabled(false);
    m_text->setPlainText(reason);
}

void StartValuesWindow::showChoice(int row)
{
    const auto chosen = static_cast<std::size_t>(row);
    if (row < 0 || chosen >= m_found.starts.size())
        return;
    m_text->setPlainText(qtText(foundText(m_found, chosen)));
    emit startChosen(m_found.starts[chosen].start.values);
}

void StartValuesWindow::goBack()
{
    m_solutions->setCurrentRow(-1); // so that every solution can be chosen again
    m_text->setPlainText(tr("The boxes hold the typed values. Choose a solution above to use its values."));
    emit backChosen();
}

void StartValuesWindow::closeEvent(QCloseEvent* event)
{
    m_cancelled = true;
    QWidget::closeEvent(event);
}

void StartValuesWindow::copy()
{
    QString text = m_heading->text() + "\r\n";
    for (int row = 0; row < m_solutions->count(); ++row)
        text += m_solutions->item(row)->text() + "\r\n";
    ui::copyText(text + m_text->toPlainText());
}

} // namespace trust
