#include "ui/oldernote.h"

#include <QCoreApplication>
#include <QLabel>

namespace ui
{
namespace
{

constexpr auto kName = "lblOlderData";

} // namespace

QLabel* makeOlderNote(QWidget* window)
{
    auto* note = new QLabel(
        QCoreApplication::translate("ui::OlderNote", "The data were changed since. All this is of the older data."),
        window);
    note->setObjectName(kName);
    note->setWordWrap(true);
    note->hide();
    return note;
}

void showOlderNote(const QWidget& window, bool older)
{
    if (auto* note = window.findChild<QLabel*>(kName))
        note->setVisible(older);
}

} // namespace ui
