#include "records/posschema.h"

#include "records/productcodeindex.h"
#include "records/records.h"
#include "store/storeerror.h"

const std::vector<const Entity*>& POSSchema::all()
{
    static const std::vector<const Entity*> entities = {
        &User::schema(),
        &Category::schema(),
        &Product::schema(),
        &Customer::schema(),
        &Sale::schema(),
        &SaleItem::schema(),
        &Payment::schema(),
        &InventoryMovement::schema(),
        &TillShift::schema(),
        &CashMovement::schema(),
        &HeldSale::schema(),
        &HeldSaleItem::schema(),
        &AppSettings::schema(),
        &Supplier::schema(),
        &CustomerPayment::schema(),
        &LoyaltyEntry::schema(),
        &Tax::schema(),
        &TaxGroup::schema(),
        &PurchaseOrder::schema(),
        &PurchaseOrderLine::schema(),
        &AuditEntry::schema(),
        &StaffMember::schema(),
        &Appointment::schema(),
        &AccountOpeningBalance::schema(),
    };
    return entities;
}

namespace {
// Two sales under one number would make a receipt, a refund and a journal line ambiguous.
void addUniqueInvoiceNumbers(SqliteConnection& connection)
{
    const QVariant shared = connection.scalar(QStringLiteral(
        "SELECT \"invoiceNumber\" FROM \"Sale\" GROUP BY \"invoiceNumber\" HAVING COUNT(*) > 1 LIMIT 1"));
    if (shared.isValid())
        throw StoreError(QStringLiteral("Two sales in this store share the invoice number %1, so it can't be "
                                        "opened safely. Restore it from a backup.")
                             .arg(shared.toString()),
                         StoreError::Kind::damaged);
    connection.execute(QStringLiteral("DROP INDEX IF EXISTS \"Sale_invoiceNumber\""));
    connection.execute(
        QStringLiteral("CREATE UNIQUE INDEX \"Sale_invoiceNumber_unique\" ON \"Sale\" (\"invoiceNumber\")"));
}

// Sales history pages by (timestamp, id), newest first, over all sales, one cashier's, or the
// customers a search matched. Its indexes, declared below, take in the shorter ones stores had
// before, which would only slow every sale down.
void dropIndexesTheHistoryCovers(SqliteConnection& connection)
{
    connection.execute(QStringLiteral("DROP INDEX IF EXISTS \"Sale_timestamp\""));
    connection.execute(QStringLiteral("DROP INDEX IF EXISTS \"Sale_customer_timestamp\""));
    connection.execute(QStringLiteral("DROP INDEX IF EXISTS \"Sale_cashier\""));
}

// A store with shared codes gets its indexes at a later start, once they are put right.
void addUniqueProductCodes(SqliteConnection& connection)
{
    ProductCodeIndex::ensure(connection);
}

// The audit log pages by (timestamp, id), newest first, over all actions or one; its indexes,
// declared below, take in the one on the timestamp alone.
void dropIndexTheAuditLogCovers(SqliteConnection& connection)
{
    connection.execute(QStringLiteral("DROP INDEX IF EXISTS \"AuditEntry_timestamp\""));
}

// The audit log's words, a narrow row an entry in time order, which a search reads at once instead
// of every wide row: the searched fields a line each, so a match never runs from one field into
// the next. Triggers keep it, so every writer, and every rollback, keeps it right.
void addAuditSearchText(SqliteConnection& connection)
{
    const QString text = QStringLiteral(
        "%1.\"cashierName\" || char(10) || %1.\"approverName\" || char(10) || %1.\"reference\" || char(10) || "
        "%1.\"reason\" || char(10) || %1.\"details\"");
    connection.execute(QStringLiteral(
        "CREATE TABLE \"AuditSearch\" (\"timestamp\" REAL NOT NULL, \"id\" TEXT NOT NULL, "
        "\"actionRaw\" TEXT NOT NULL, \"text\" TEXT NOT NULL, PRIMARY KEY (\"timestamp\", \"id\")) WITHOUT ROWID"));
    const QString insert =
        QStringLiteral("INSERT INTO \"AuditSearch\" SELECT %1.\"timestamp\", %1.\"id\", %1.\"actionRaw\", %2");
    connection.execute(insert.arg(QStringLiteral("\"AuditEntry\""), text.arg(QStringLiteral("\"AuditEntry\""))) +
                       QStringLiteral(" FROM \"AuditEntry\""));
    const QString remove =
        QStringLiteral("DELETE FROM \"AuditSearch\" WHERE \"timestamp\" = old.\"timestamp\" AND \"id\" = old.\"id\";");
    const QString add = insert.arg(QStringLiteral("new"), text.arg(QStringLiteral("new"))) + QLatin1Char(';');
    connection.execute(QStringLiteral("CREATE TRIGGER \"AuditSearch_insert\" AFTER INSERT ON \"AuditEntry\" BEGIN ") +
                       add + QStringLiteral(" END"));
    connection.execute(QStringLiteral("CREATE TRIGGER \"AuditSearch_delete\" AFTER DELETE ON \"AuditEntry\" BEGIN ") +
                       remove + QStringLiteral(" END"));
    connection.execute(QStringLiteral("CREATE TRIGGER \"AuditSearch_update\" AFTER UPDATE ON \"AuditEntry\" BEGIN ") +
                       remove + QLatin1Char(' ') + add + QStringLiteral(" END"));
}
} // namespace

SchemaDescription POSSchema::description()
{
    using L = QStringList;
    return SchemaDescription{
        all(),
        {
            {"Sale", L{"timestamp", "id"}},
            {"Sale", L{"refundOfSaleID"}},
            // The End of Day report counts a void on the day it was made, not the day of the sale.
            {"Sale", L{"voidedAt"}},
            {"Sale", L{"customer", "timestamp", "id"}},
            {"Sale", L{"cashier", "timestamp", "id"}},
            {"Sale", L{"tillShift", "timestamp"}},
            {"Payment", L{"timestamp"}},
            {"Payment", L{"methodRaw", "timestamp"}},
            {"InventoryMovement", L{"product", "timestamp"}},
            {"InventoryMovement", L{"timestamp"}},
            {"TillShift", L{"statusRaw"}},
            {"TillShift", L{"openedAt"}},
            {"CashMovement", L{"timestamp"}},
            {"CustomerPayment", L{"customer", "timestamp"}},
            {"CustomerPayment", L{"timestamp"}},
            {"LoyaltyEntry", L{"customer", "timestamp"}},
            {"AuditEntry", L{"timestamp", "id"}},
            {"AuditEntry", L{"actionRaw", "timestamp", "id"}},
            {"HeldSale", L{"statusRaw", "heldAt"}},
            {"Appointment", L{"start"}},
            {"Product", L{"barcode"}},
            {"Product", L{"sku"}},
            {"Product", L{"name"}},
            {"Customer", L{"name"}},
            {"User", L{"username"}},
            {"PurchaseOrder", L{"number"}},
        },
        0x54414C59, // "TALY": marks the file as a store of this program
        {
            {2, addUniqueInvoiceNumbers},
            {3, dropIndexesTheHistoryCovers},
            {4, addUniqueProductCodes},
            {5, dropIndexTheAuditLogCovers},
            {6, addAuditSearchText},
        },
    };
}
