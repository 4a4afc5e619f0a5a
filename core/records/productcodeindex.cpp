#include "records/productcodeindex.h"

#include "store/sqlite.h"
#include "store/storeerror.h"

namespace {
struct Code {
    const char* label;
    const char* column;
    const char* collation;
    const char* index;
};

constexpr Code codes[] = {
    {"SKU", "sku", "NOCASE", "Product_sku_unique"},
    {"Barcode", "barcode", "BINARY", "Product_barcode_unique"},
};
} // namespace

QStringList ProductCodeIndex::duplicates(SqliteConnection& connection)
{
    QStringList found;
    for (const Code& code : codes) {
        SqliteStatement statement = connection.prepare(
            QStringLiteral("SELECT MIN(\"%1\"), GROUP_CONCAT(\"name\", ', ') FROM "
                           "(SELECT \"%1\", \"name\" FROM \"Product\" WHERE \"%1\" <> '' ORDER BY \"name\") "
                           "GROUP BY \"%1\" COLLATE %2 HAVING COUNT(*) > 1 ORDER BY 1")
                .arg(QLatin1String(code.column), QLatin1String(code.collation)));
        while (statement.step())
            found << QStringLiteral("%1 %2: %3").arg(QLatin1String(code.label), statement.text(0), statement.text(1));
    }
    return found;
}

QStringList ProductCodeIndex::ensure(SqliteConnection& connection)
{
    const QStringList shared = duplicates(connection);
    if (!shared.isEmpty())
        return shared;
    // Both or neither, inside a migration's transaction or on their own at start.
    connection.execute(QStringLiteral("SAVEPOINT product_codes"));
    try {
        for (const Code& code : codes)
            connection.execute(QStringLiteral("CREATE UNIQUE INDEX IF NOT EXISTS \"%1\" ON \"Product\" "
                                              "(\"%2\" COLLATE %3) WHERE \"%2\" <> ''")
                                   .arg(QLatin1String(code.index), QLatin1String(code.column),
                                        QLatin1String(code.collation)));
        connection.execute(QStringLiteral("RELEASE product_codes"));
    } catch (const StoreError&) {
        // A full disk may have ended the transaction already; then there is nothing to undo.
        if (connection.inTransaction()) {
            connection.execute(QStringLiteral("ROLLBACK TO product_codes"));
            connection.execute(QStringLiteral("RELEASE product_codes"));
        }
        throw;
    }
    return {};
}
