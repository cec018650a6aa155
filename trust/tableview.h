#pragma once

#include "trust/titledrows.h"

class QString;
class QTableWidget;
class QWidget;

namespace trust
{

/// A read-only table with an object name and a name for screen readers; Tab leaves it.
QTableWidget* makeTable(const char* name, const QString& accessibleName, QWidget* parent);

/// Gives a table the height of its rows, as far as there is room.
void keepAsHighAsRows(QTableWidget& table);

/// Shows the titles and the rows; columns are as wide as their texts.
void fillTable(QTableWidget& table, const TitledRows& rows);

QString qtText(const std::string& text);

/// The title of a column as every desktop shows it in the order of its words.
QString titleText(const std::string& title);

} // namespace trust
