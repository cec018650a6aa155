#include "ui/optiongroup.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QLayout>

namespace ui
{

void stopTabAtChosen(QButtonGroup& group)
{
    const auto follow = [](QAbstractButton* option, bool chosen) {
        option->setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);
    };
    for (QAbstractButton* option : group.buttons())
        follow(option, option->isChecked());
    QObject::connect(&group, &QButtonGroup::buttonToggled, &group, follow);
}

void tighten(QLayout& layout)
{
    layout.setContentsMargins(6, 2, 6, 4);
    layout.setSpacing(2);
}

} // namespace ui
