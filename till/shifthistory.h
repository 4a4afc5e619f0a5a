#pragma once

#include "store/modelcontext.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

// The till's past shifts, newest first, read as rows a page at a time and paged by key: five years
// of shifts are never read at once, and no shift record is built to list one.
class ShiftHistory {
public:
    static constexpr int pageSize = 50;

    // Where a row stands in the order; the next page starts after it.
    struct Key {
        double openedAt = 0; // as stored, so that no digits are lost on the way back
        QString id;
    };

    struct Row {
        Key key;
        QDateTime openedAt;
        std::optional<QDateTime> closedAt;
        QString cashierName;
        std::optional<double> expectedCash;
        std::optional<double> countedCash;
        std::optional<double> variance;
        QString notes;

        QUuid id() const { return QUuid(key.id); }
    };

    explicit ShiftHistory(ModelContext& context);

    // Up to `limit` shifts after `after`, or from the newest without it, leaving out the shift
    // `exceptID` (the open one the screen shows above the list). Throws StoreError.
    QList<Row> page(const std::optional<Key>& after, const QUuid& exceptID, int limit = pageSize);

private:
    ModelContext& m_context;
};
