#pragma once

#include <QStringList>

class QLabel;
class QTableView;
class QTableWidget;
class QWidget;

// A table to choose one record from: whole rows, one at a time, a line each, `rowHeight` high.
void setUpRecordTable(QTableView* table, const QString& name, int rowHeight);

// A read-only table of history lines on a card: no selection, no focus, no grid, no frame, the
// columns as wide as their texts. Its height is set by showRows.
QTableWidget* makeHistoryTable(int columns, const QString& name, QWidget* parent);
// Shown only while it has rows, tall enough for them up to `maxRows`; more scroll inside the table.
// `none`, where given, says there are none in its place.
void showRows(QTableView* table, int maxRows, QLabel* none = nullptr);
// Fills the row with `cells`; those from `firstAmountColumn` on are amounts, set to the right.
void setRowCells(QTableWidget* table, int row, const QStringList& cells, int firstAmountColumn);
