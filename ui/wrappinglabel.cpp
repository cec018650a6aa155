#include "ui/wrappinglabel.h"

#include <QLabel>

namespace ui
{

QLabel* wrappingLabel(const char* name, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace ui
