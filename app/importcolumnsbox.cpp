#include "app/importcolumnsbox.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>

#include <algorithm>
#include <vector>

namespace app
{
namespace
{

using imports::UnitKind;

struct UnitItem {
    const char* text;
    int power;
};

const std::vector<UnitItem>& unitItems(UnitKind kind)
{
    static const std::vector<UnitItem> molar{{"M", 0}, {"mM", -3}, {"µM", -6}, {"nM", -9}, {"pM", -12}};
    static const std::vector<UnitItem> seconds{{"s", 0}, {"ms", -3}, {"µs", -6}, {"ns", -9}, {"ps", -12}};
    return kind == UnitKind::Time ? seconds : molar;
}

QString nameOf(std::size_t quantity)
{
    const std::string_view name = imports::kQuantityRows[quantity].name;
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

/// "3: Fluorescence"; a long title is cut short.
QString columnText(const imports::FoundTable& table, int column)
{
    constexpr int kLongest = 30;
    constexpr QChar kLeftToRightMark(0x200e); // else a right-to-left desktop shows ": Fluorescence3"
    QString title = QString::fromStdString(table.titles[static_cast<std::size_t>(column - 1)]).simplified();
    if (title.size() > kLongest)
        title = title.left(kLongest) + "...";
    return kLeftToRightMark + (title.isEmpty() ? QString::number(column) : QString("%1: %2").arg(column).arg(title));
}

} // namespace

ImportColumnsBox::ImportColumnsBox(imports::Choices& choices, QWidget* parent)
    : QGroupBox(tr("Columns"), parent), m_choices(choices)
{
    auto* layout = new QGridLayout(this);
    for (std::size_t quantity = 0; quantity < imports::kQuantities; ++quantity)
        addQuantity(quantity, *layout);
    layout->setColumnStretch(1, 1);
    layout->setColumnStretch(4, 1);
}

/// Two quantities beside each other: concentration and intensity, then each amplitude and its lifetime, then volumes.
void ImportColumnsBox::addQuantity(std::size_t quantity, QGridLayout& layout)
{
    auto* column = new QComboBox(this);
    column->setObjectName("cboColumn" + QString::number(quantity));
    column->setToolTip(imports::kQuantityRows[quantity].sheetRow > 0
                           ? tr("The column of the table that becomes this row of the sheet")
                           : tr("The column with the volumes of stock solution, each added since the sample before"));
    column->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon); // long titles must not widen it
    column->setMinimumContentsLength(12);
    auto* caption = new QLabel(nameOf(quantity), this);
    caption->setBuddy(column);
    const int row = static_cast<int>(quantity / 2), first = quantity % 2 == 0 ? 0 : 3;
    layout.addWidget(caption, row, first);
    layout.addWidget(column, row, first + 1);
    m_columns[quantity] = column;
    connect(column, &QComboBox::currentIndexChanged, this, [this, quantity](int chosen) {
        m_choices.columns[quantity] = chosen;
        m_choices.units[quantity].reset(); // the other column has its own title
        emit changed();
    });
    if (imports::kQuantityRows[quantity].kind == UnitKind::None)
        return;
    addUnits(quantity);
    layout.addWidget(m_units[quantity], row, first + 2);
}

void ImportColumnsBox::addUnits(std::size_t quantity)
{
    const UnitKind kind = imports::kQuantityRows[quantity].kind;
    auto* units = new QComboBox(this);
    units->setObjectName("cboUnit" + QString::number(quantity));
    units->setAccessibleName(tr("Unit of %1").arg(nameOf(quantity)));
    units->setToolTip(tr("The unit of numbers that have none of their own"));
    for (const UnitItem& item : unitItems(kind))
        units->addItem(item.text);
    m_units[quantity] = units;
    connect(units, &QComboBox::currentIndexChanged, this, [this, quantity, kind](int chosen) {
        m_choices.units[quantity] = imports::Unit{kind, unitItems(kind)[static_cast<std::size_t>(chosen)].power};
        emit changed();
    });
}

void ImportColumnsBox::show(const imports::FoundTable& table)
{
    QStringList columns{tr("none")};
    for (int column = 1; column <= std::min(table.cells.columnCount(), kMostColumns); ++column)
        columns << columnText(table, column);
    for (std::size_t quantity = 0; quantity < imports::kQuantities; ++quantity) {
        const QSignalBlocker filling(m_columns[quantity]);
        m_columns[quantity]->clear();
        m_columns[quantity]->addItems(columns);
        m_columns[quantity]->setCurrentIndex(table.layout.columns[quantity]);
        if (!m_units[quantity])
            continue;
        const QSignalBlocker units(m_units[quantity]);
        const auto& items = unitItems(imports::kQuantityRows[quantity].kind);
        const auto found = std::ranges::find(items, table.layout.units[quantity].power, &UnitItem::power);
        m_units[quantity]->setCurrentIndex(static_cast<int>(found - items.begin()));
        m_units[quantity]->setEnabled(table.layout.columns[quantity] > 0);
    }
}

} // namespace app
