#include "stock/productcodeerror.h"

#include "records/product.h"

namespace {
void checkCode(ModelContext& context, const Product& product, const QString& code, const char* column,
               const char* collation, const char* label)
{
    if (code.isEmpty())
        return;
    const QVariant holder = context.scalar(
        QStringLiteral("SELECT \"name\" FROM \"Product\" WHERE \"%1\" = ? COLLATE %2 AND \"id\" <> ? LIMIT 1")
            .arg(QLatin1String(column), QLatin1String(collation)),
        {code, product.idText()});
    if (holder.isValid())
        throw ProductCodeError(
            QStringLiteral("That %1 already belongs to %2.").arg(QLatin1String(label), holder.toString()));
}
} // namespace

void ProductCodeError::checkUnique(ModelContext& context, const Product& product)
{
    checkCode(context, product, product.sku().trimmed(), "sku", "NOCASE", "SKU");
    checkCode(context, product, product.barcode().trimmed(), "barcode", "BINARY", "barcode");
}
