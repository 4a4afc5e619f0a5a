#pragma once

#include "selling/saleshistory.h"
#include "ui/controls/keypagedmodel.h"

#include <QAbstractListModel>

#include <optional>

using SalePages = KeyPagedModel<QAbstractListModel, SalesHistory::Row>;

// The sales history's rows for a list view, newest first. Rows come a page at a time as the view
// scrolls to the end; five years of sales are never read at once, nor a list rebuilt whole.
class SalesListModel : public SalePages {
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
    // Why the store couldn't be read; the list is then empty.
    std::optional<QString> errorMessage() const { return m_error; }

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    // The row of that sale, or -1 while it isn't loaded.
    int rowOf(const QUuid& saleID) const;

Q_SIGNALS:
    void errorMessageChanged();

protected:
    QList<SalesHistory::Row> readPage(const SalesHistory::Row* after, int limit) override;

private:
    SalesHistory m_history;
    SalesHistory::Filter m_filter;
    QString m_symbol;
    std::optional<QString> m_error;
};
