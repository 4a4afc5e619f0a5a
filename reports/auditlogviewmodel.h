#pragma once

#include "access/approvalservice.h"
#include "viewmodel/viewmodel.h"

#include <QDate>

class SessionStore;

// The Audit Log screen's filters, its count, its pages of rows and its two exports.
class AuditLogViewModel : public ViewModel {
    Q_OBJECT

public:
    static constexpr int pageSize = 100;
    static QString title() { return QStringLiteral("Audit Log"); }
    static QString note();
    static QString searchPrompt() { return QStringLiteral("Search names, receipts, reasons"); }
    static QString allActions() { return QStringLiteral("All Actions"); }

    AuditLogViewModel(ModelContext& context, ApprovalService& approvals, QObject* parent = nullptr);

    const ApprovalService::LogFilter& filter() const { return m_filter; }
    void setAction(std::optional<AuditAction> action);
    void setFrom(const QDate& from);
    void setTo(const QDate& to);
    void setSearch(const QString& search);

    QString countText();
    // The next `limit` rows after `after` (from the newest when absent); empty when the store can't
    // be read.
    QList<ApprovalService::LogRow> page(const std::optional<std::pair<double, QString>>& after,
                                        int limit = pageSize);

    // "Audit Log", or with the chosen action's title; the exports' title and proposed file name.
    QString documentTitle() const;
    QString periodText() const;
    // Writes every row of the filter; false with errorMessage set when the file couldn't be written.
    bool exportCSV(const QString& path, const std::optional<QString>& storeName, const AppSettings* settings);
    bool exportPDF(const QString& path, const std::optional<QString>& storeName, const AppSettings* settings);

Q_SIGNALS:
    // The rows to show changed: a filter, or the log itself.
    void rowsChanged();

private:
    template <class Write> bool exporting(Write write);

    ApprovalService& m_approvals;
    ApprovalService::LogFilter m_filter;
};
