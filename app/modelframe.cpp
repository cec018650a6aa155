#include "app/modelframe.h"

#include "app/explained.h"
#include "models/catalogue.h"
#include "models/guide.h"
#include "ui/optiongroup.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QRadioButton>

namespace app
{
namespace
{

constexpr int kOptionsPerRow = 3;

} // namespace

ModelFrame::ModelFrame(QWidget* parent) : QGroupBox(tr("Model"), parent), m_options(new QButtonGroup(this))
{
    setObjectName("Frame1");
    auto* grid = new QGridLayout(this);
    ui::tighten(*grid);
    int row = 0;
    int column = 0;
    std::string_view above;
    for (int model = 1; model <= models::kModelCount; ++model) {
        const std::string_view group = models::row(model).group;
        if (group != above)
            grid->addWidget(new QLabel(QString::fromUtf8(group.data(), static_cast<qsizetype>(group.size())), this),
                            ++row, 0, 1, kOptionsPerRow);
        if (group != above || column == kOptionsPerRow) {
            ++row;
            column = 0;
        }
        above = group;
        grid->addWidget(makeOption(model), row, column++);
    }
    ui::stopTabAtChosen(*m_options);
    // Checked, not clicked: assistive technology checks an option without a click.
    connect(m_options, &QButtonGroup::idToggled, this, [this](int model, bool checked) {
        if (checked)
            emit chosen(model);
    });
}

QRadioButton* ModelFrame::makeOption(int model)
{
    auto* option = new QRadioButton(tr("Model %1").arg(model), this);
    option->setObjectName(QString("opnModel%1").arg(model));
    explain(*option, std::string(models::row(model).group) + "\n" + models::modelText(model));
    option->installEventFilter(this);
    m_options->addButton(option, model);
    return option;
}

int ModelFrame::model() const { return m_options->checkedId(); }

void ModelFrame::choose(int model)
{
    if (QAbstractButton* option = m_options->button(model))
        option->setChecked(true);
}

// By default an arrow key goes to the nearest option on the screen and so skips some. Here all four keys follow the
// model numbers.
bool ModelFrame::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QGroupBox::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Right:
    case Qt::Key_Down:
        step(1);
        return true;
    case Qt::Key_Left:
    case Qt::Key_Up:
        step(-1);
        return true;
    default:
        return false;
    }
}

void ModelFrame::step(int by)
{
    if (QAbstractButton* option = m_options->button(model() + by)) {
        option->setFocus();
        option->click();
    }
}

} // namespace app
