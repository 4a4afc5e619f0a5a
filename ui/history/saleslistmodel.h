#pragma once

#include "selling/saleshistory.h"

#include <QAbstractListModel>

#include <optional>

// The sales history's rows for a list view, newest first. Rows come a page at a time as the view
// scrolls to the end; five years of sales are never read at once, nor a list rebuilt whole.
class SalesListModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        idRole = Qt::UserRole + 1,
        whenRole, // abbreviated date and short time
        cashierRole,
        totalRole,    // in the store's currency
        badgeRole,    // empty for a completed sale
        isVoidedRole, // the total doesn't count
    };

    explicit SalesListModel(ModelContext& context, QObject* parent = nullptr);

    void setCurrencySymbol(const QString& symbol);
    // Starts again from the newest sale of the filter.
    void setFilter(const SalesHistory::Filter& filter);
    // Reads again as many rows as were shown, after sales changed.
    void reload();
    // Why the store couldn't be read; the list is then empty.
    std::optional<QString> errorMessage() const { return m_error; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    // The row of that sale, or -1 while it isn't loaded.
    int rowOf(const QUuid& saleID) const;

Q_SIGNALS:
    void errorMessageChanged();

private:
    QList<SalesHistory::Row> read(const std::optional<SalesHistory::Key>& after, int limit);

    SalesHistory m_history;
    SalesHistory::Filter m_filter;
    QString m_symbol;
    QList<SalesHistory::Row> m_rows;
    bool m_atEnd = true;
    std::optional<QString> m_error;
};
