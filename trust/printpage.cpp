#include "trust/printpage.h"

#include "fit/numbertext.h"
#include "trust/tableview.h"
#include "ui/clipboard.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace trust
{
namespace
{

struct TypedBox {
    const char* name;
    const char* caption;
    double noise::TypedErrors::*error;
};

constexpr std::array kTypedBoxes{TypedBox{"txtTau0Error", "τ&0", &noise::TypedErrors::tau0},
                                 TypedBox{"txtSError", "&s", &noise::TypedErrors::s},
                                 TypedBox{"txtCpError", "C&p", &noise::TypedErrors::Cp}};

/// An empty box counts as 0; the box takes no other text than a positive number.
double errorOf(const QLineEdit& box) { return fit::numberFrom(box.text().toStdString()) / 100; }

} // namespace

PrintPage::PrintPage(QWidget* parent)
    : QWidget(parent), m_meaning(new QLabel(this)),
      m_ready(makeTable("grdReady", tr("Constants ready to print"), this)),
      m_copy(new QPushButton(tr("Copy as S&entence"), this))
{
    for (std::size_t i = 0; i < m_typed.size(); ++i) {
        m_typed[i] = new QLineEdit("0", this);
        m_typed[i]->setObjectName(kTypedBoxes[i].name);
        m_typed[i]->setValidator(new QRegularExpressionValidator(QRegularExpression("[0-9]{0,3}(\\.[0-9]*)?"), this));
        connect(m_typed[i], &QLineEdit::editingFinished, this, &PrintPage::announce);
    }
    m_meaning->setObjectName("lblMeaning");
    m_meaning->setWordWrap(true);
    m_copy->setObjectName("cmdCopySentence");
    layOut();
    connect(m_copy, &QPushButton::clicked, this, [this] { ui::copyText(qtText(m_sentence)); });
}

void PrintPage::layOut()
{
    auto* boxes = new QHBoxLayout;
    boxes->addWidget(new QLabel(tr("Standard errors in %:"), this));
    for (std::size_t i = 0; i < m_typed.size(); ++i) {
        m_captions[i] = new QLabel(tr(kTypedBoxes[i].caption), this);
        m_captions[i]->setBuddy(m_typed[i]);
        boxes->addWidget(m_captions[i]);
        boxes->addWidget(m_typed[i]);
    }
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_copy);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(boxes);
    layout->addWidget(m_meaning);
    layout->addWidget(m_ready, 1);
    layout->addLayout(buttons);
}

void PrintPage::showErrors(const ErrorText& text)
{
    m_sentence = text.sentence;
    m_meaning->setText(tr("The constants of the analysis, %1:").arg(qtText(text.meaning)));
    for (std::size_t i = 0; i < m_typed.size(); ++i)
        for (QWidget* widget : std::initializer_list<QWidget*>{m_captions[i], m_typed[i]})
            widget->setVisible(std::count(text.entering.begin(), text.entering.end(), kTypedBoxes[i].error) > 0);
    fillTable(*m_ready, text.ready);
}

void PrintPage::setTyped(const noise::TypedErrors& typed)
{
    for (std::size_t i = 0; i < m_typed.size(); ++i)
        m_typed[i]->setText(qtText(fit::plainText(100 * typed.*kTypedBoxes[i].error)));
    m_announced = typed;
}

/// Once for each change: leaving a box also ends its editing.
void PrintPage::announce()
{
    noise::TypedErrors typed;
    for (std::size_t i = 0; i < m_typed.size(); ++i)
        typed.*kTypedBoxes[i].error = errorOf(*m_typed[i]);
    if (typed == m_announced)
        return;
    m_announced = typed;
    emit typedErrorsChanged(typed);
}

} // namespace trust
