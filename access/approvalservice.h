#pragma once

#include "access/approvalerror.h"
#include "access/auditaction.h"
#include "records/recordsfwd.h"
#include "store/record.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

class AuditSearchIndex;
class Cart;
class ModelContext;

// Who needs an admin's PIN for what, and the audit log every sensitive action writes to whether
// or not anybody had to approve it. Admins never need approval.
class ApprovalService {
public:
    explicit ApprovalService(ModelContext& context);
    ~ApprovalService();

    QList<Ref<User>> adminsWithPin();
    // Throws ApprovalError::noAdminPin, whatever was typed, while no admin has a PIN.
    Ref<User> approver(const QString& pin);

    static bool isSwitchedOn(AuditAction action, const AppSettings* settings);
    static bool needsApproval(AuditAction action, const User* user, const AppSettings* settings);
    static double discountLimit(const Cart& cart, const AppSettings& settings);
    static bool discountNeedsApproval(const Cart& cart, const User* user, const AppSettings* settings);
    // The discount request's summary, as the dialog shows it.
    static QString discountSummary(const Cart& cart, const AppSettings& settings);

    // Adds one row to the log, inside the caller's unit of work. Names are copied, not linked,
    // so the row outlives any change to the accounts.
    void record(AuditAction action, const User* by, const QString& approverName, std::optional<double> amount,
                const QString& reference, const QString& reason, const QString& details);
    // The discount, price and redemption rows of a sale just rung up, saved together. Never
    // fails: the sale stands whatever happens to its rows.
    void recordSale(const Sale& sale, const Cart& cart, const User* by, const AppSettings& settings);

    struct LogFilter {
        QDate from;
        QDate to; // included whole
        std::optional<AuditAction> action;
        QString search;
    };
    struct LogRow {
        double timestamp = 0; // with id, the key a page continues from
        QString id;
        QStringList cells;
    };
    static QStringList logHeaders();
    // Newest first, `limit` rows after the row with key `after` (from the top when absent).
    QList<LogRow> logPage(const LogFilter& filter, const std::optional<std::pair<double, QString>>& after,
                          int limit);
    qint64 logCount(const LogFilter& filter);
    // Every row of the filter, for the exports.
    QList<QStringList> rows(const LogFilter& filter);

private:
    // A search's entries in the filter, oldest first.
    std::vector<int> searchMatches(const LogFilter& filter);
    QList<LogRow> entriesWithIds(const QStringList& ids);

    ModelContext& m_context;
    std::unique_ptr<AuditSearchIndex> m_searchIndex; // made at the first search
};
