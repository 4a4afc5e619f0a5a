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

QList<SupplierRow> SuppliersViewModel::page(const SupplierRow* after, int limit)
{
    return reading(QList<SupplierRow>(), [&] {
        Condition where;
        if (const QString needle = m_searchText.trimmed().toLower(); !needle.isEmpty())
            where = Condition(QStringLiteral("(instr(lower_unicode(\"name\"), ?) > 0 OR "
                                             "instr(lower_unicode(\"phone\"), ?) > 0 OR "
                                             "instr(lower_unicode(\"email\"), ?) > 0)"),
                              {needle, needle, needle});
        if (after)
            where = where && Condition(QStringLiteral("(\"name\", \"id\") > (?, ?)"),
                                       {after->name, Record::uuidText(after->id)});
        QVariantList bindings = where.bindings();
        bindings.append(limit);
        return m_context.rows<SupplierRow>(
            QStringLiteral("SELECT \"id\", \"name\", \"phone\", \"email\", \"isActive\" FROM \"Supplier\" ") +
                (where.isEmpty() ? QString() : QStringLiteral("WHERE ") + where.sql()) +
                QStringLiteral(" ORDER BY \"name\", \"id\" LIMIT ?"),
            bindings, [](const SqliteStatement& r) {
                QStringList contact;
                for (const QString& part : {r.text(2).trimmed(), r.text(3).trimmed()}) {
                    if (!part.isEmpty())
                        contact.append(part);
                }
                return SupplierRow{QUuid(r.text(0)), r.text(1), contact.join(QStringLiteral(" · ")),
                                   r.integer(4) == 0};
            });
    });
}

Ref<Supplier> SuppliersViewModel::supplier(const QUuid& id)
{
    return reading(Ref<Supplier>(), [&] { return m_context.find<Supplier>(id); });
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
