#include "stock/suppliersviewmodel.h"

#include "clock/clock.h"
#include "store/storeerror.h"
#include "store/unitofwork.h"

SuppliersViewModel::SuppliersViewModel(ModelContext& context, QObject* parent)
    : ViewModel(parent)
    , m_context(context)
{
    connect(&m_context, &ModelContext::didChange, this, [this](const QSet<QString>& names) {
        if (!names.contains(Supplier::schema().name))
            return;
        // Deleted elsewhere: there is nothing left to save the edits onto.
        if (const Ref<Supplier> live = m_form.live(); live && live->isDeleted())
            select(nullptr);
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
    } catch (const Refusal& error) {
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
    if (m_form.openOn(supplier))
        Q_EMIT selectionChanged();
}

Ref<Supplier> SuppliersViewModel::addSupplier()
{
    auto supplier = std::make_shared<Supplier>();
    supplier->setName(newSupplierTitle());
    m_form = FormDraft<Supplier>::ofNew(supplier, m_context);
    setSearchText(QString());
    Q_EMIT selectionChanged();
    return supplier;
}

void SuppliersViewModel::discardEdits()
{
    m_form.discard();
    Q_EMIT selectionChanged();
}

std::optional<QString> SuppliersViewModel::save()
{
    const Ref<Supplier> edits = m_form.edits();
    Q_ASSERT(edits);
    if (edits->name().trimmed().isEmpty())
        return nameRequiredMessage();
    edits->setName(edits->name().trimmed());
    const bool isNew = m_form.isNew();
    try {
        m_form.reopen(performUnitOfWork(m_context, [&] {
            const Ref<Supplier> live = m_form.writeTo(m_context);
            if (isNew)
                live->setCreatedAt(Clock::now());
            return live;
        }));
    } catch (const Refusal& refusal) {
        return refusal.description();
    }
    // The list was told of the save before the form knew the supplier as saved.
    if (isNew)
        Q_EMIT suppliersChanged();
    return std::nullopt;
}

bool SuppliersViewModel::deleteSupplier()
{
    Q_ASSERT(m_form.isOpen());
    const Ref<Supplier> live = m_form.live();
    if (live && !saveOrUndo(m_context, [&] { m_context.remove(live); }))
        return false;
    setErrorMessage(std::nullopt); // a new one is just dropped
    select(nullptr);
    return true;
}
