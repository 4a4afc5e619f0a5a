#include "reports/auditlogviewmodel.h"

#include "clock/clock.h"
#include "records/auditentry.h"
#include "reports/reportexport.h"

#include <QLocale>

AuditLogViewModel::AuditLogViewModel(ModelContext& context, ApprovalService& approvals, QObject* parent)
    : ViewModel(parent)
    , m_approvals(approvals)
{
    const QDate today = Clock::now().date();
    m_filter = {today.addDays(-7), today, std::nullopt, QString()};
    context.onChange(this, {&AuditEntry::schema()}, [this] { Q_EMIT rowsChanged(); });
}

QString AuditLogViewModel::note()
{
    return QStringLiteral("Discounts over the limit, price changes, refunds, voids, points redeemed and No Sale — "
                          "with who approved each one. Approval rules are in Settings → Approvals & Audit Log.");
}

void AuditLogViewModel::setAction(std::optional<AuditAction> action)
{
    if (replace(m_filter.action, action))
        Q_EMIT rowsChanged();
}

void AuditLogViewModel::setFrom(const QDate& from)
{
    if (replace(m_filter.from, from))
        Q_EMIT rowsChanged();
}

void AuditLogViewModel::setTo(const QDate& to)
{
    if (replace(m_filter.to, to))
        Q_EMIT rowsChanged();
}

void AuditLogViewModel::setSearch(const QString& search)
{
    if (replace(m_filter.search, search))
        Q_EMIT rowsChanged();
}

QString AuditLogViewModel::countText()
{
    const qint64 count = reading(qint64(0), [this] { return m_approvals.logCount(m_filter); });
    return count == 1 ? QStringLiteral("1 entry") : QStringLiteral("%1 entries").arg(count);
}

QList<ApprovalService::LogRow> AuditLogViewModel::page(const std::optional<std::pair<double, QString>>& after,
                                                       int limit)
{
    return reading(QList<ApprovalService::LogRow>(),
                   [&] { return m_approvals.logPage(m_filter, after, limit); });
}

QString AuditLogViewModel::documentTitle() const
{
    return m_filter.action ? title() + QStringLiteral(" — ") + AuditActions::title(*m_filter.action) : title();
}

QString AuditLogViewModel::periodText() const
{
    const QLocale locale = QLocale::system();
    return QStringLiteral("Period: %1 – %2")
        .arg(locale.toString(m_filter.from, QLocale::LongFormat), locale.toString(m_filter.to, QLocale::LongFormat));
}

template <class Write> bool AuditLogViewModel::exporting(Write write)
{
    return writing([&] { write(m_approvals.rows(m_filter)); });
}

bool AuditLogViewModel::exportCSV(const QString& path, const std::optional<QString>& storeName,
                                  const AppSettings* settings)
{
    return exporting([&](const QList<QStringList>& rows) {
        ReportExportService::writeCSV(documentTitle(), ApprovalService::logHeaders(), rows,
                                      ReportHeading::current(settings, periodText(), storeName), path);
    });
}

bool AuditLogViewModel::exportPDF(const QString& path, const std::optional<QString>& storeName,
                                  const AppSettings* settings)
{
    return exporting([&](const QList<QStringList>& rows) {
        ReportExportService::writePDF(documentTitle(), ApprovalService::logHeaders(), rows,
                                      ReportHeading::current(settings, periodText(), storeName), path);
    });
}
