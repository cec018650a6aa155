#include "plot/samplelist.h"

#include "plot/legend.h"

#include <QAbstractItemView>
#include <QPainter>

namespace plot
{
namespace
{

QIcon swatch(Color c, int side)
{
    QPixmap pixmap(side, side);
    pixmap.fill(QColor(c & 0xff, c >> 8 & 0xff, c >> 16 & 0xff));
    QPainter painter(&pixmap);
    painter.setPen(Qt::black);
    painter.drawRect(0, 0, side - 1, side - 1);
    return pixmap;
}

} // namespace

SampleList::SampleList(QWidget* parent) : QComboBox(parent)
{
    setObjectName("cboSamples");
    setAccessibleName("Samples of the plot");
    setAccessibleDescription("Choosing a sample puts rings around its points.");
    setSizeAdjustPolicy(AdjustToContents);
    connect(this, &QComboBox::currentIndexChanged, this, [this] { emit sampleChosen(currentData().toInt()); });
    removeSamples();
}

void SampleList::removeSamples()
{
    clear();
    addItem("Samples");
}

void SampleList::addSample(const LegendEntry& entry)
{
    QString text = QString::fromStdString(legendText(entry));
    if (isRightToLeft()) // without the mark, "2: 0.04 M" would appear as "M 0.04 :2"
        text.insert(text.indexOf(':'), QChar(0x200e));
    addItem(swatch(entry.color, iconSize().height()), text, entry.number);
    setMaxVisibleItems(count()); // the whole legend at a glance
}

void SampleList::showPopup()
{
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + 2 * view()->frameWidth());
    QComboBox::showPopup();
}

} // namespace plot
