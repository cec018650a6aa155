#include "ui/optiongroup.h"

#include <QAbstractButton>
#include <QButtonGroup>

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

} // namespace ui
