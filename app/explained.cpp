#include "app/explained.h"

#include "app/sheetreading.h"
#include "models/guide.h"
#include "ui/textbox.h"

namespace app
{
namespace
{

constexpr auto kGuide = "guide"; // property of a control: its explanation without a remark

} // namespace

void explain(QWidget& control, const std::string& text)
{
    control.setProperty(kGuide, QString::fromStdString(text));
    control.setToolTip(QString::fromStdString(text));
    control.setAccessibleDescription(QString::fromStdString(text));
    if (auto* box = qobject_cast<ui::TextBox*>(&control))
        remarkOn(*box);
}

void explain(QWidget& control, const BoxGuide& guide)
{
    explain(control, models::guideText(guide.meaning, guide.unit));
}

void remarkOn(ui::TextBox& box)
{
    const std::string remark = remarkOnNumber(box.text().toStdString());
    const QStringList texts{box.property(kGuide).toString(), QString::fromStdString(remark)};
    const QString text = remark.empty() ? texts.front() : texts.join('\n');
    box.setToolTip(text);
    box.setAccessibleDescription(text);
    box.setRemarked(!remark.empty());
}

} // namespace app
