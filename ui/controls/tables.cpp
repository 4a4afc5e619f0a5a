#include "ui/controls/tables.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>

#include <algorithm>

namespace {
void setUpLines(QTableView* table, const QString& name, int rowHeight)
{
    table->setAccessibleName(name);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setTextElideMode(Qt::ElideRight);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
}
} // namespace

void setUpRecordTable(QTableView* table, const QString& name, int rowHeight)
{
    setUpLines(table, name, rowHeight);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
}

QTableWidget* makeHistoryTable(int columns, const QString& name, QWidget* parent)
{
    auto* table = new QTableWidget(0, columns, parent);
    setUpLines(table, name, 30);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setFocusPolicy(Qt::NoFocus);
    table->setFrameShape(QFrame::NoFrame);
    // Sized to its rows by showRows; a growing table would pad its card out.
    table->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QHeaderView* header = table->horizontalHeader();
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    return table;
}

void showRows(QTableView* table, int maxRows, QLabel* none)
{
    const int rows = table->model() ? table->model()->rowCount() : 0;
    const QHeaderView* header = table->horizontalHeader();
    const int headerHeight = header->isHidden() ? 0 : header->sizeHint().height();
    table->setFixedHeight(headerHeight +
                          std::min(rows, maxRows) * table->verticalHeader()->defaultSectionSize() + 2);
    table->setVisible(rows > 0);
    if (none)
        none->setVisible(rows == 0);
}

void setRowCells(QTableWidget* table, int row, const QStringList& cells, int firstAmountColumn)
{
    for (int column = 0; column < cells.size(); ++column) {
        auto* item = new QTableWidgetItem(cells[column]);
        // A narrow window cuts a long cell short; the whole of it is a hover away.
        item->setToolTip(cells[column]);
        if (column >= firstAmountColumn)
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        table->setItem(row, column, item);
    }
}
