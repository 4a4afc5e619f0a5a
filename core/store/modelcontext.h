#pragma once

#include "store/query.h"
#include "store/record.h"
#include "store/sqlite.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <functional>
#include <initializer_list>
#include <vector>

// The unit of work over one store file. Changes made to live objects are written inside an open
// transaction before any read, so every fetch and count sees them; save() commits them all at
// once, rollback() puts every object back as it was at the last save.
class ModelContext : public QObject {
    Q_OBJECT

public:
    ModelContext(SqliteConnection& connection, std::vector<const Entity*> schema);
    ~ModelContext() override;

    void insert(const RecordRef& record);
    // Deletes with the delete rules: related records are nullified or deleted in turn.
    void remove(const RecordRef& record);

    // Throws StoreError; the changes are then still pending, for a retry or a rollback. Writes of
    // the program go through UnitOfWork, which rolls back instead.
    void save();
    void rollback();
    bool hasChanges() const { return !m_changed.isEmpty(); }

    QList<RecordRef> fetch(const Entity& entity, const FetchDescriptor& descriptor = {});
    RecordRef find(const Entity& entity, const QString& id);
    qint64 count(const Entity& entity, const Condition& filter = {});

    template <class T> QList<Ref<T>> fetch(const FetchDescriptor& descriptor = {})
    {
        const QList<RecordRef> found = fetch(T::schema(), descriptor);
        QList<Ref<T>> result;
        result.reserve(found.size());
        for (const RecordRef& record : found)
            result.append(std::static_pointer_cast<T>(record));
        return result;
    }
    template <class T> Ref<T> fetchFirst(FetchDescriptor descriptor = {})
    {
        descriptor.limit = 1;
        const QList<RecordRef> found = fetch(T::schema(), descriptor);
        return found.isEmpty() ? nullptr : std::static_pointer_cast<T>(found.first());
    }
    template <class T> Ref<T> find(const QUuid& id)
    {
        return std::static_pointer_cast<T>(find(T::schema(), Record::uuidText(id)));
    }
    template <class T> qint64 count(const Condition& filter = {}) { return count(T::schema(), filter); }

    // Calls handler after each save or rollback that touched any of the given record types, for as
    // long as receiver lives: how screens keep their lists live.
    void onChange(QObject* receiver, std::initializer_list<const Entity*> entities,
                  std::function<void()> handler);

    // For answers the record API can't give (sums, the highest number); pending changes are
    // written first so the answer includes them.
    QVariant scalar(const QString& sql, const QVariantList& bindings = {});

    // Rows of a query of one's own (projections, sums, groups) with bound values and no records
    // built: `read` turns the statement's current row into a Row. Pending changes are written
    // first, as for scalar().
    template <class Row, class Read>
    QList<Row> rows(const QString& sql, const QVariantList& bindings, Read read)
    {
        QList<Row> result;
        forEachRow(sql, bindings, [&](const SqliteStatement& row) { result.append(read(row)); });
        return result;
    }
    // The same, handing each row to `visit` as it comes, for a reader that puts rows in place
    // rather than into a list of their own.
    template <class Visit> void forEachRow(const QString& sql, const QVariantList& bindings, Visit visit)
    {
        flush();
        SqliteStatement statement = m_connection.prepare(sql);
        statement.bindAll(bindings);
        while (statement.step())
            visit(static_cast<const SqliteStatement&>(statement));
    }
    SqliteConnection& connection() { return m_connection; }
    // Every record now alive in memory, for checks that memory matches the file.
    QList<RecordRef> liveRecords() const;
    const std::vector<const Entity*>& schema() const { return m_schema; }

Q_SIGNALS:
    // After a save committed and after a rollback: the names of the record types touched.
    void didChange(const QSet<QString>& entityNames);

private:
    friend class Record;

    struct Reference {
        const Entity* owner;
        int field;
    };

    friend class UnitOfWork;

    void flush();
    void recoverLostTransaction();
    void announce(const QSet<QString>& names);
    void write(Record& record);
    void writeJoinRows(Record& record, int field);
    void noteChanged(Record& record);
    void queueFlush(Record& record);
    void resetFlushState();
    void applyDeleteRules(Record& record);
    void forget(Record& record);
    RecordRef materialize(const Entity& entity, SqliteStatement& row);
    QStringList loadJoinIds(const Record& record, int field);

    SqliteConnection& m_connection;
    std::vector<const Entity*> m_schema;
    QHash<const Entity*, QList<Reference>> m_referencesTo; // ToOne fields pointing at an entity
    QHash<const Entity*, QList<Reference>> m_manyToManyTo; // ManyToMany fields pointing at an entity
    QHash<QString, std::weak_ptr<Record>> m_identity;
    qsizetype m_identityPurgeAt = 4096;
    QHash<Record*, RecordRef> m_changed; // everything changed since the last save
    std::vector<RecordRef> m_flushQueue;
    bool m_flushing = false;
    bool m_transactionOpen = false; // this context began the connection's open transaction
    int m_workDepth = 0;            // units of work open, nested ones included
};
