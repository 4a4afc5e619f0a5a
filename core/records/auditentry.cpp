#include "records/auditentry.h"

#include "records/records.h"

TALLY_RECORD_IMPL(AuditEntry, TALLY_AUDIT_ENTRY_FIELDS)

QString AuditEntry::searchTextSql(const QString& row)
{
    const QString prefix = row.isEmpty() ? QString() : row + QLatin1Char('.');
    QStringList parts;
    for (const char* field : searchedFields)
        parts << QStringLiteral("coalesce(%1\"%2\", '')").arg(prefix, QLatin1String(field));
    return parts.join(QStringLiteral(" || char(10) || "));
}
