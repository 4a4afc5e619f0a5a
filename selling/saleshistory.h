#pragma once

#include "records/enums.h"
#include "records/recordsfwd.h"
#include "store/modelcontext.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

// The sales history list, newest first, read as rows a page at a time and paged by key, so that
// the thousandth page of five years costs what the first does. Refunds and voided sales are
// listed like any other sale; nothing is summed here.
class SalesHistory {
public:
    static constexpr int pageSize = 50;

    struct Filter {
        QDate startDate;
        QDate endDate; // included to its last second
        // Matched without regard to ASCII case against the invoice number and the customer's and
        // cashier's names; not trimmed.
        QString searchText;
        // Everyone's sales, or one cashier's; a null id is the sales nobody was signed in for.
        bool everyone = true;
        QUuid cashierID;

        // Admins see every sale, anyone else only their own.
        void showSalesOf(const User* viewer);
    };

    // Where a row stands in the order; the next page starts after it.
    struct Key {
        double timestamp = 0; // as stored, so that no digits are lost on the way back
        QString id;
    };

    struct Row {
        Key key;
        QString invoiceNumber;
        QDateTime timestamp;
        QString cashierName;
        QString customerName;
        double total = 0;
        QString statusRaw;
        bool isRefund = false;

        QUuid id() const { return QUuid(key.id); }
        std::optional<SaleStatus> status() const { return SaleStatuses::fromRaw(statusRaw); }
    };

    explicit SalesHistory(ModelContext& context);

    // Up to `limit` rows after `after`, or from the newest without it. Throws StoreError.
    QList<Row> page(const Filter& filter, const std::optional<Key>& after, int limit = pageSize);

private:
    ModelContext& m_context;
};
