#pragma once

#include "store/modelcontext.h"
#include "store/record.h"

// What a form edits: a copy of the record taken when the form opened on it, and a second copy
// kept as it was then, so that Save writes only the fields the person changed. Fields that others
// change meanwhile (the stock a sale takes, a delivery's cost) keep their new values.
class FormDraftBase {
public:
    bool isOpen() const { return m_edits != nullptr; }
    // Not yet in the store: Save inserts it.
    bool isNew() const { return m_edits && !m_live; }
    // Whether the person changed any field since the form opened or last saved.
    bool hasEdits() const { return m_edits && !m_edits->hasSameValuesAs(*m_original); }

protected:
    // Inside the Save's unit of work. A new record goes in as a copy, so that a failed save
    // leaves the form's copy detached and as typed.
    RecordRef write(ModelContext& context);
    void open(RecordRef live, RecordRef edits);

    RecordRef m_live;
    RecordRef m_edits;
    RecordRef m_original;
};

template <class T> class FormDraft : public FormDraftBase {
public:
    FormDraft() = default;

    // A form on a record of the store.
    static FormDraft of(const Ref<T>& live)
    {
        FormDraft draft;
        draft.open(live, live->template draft<T>());
        return draft;
    }
    // A form on a record still to be made; its relationships are looked up in `context`.
    static FormDraft ofNew(const Ref<T>& fresh, ModelContext& context)
    {
        Q_ASSERT(!fresh->context());
        fresh->lookUpRelationsIn(&context);
        FormDraft draft;
        draft.open(nullptr, fresh);
        return draft;
    }

    // Null while new.
    Ref<T> live() const { return std::static_pointer_cast<T>(m_live); }
    // The copy the form edits; null while no form is open.
    Ref<T> edits() const { return std::static_pointer_cast<T>(m_edits); }
    // Writes the edits to the store's record, inserting it when new; the record, live.
    Ref<T> writeTo(ModelContext& context) { return std::static_pointer_cast<T>(write(context)); }
    // Once the Save committed: the form starts again from the record as saved.
    void reopen(const Ref<T>& live) { *this = of(live); }

    // The form on `live` instead, or none for null, dropping the edits; false when it is already
    // open on that record, whose edits then stay.
    bool openOn(const Ref<T>& live)
    {
        if (live && live == m_live)
            return false;
        *this = live ? of(live) : FormDraft();
        return true;
    }
    // Don't Save: back to the record as saved; a new one's form closes.
    void discard() { *this = m_live ? of(live()) : FormDraft(); }
};
