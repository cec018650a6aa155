#include "ui/closing.h"

#include <QShortcut>
#include <QWidget>

namespace ui
{

void closeOnEscape(QWidget& window) { new QShortcut(Qt::Key_Escape, &window, &window, &QWidget::close); }

} // namespace ui
