#pragma once

#include "till/tillviewmodel.h"

#include <QAbstractTableModel>
#include <QColor>

// "Shift History" for a table view, newest first: when, who, expected, counted and the difference.
// Rows come a page at a time as the view scrolls to its end; five years of shifts are never read
// at once.
class ShiftHistoryModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { periodColumn, cashierColumn, expectedColumn, countedColumn, varianceColumn, columnCount_ };

    explicit ShiftHistoryModel(TillViewModel& till, QObject* parent = nullptr);

    // Reads the list again from the newest, as far down as it was loaded, after shifts changed.
    void reload();
    QUuid shiftID(int row) const { return m_rows.value(row).shiftID(); }
    const ShiftHistoryRow& row(int row) const { return m_rows.at(row); }

    static QColor toneColour(ShiftHistoryRow::Tone tone);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

private:
    TillViewModel& m_till;
    QList<ShiftHistoryRow> m_rows;
    bool m_atEnd = true;
};
