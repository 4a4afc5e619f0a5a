#include "store/formdraft.h"

void FormDraftBase::open(RecordRef live, RecordRef edits)
{
    m_live = std::move(live);
    m_edits = std::move(edits);
    m_original = m_edits ? m_edits->makeDraft() : nullptr;
}

RecordRef FormDraftBase::write(ModelContext& context)
{
    Q_ASSERT(m_edits);
    if (!m_live) {
        RecordRef inserted = m_edits->makeDraft();
        context.insert(inserted);
        return inserted;
    }
    const Entity& entity = m_live->entity();
    for (size_t i = 0; i < entity.fields.size(); ++i) {
        const FieldType type = entity.fields[i].type;
        if (type == FieldType::Id || type == FieldType::ToMany || type == FieldType::ManyToManyInverse)
            continue;
        // A form of a record with a list of its own would need the list loaded first.
        Q_ASSERT(type != FieldType::ManyToMany);
        const QVariant& edited = m_edits->rawValue(int(i));
        const QVariant& opened = m_original->rawValue(int(i));
        if (edited != opened || edited.isNull() != opened.isNull())
            m_live->setRawValue(int(i), edited);
    }
    return m_live;
}
