#pragma once

#include "imports/layout.h"

#include <QGroupBox>

#include <array>

class QComboBox;
class QGridLayout;

namespace app
{

/// Which column of a table is what, and in which unit its numbers are.
class ImportColumnsBox : public QGroupBox
{
    Q_OBJECT

public:
    /// The columns that can be chosen; no table of samples has more.
    static constexpr int kMostColumns = 100;

    /// A choice of the user goes into `choices`, which must outlive the box.
    explicit ImportColumnsBox(imports::Choices& choices, QWidget* parent = nullptr);
    void show(const imports::FoundTable& table);

signals:
    void changed();

private:
    void addQuantity(std::size_t quantity, QGridLayout& layout);
    void addUnits(std::size_t quantity);

    imports::Choices& m_choices;
    std::array<QComboBox*, imports::kQuantities> m_columns{};
    std::array<QComboBox*, imports::kQuantities> m_units{}; // nullptr: the quantity has no unit
};

} // namespace app
