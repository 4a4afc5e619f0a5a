#include "stock/categoriesviewmodel.h"

#include "records/product.h"
#include "store/unitofwork.h"

CategoriesViewModel::CategoriesViewModel(ModelContext& context, QObject* parent)
    : ViewModel(parent)
    , m_context(context)
{
    m_context.onChange(this, {&Category::schema(), &Product::schema()},
                       [this] { Q_EMIT categoriesChanged(); });
}

QString CategoriesViewModel::productCountText(qint64 count)
{
    if (count == 0)
        return QStringLiteral("No products");
    return count == 1 ? QStringLiteral("1 product") : QStringLiteral("%1 products").arg(count);
}

QString CategoriesViewModel::deleteConsequences(qint64 productCount)
{
    if (productCount == 0)
        return QStringLiteral("It holds no products.");
    if (productCount == 1)
        return QStringLiteral("Its 1 product stays in Products, with no category.");
    return QStringLiteral("Its %1 products stay in Products, with no category.").arg(productCount);
}

QList<RecordListRow> CategoriesViewModel::page(const RecordListRow* after, int limit)
{
    return reading(QList<RecordListRow>(), [&] {
        QVariantList bindings;
        QString where;
        if (after) {
            where = QStringLiteral("WHERE (c.\"name\", c.\"id\") > (?, ?) ");
            bindings << after->name << Record::uuidText(after->id);
        }
        bindings << limit;
        return m_context.rows<RecordListRow>(
            QStringLiteral(
                "SELECT c.\"id\", c.\"name\", (SELECT COUNT(*) FROM \"Product\" p WHERE p.\"category\" = "
                "c.\"id\") FROM \"Category\" c ") +
                where + QStringLiteral("ORDER BY c.\"name\", c.\"id\" LIMIT ?"),
            bindings, [](const SqliteStatement& r) {
                return RecordListRow{QUuid(r.text(0)), r.text(1), productCountText(r.integer(2)), false};
            });
    });
}

qint64 CategoriesViewModel::productCount(const QUuid& categoryID)
{
    return reading(qint64(0), [&] { return m_context.count<Product>(Product::Col::category == categoryID); });
}

Ref<Category> CategoriesViewModel::find(const QUuid& categoryID)
{
    const Ref<Category> category = m_context.find<Category>(categoryID);
    if (!category)
        throw Refusal(goneMessage());
    return category;
}

std::optional<QString> CategoriesViewModel::rename(const QUuid& categoryID, const QString& name)
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return nameRequiredMessage();
    const std::optional<QString> failure = storeFailure([&] {
        performUnitOfWork(m_context, [&] {
            const Ref<Category> category = find(categoryID);
            // Two of one name, told apart only by case, would be one choice too many on the form.
            const QVariant taken =
                m_context.scalar(QStringLiteral("SELECT \"name\" FROM \"Category\" WHERE \"id\" <> ? AND "
                                                "lower_unicode(trim(\"name\")) = ? LIMIT 1"),
                                 {category->idText(), trimmed.toLower()});
            if (taken.isValid())
                throw Refusal(duplicateNameMessage(taken.toString().trimmed()));
            category->setName(trimmed);
        });
    });
    setErrorMessage(std::nullopt);
    return failure;
}

std::optional<QString> CategoriesViewModel::remove(const QUuid& categoryID)
{
    const std::optional<QString> failure =
        storeFailure([&] { performUnitOfWork(m_context, [&] { m_context.remove(find(categoryID)); }); });
    setErrorMessage(std::nullopt);
    return failure;
}
