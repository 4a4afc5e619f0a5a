#include "ui/till/shifthistorymodel.h"

#include <QBrush>
#include <QFont>

#include <algorithm>

ShiftHistoryModel::ShiftHistoryModel(TillViewModel& till, QObject* parent)
    : QAbstractTableModel(parent)
    , m_till(till)
{
}

QColor ShiftHistoryModel::toneColour(ShiftHistoryRow::Tone tone)
{
    switch (tone) {
    case ShiftHistoryRow::Tone::neutral:
        return QColor(0x1f, 0x23, 0x28);
    case ShiftHistoryRow::Tone::balanced:
        return QColor(0x2e, 0x7d, 0x32);
    case ShiftHistoryRow::Tone::over:
        return QColor(0x1d, 0x5f, 0xa8);
    case ShiftHistoryRow::Tone::shortOfCash:
        return QColor(0xc6, 0x28, 0x28);
    }
    Q_UNREACHABLE();
}

void ShiftHistoryModel::reload()
{
    // One read of as many as were shown, so a change while someone looks far down keeps them there.
    const int shown = std::max(int(m_rows.size()), ShiftHistory::pageSize);
    beginResetModel();
    m_rows = m_till.historyPage(std::nullopt, shown);
    m_atEnd = m_rows.size() < shown;
    endResetModel();
}

int ShiftHistoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ShiftHistoryModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columnCount_;
}

QVariant ShiftHistoryModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const ShiftHistoryRow& row = m_rows[index.row()];
    const auto text = [&] {
        switch (index.column()) {
        case periodColumn:
            return row.periodText;
        case cashierColumn:
            return row.cashierName;
        case expectedColumn:
            return row.expectedText;
        case countedColumn:
            return row.countedText;
        default:
            return row.varianceText;
        }
    };
    switch (role) {
    case Qt::DisplayRole:
        return text();
    case Qt::ToolTipRole:
        // The notes of the close where there are some; otherwise the cell, which may be cut short.
        return row.notes.isEmpty() ? text() : row.notes;
    case Qt::TextAlignmentRole:
        return index.column() >= expectedColumn ? int(Qt::AlignRight | Qt::AlignVCenter)
                                                : int(Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::ForegroundRole:
        return index.column() == varianceColumn ? QVariant(QBrush(toneColour(row.tone))) : QVariant();
    case Qt::FontRole:
        if (index.column() == varianceColumn) {
            QFont strong;
            strong.setWeight(QFont::DemiBold);
            return strong;
        }
        return {};
    default:
        return {};
    }
}

bool ShiftHistoryModel::canFetchMore(const QModelIndex& parent) const
{
    return !parent.isValid() && !m_atEnd;
}

void ShiftHistoryModel::fetchMore(const QModelIndex& parent)
{
    if (!canFetchMore(parent) || m_rows.isEmpty())
        return;
    const QList<ShiftHistoryRow> page = m_till.historyPage(m_rows.last().key);
    m_atEnd = page.size() < ShiftHistory::pageSize;
    if (page.isEmpty())
        return;
    beginInsertRows({}, int(m_rows.size()), int(m_rows.size() + page.size() - 1));
    m_rows.append(page);
    endInsertRows();
}
