#pragma once

#include "store/entity.h"
#include "store/fieldmask.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QUuid>
#include <QVariant>

#include <memory>
#include <optional>
#include <vector>

class ModelContext;

template <class T> using Ref = std::shared_ptr<T>;
using RecordRef = std::shared_ptr<Record>;

// A live object of the store: one per row in memory (the context's identity map sees to that).
// Setters keep the values of the last save on first change, so a save writes only what changed
// and a rollback can put everything back.
class Record : public std::enable_shared_from_this<Record> {
public:
    struct LoadingTag {};
    static constexpr LoadingTag loading{};

    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;
    virtual ~Record();

    virtual const Entity& entity() const = 0;

    QUuid id() const;
    QString idText() const { return m_values[0].toString(); }

    ModelContext* context() const { return m_context; }
    bool isInserted() const { return m_context != nullptr && m_state != State::Deleted; }
    bool isDeleted() const { return m_state == State::Deleted; }
    bool hasChanges() const { return m_snapshot.has_value() || m_state == State::Inserted; }

    // A copy that belongs to no context, for a form to edit while others save and roll back: its
    // relationships are still read from this record's context. FormDraft writes the edits onto
    // the live record, inside the unit of work of the form's Save.
    template <class T> Ref<T> draft() const { return std::static_pointer_cast<T>(makeDraft()); }
    RecordRef makeDraft() const;
    // For a new record being typed: relationships it names are looked up in `context` until it
    // is inserted.
    void lookUpRelationsIn(ModelContext* context) { m_lookup = context; }
    // Whether every stored field holds the same value as in `other` (a draft of it).
    bool hasSameValuesAs(const Record& other) const;

    // Raw access by field index, for the record layer and generic tools (backup, CSV).
    const QVariant& rawValue(int field) const { return m_values[size_t(field)]; }
    void setRawValue(int field, const QVariant& value);

    static QString uuidText(const QUuid& uuid);
    static QDateTime dateFromSeconds(double seconds);
    static double secondsFromDate(const QDateTime& date);

protected:
    explicit Record(const Entity& entity);
    Record(const Entity& entity, LoadingTag);

    QString textValue(int field) const { return m_values[size_t(field)].toString(); }
    double numberValue(int field) const { return m_values[size_t(field)].toDouble(); }
    qint64 integerValue(int field) const { return m_values[size_t(field)].toLongLong(); }
    bool flagValue(int field) const { return m_values[size_t(field)].toBool(); }
    QDateTime dateValue(int field) const { return dateFromSeconds(m_values[size_t(field)].toDouble()); }
    std::optional<QString> optTextValue(int field) const;
    std::optional<double> optNumberValue(int field) const;
    std::optional<qint64> optIntegerValue(int field) const;
    std::optional<QDateTime> optDateValue(int field) const;
    std::optional<QUuid> optUuidValue(int field) const;
    std::optional<QByteArray> optBytesValue(int field) const;

    void setText(int field, const QString& value) { setRawValue(field, value); }
    void setNumber(int field, double value) { setRawValue(field, value); }
    void setInteger(int field, qint64 value) { setRawValue(field, value); }
    void setFlag(int field, bool value) { setRawValue(field, value); }
    void setDate(int field, const QDateTime& value) { setRawValue(field, secondsFromDate(value)); }
    void setOptText(int field, const std::optional<QString>& value);
    void setOptNumber(int field, std::optional<double> value);
    void setOptInteger(int field, std::optional<qint64> value);
    void setOptDate(int field, const std::optional<QDateTime>& value);
    void setOptUuid(int field, const std::optional<QUuid>& value);
    void setOptBytes(int field, const std::optional<QByteArray>& value);

    RecordRef toOneValue(int field) const;
    void setToOne(int field, const RecordRef& target);
    QList<RecordRef> toManyValue(int field) const;
    QList<RecordRef> manyToManyValue(int field) const;
    void setManyToMany(int field, const QList<RecordRef>& targets);

    template <class T> static Ref<T> cast(const RecordRef& record)
    {
        return std::static_pointer_cast<T>(record);
    }
    template <class T> static QList<Ref<T>> castAll(const QList<RecordRef>& records)
    {
        QList<Ref<T>> result;
        result.reserve(records.size());
        for (const RecordRef& record : records)
            result.append(std::static_pointer_cast<T>(record));
        return result;
    }
    template <class T> static QList<RecordRef> upcastAll(const QList<Ref<T>>& records)
    {
        return QList<RecordRef>(records.begin(), records.end());
    }

private:
    friend class ModelContext;

    enum class State {
        New,        // not in any context yet
        Inserted,   // inserted since the last save
        Persistent, // saved in the store
        Deleted,    // deleted since the last save, or for good after it
    };

    void loadManyToMany(int field) const;
    ModelContext* relationSource() const { return m_context ? m_context : m_lookup; }
    bool isCopiedField(int field) const;
    void rememberTarget(const RecordRef& target);

    mutable std::vector<QVariant> m_values;
    ModelContext* m_context = nullptr;
    ModelContext* m_lookup = nullptr; // where a draft reads its relationships
    State m_state = State::New;
    std::optional<std::vector<QVariant>> m_snapshot; // values at the last save, kept on first change
    State m_stateAtSave = State::New;
    bool m_inDatabase = false;     // a row exists in the open transaction
    FieldMask m_unflushedFields; // fields changed since the last flush
    bool m_queuedForFlush = false;
    std::vector<RecordRef> m_pendingTargets; // related records set before this one joined a context
};
