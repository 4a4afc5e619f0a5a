#include "stock/suppliersviewmodel.h"

#include "clock/clock.h"
#include "store/storeerror.h"

SuppliersViewModel::SuppliersViewModel(ModelContext& context, QObject* parent)
    : ViewModel(parent)
    , m_context(context)
{
    connect(&m_context, &ModelContext::didChange, this, [this](const QSet<QString>& names) {
        if (names.contains(Supplier::schema().name))
            Q_EMIT suppliersChanged();
    });
}

void SuppliersViewModel::setSearchText(const QString& text)
{
    if (replace(m_searchText, text))
        Q_EMIT searchTextChanged();
}

QList<Ref<Supplier>> SuppliersViewModel::filteredSuppliers(const QList<Ref<Supplier>>& suppliers) const
{
    const QString needle = m_searchText.trimmed().toLower();
    if (needle.isEmpty())
        return suppliers;
    QList<Ref<Supplier>> result;
    for (const Ref<Supplier>& supplier : suppliers) {
        if (supplier->name().toLower().contains(needle) || supplier->phone().toLower().contains(needle) ||
            supplier->email().toLower().contains(needle))
            result.append(supplier);
    }
    return result;
}

QList<SupplierRow> SuppliersViewModel::rows()
{
    try {
        // The search runs in memory, where lower-casing is Unicode's.
        const QList<Ref<Supplier>> suppliers = filteredSuppliers(
            m_context.fetch<Supplier>(FetchDescriptor().sortedBy(ascending(Supplier::Col::name))));
        QList<SupplierRow> result;
        result.reserve(suppliers.size());
        for (const Ref<Supplier>& supplier : suppliers)
            result.append(row(supplier));
        setErrorMessage(std::nullopt);
        return result;
    } catch (const StoreError& error) {
        setErrorMessage(error.description());
        return {};
    }
}

SupplierRow SuppliersViewModel::row(const Ref<Supplier>& supplier)
{
    QStringList contact;
    for (const QString& part : {supplier->phone().trimmed(), supplier->email().trimmed()}) {
        if (!part.isEmpty())
            contact.append(part);
    }
    return {supplier, supplier->name(), contact.join(QStringLiteral(" · ")), !supplier->isActive()};
}

void SuppliersViewModel::select(const Ref<Supplier>& supplier)
{
    if (supplier == m_selected)
        return;
    m_selected = supplier;
    Q_EMIT selectionChanged();
}

Ref<Supplier> SuppliersViewModel::addSupplier()
{
    auto supplier = std::make_shared<Supplier>();
    supplier->setName(newSupplierTitle());
    supplier->setCreatedAt(Clock::now());
    m_context.insert(supplier);
    try {
        m_context.save();
    } catch (const StoreError& error) {
        setErrorMessage(error.description());
        return nullptr;
    }
    setErrorMessage(std::nullopt);
    setSearchText(QString());
    select(supplier);
    return supplier;
}

std::optional<QString> SuppliersViewModel::save(const Ref<Supplier>& supplier)
{
    Q_ASSERT(supplier);
    if (supplier->name().trimmed().isEmpty())
        return nameRequiredMessage();
    supplier->setName(supplier->name().trimmed());
    return storeFailure([&] { m_context.save(); });
}

bool SuppliersViewModel::deleteSupplier(const Ref<Supplier>& supplier)
{
    Q_ASSERT(supplier);
    if (supplier == m_selected)
        select(nullptr);
    return writing([&] {
        m_context.remove(supplier);
        m_context.save();
    });
}
