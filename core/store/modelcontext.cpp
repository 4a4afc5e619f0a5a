#include "store/modelcontext.h"

#include "store/storeerror.h"

#include <QScopeGuard>

ModelContext::ModelContext(SqliteConnection& connection, std::vector<const Entity*> schema)
    : m_connection(connection)
    , m_schema(std::move(schema))
{
    for (const Entity* owner : m_schema) {
        for (size_t i = 0; i < owner->fields.size(); ++i) {
            const FieldDescription& field = owner->fields[i];
            if (field.type == FieldType::ToOne)
                m_referencesTo[&field.target()].append({owner, int(i)});
            else if (field.type == FieldType::ManyToMany)
                m_manyToManyTo[&field.target()].append({owner, int(i)});
        }
    }
}

ModelContext::~ModelContext()
{
    // Unsaved work is dropped, as when the program ends without saving.
    if (m_connection.isOpen() && m_connection.inTransaction())
        m_connection.execute(QStringLiteral("ROLLBACK"));
}

void ModelContext::insert(const RecordRef& record)
{
    Q_ASSERT(record);
    if (record->m_context == this && record->m_state != Record::State::Deleted)
        return;
    Q_ASSERT(record->m_context == nullptr);
    record->m_context = this;
    record->m_state = Record::State::Inserted;
    record->m_stateAtSave = Record::State::New;
    record->m_inDatabase = false;
    record->m_unflushedFields.clear();
    m_identity.insert(record->idText(), record);
    m_changed.insert(record.get(), record);
    queueFlush(*record);
    const std::vector<RecordRef> targets = std::exchange(record->m_pendingTargets, {});
    for (const RecordRef& target : targets) {
        if (!target->m_context)
            insert(target);
    }
}

void ModelContext::remove(const RecordRef& record)
{
    Q_ASSERT(record);
    if (record->m_context != this || record->m_state == Record::State::Deleted)
        return;
    applyDeleteRules(*record);
    noteChanged(*record);
    record->m_state = Record::State::Deleted;
    m_identity.remove(record->idText());
    queueFlush(*record);
}

void ModelContext::applyDeleteRules(Record& record)
{
    const Entity& entity = record.entity();
    const QString id = record.idText();
    for (const Reference& reference : m_referencesTo.value(&entity)) {
        const char* fieldName = reference.owner->fields[size_t(reference.field)].name;
        DeleteRule rule = DeleteRule::Nullify;
        for (const FieldDescription& field : entity.fields) {
            if (field.type == FieldType::ToMany && &field.target() == reference.owner &&
                qstrcmp(field.inverse, fieldName) == 0)
                rule = field.rule;
        }
        const QList<RecordRef> related = fetch(*reference.owner, FetchDescriptor(Column{fieldName} == id));
        for (const RecordRef& other : related) {
            if (rule == DeleteRule::Cascade)
                remove(other);
            else
                other->setRawValue(reference.field, QVariant());
        }
    }
    for (const Reference& reference : m_manyToManyTo.value(&entity)) {
        const QString joinTable = reference.owner->joinTable(reference.field);
        const QList<RecordRef> holders = fetch(
            *reference.owner,
            FetchDescriptor(Condition(QStringLiteral("\"id\" IN (SELECT \"%1\" FROM \"%2\" WHERE \"%3\" = ?)")
                                          .arg(reference.owner->name, joinTable, entity.name),
                                      {id})));
        for (const RecordRef& holder : holders) {
            holder->loadManyToMany(reference.field);
            QStringList ids = holder->m_values[size_t(reference.field)].toStringList();
            ids.removeAll(id);
            holder->setRawValue(reference.field, ids);
        }
    }
}

void ModelContext::noteChanged(Record& record)
{
    if (m_changed.contains(&record))
        return;
    record.m_stateAtSave = record.m_state;
    if (record.m_state == Record::State::Persistent && !record.m_snapshot)
        record.m_snapshot = record.m_values;
    m_changed.insert(&record, record.shared_from_this());
}

void ModelContext::queueFlush(Record& record)
{
    if (record.m_queuedForFlush)
        return;
    record.m_queuedForFlush = true;
    m_flushQueue.push_back(record.shared_from_this());
}

void ModelContext::flush()
{
    recoverLostTransaction();
    if (m_flushQueue.empty() || m_flushing)
        return;
    m_flushing = true;
    const auto flushed = qScopeGuard([this] { m_flushing = false; });
    if (!m_connection.inTransaction()) {
        m_connection.execute(QStringLiteral("BEGIN IMMEDIATE"));
        m_transactionOpen = true;
    }

    struct Before {
        Record* record;
        bool inDatabase;
        FieldMask unflushed;
    };
    std::vector<Before> before;
    before.reserve(m_flushQueue.size());
    m_connection.execute(QStringLiteral("SAVEPOINT flush"));
    try {
        for (const RecordRef& record : m_flushQueue) {
            before.push_back({record.get(), record->m_inDatabase, record->m_unflushedFields});
            write(*record);
        }
        m_connection.execute(QStringLiteral("RELEASE flush"));
    } catch (const StoreError&) {
        if (m_connection.inTransaction()) {
            // Back to where the transaction was before this flush; these changes stay pending.
            m_connection.execute(QStringLiteral("ROLLBACK TO flush"));
            m_connection.execute(QStringLiteral("RELEASE flush"));
            for (const Before& b : before) {
                b.record->m_inDatabase = b.inDatabase;
                b.record->m_unflushedFields = b.unflushed;
            }
        } else {
            recoverLostTransaction();
        }
        throw;
    }
    for (const RecordRef& record : m_flushQueue)
        record->m_queuedForFlush = false;
    m_flushQueue.clear();
}

// SQLite cancels the whole transaction on some failures (a full disk, an I/O error): what earlier
// flushes wrote is gone from the file, so everything since the last save is pending again.
void ModelContext::recoverLostTransaction()
{
    if (!m_transactionOpen || m_connection.inTransaction())
        return;
    m_transactionOpen = false;
    resetFlushState();
}

void ModelContext::write(Record& record)
{
    const Entity& entity = record.entity();
    const QString table = QLatin1Char('"') + entity.name + QLatin1Char('"');
    if (record.m_state == Record::State::Deleted || record.m_state == Record::State::New) {
        if (!record.m_inDatabase)
            return;
        SqliteStatement statement =
            m_connection.prepare(QStringLiteral("DELETE FROM %1 WHERE \"id\" = ?").arg(table));
        statement.bind(1, record.idText());
        statement.execute();
        record.m_inDatabase = false;
        record.m_unflushedFields.clear();
        return;
    }
    if (!record.m_inDatabase) {
        QStringList marks(qsizetype(entity.columnFields.size()), QStringLiteral("?"));
        SqliteStatement statement =
            m_connection.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                     .arg(table, entity.selectList, marks.join(QLatin1Char(','))));
        int bindIndex = 1;
        for (int field : entity.columnFields)
            statement.bind(bindIndex++, record.m_values[size_t(field)]);
        statement.execute();
        record.m_inDatabase = true;
        for (size_t i = 0; i < entity.fields.size(); ++i) {
            if (entity.fields[i].type == FieldType::ManyToMany && record.m_values[i].isValid())
                writeJoinRows(record, int(i));
        }
        record.m_unflushedFields.clear();
        return;
    }
    if (record.m_unflushedFields.isEmpty())
        return;
    QStringList assignments;
    QVariantList values;
    for (int field : entity.columnFields) {
        if (record.m_unflushedFields.test(field)) {
            assignments << QLatin1Char('"') + QLatin1String(entity.fields[size_t(field)].name) +
                               QStringLiteral("\" = ?");
            values << record.m_values[size_t(field)];
        }
    }
    if (!assignments.isEmpty()) {
        SqliteStatement statement =
            m_connection.prepare(QStringLiteral("UPDATE %1 SET %2 WHERE \"id\" = ?")
                                     .arg(table, assignments.join(QStringLiteral(", "))));
        statement.bindAll(values);
        statement.bind(int(values.size()) + 1, record.idText());
        statement.execute();
    }
    for (size_t i = 0; i < entity.fields.size(); ++i) {
        if (entity.fields[i].type == FieldType::ManyToMany && record.m_unflushedFields.test(int(i)))
            writeJoinRows(record, int(i));
    }
    record.m_unflushedFields.clear();
}

void ModelContext::writeJoinRows(Record& record, int field)
{
    const Entity& entity = record.entity();
    const QString joinTable = entity.joinTable(field);
    const QString target = entity.fields[size_t(field)].target().name;
    SqliteStatement clear = m_connection.prepare(
        QStringLiteral("DELETE FROM \"%1\" WHERE \"%2\" = ?").arg(joinTable, entity.name));
    clear.bind(1, record.idText());
    clear.execute();
    const QString insertSql = QStringLiteral("INSERT INTO \"%1\" (\"%2\", \"%3\") VALUES (?, ?)")
                                  .arg(joinTable, entity.name, target);
    for (const QString& id : record.m_values[size_t(field)].toStringList()) {
        SqliteStatement insert = m_connection.prepare(insertSql);
        insert.bind(1, record.idText());
        insert.bind(2, id);
        insert.execute();
    }
}

QStringList ModelContext::loadJoinIds(const Record& record, int field)
{
    const Entity& entity = record.entity();
    SqliteStatement statement = m_connection.prepare(
        QStringLiteral("SELECT \"%1\" FROM \"%2\" WHERE \"%3\" = ? ORDER BY rowid")
            .arg(entity.fields[size_t(field)].target().name, entity.joinTable(field), entity.name));
    statement.bind(1, record.idText());
    QStringList ids;
    while (statement.step())
        ids.append(statement.text(0));
    return ids;
}

void ModelContext::save()
{
    // A save that fails leaves no transaction open: the file stays as it was at the last save and
    // free for others, and the changes stay pending in memory for a retry or a rollback.
    try {
        flush();
        if (m_connection.inTransaction())
            m_connection.execute(QStringLiteral("COMMIT"));
        m_transactionOpen = false;
    } catch (const StoreError&) {
        if (m_connection.inTransaction())
            m_connection.execute(QStringLiteral("ROLLBACK"));
        m_transactionOpen = false;
        resetFlushState();
        throw;
    }
    QSet<QString> names;
    for (const RecordRef& record : std::as_const(m_changed)) {
        names.insert(record->entity().name);
        if (record->m_state == Record::State::Inserted)
            record->m_state = Record::State::Persistent;
        record->m_snapshot.reset();
        record->m_stateAtSave = record->m_state;
    }
    m_changed.clear();
    announce(names);
}

// Whatever a listener does, what was committed stays committed and is reported so.
void ModelContext::announce(const QSet<QString>& names)
{
    if (names.isEmpty())
        return;
    try {
        Q_EMIT didChange(names);
    } catch (const std::exception& error) {
        qCWarning(lcStore) << "A screen could not follow a change of" << names << ":" << error.what();
    }
}

// After a failed save nothing of the transaction is left, so every change since the last save
// has to be written again.
void ModelContext::resetFlushState()
{
    for (const RecordRef& record : std::as_const(m_changed)) {
        record->m_inDatabase = record->m_stateAtSave == Record::State::Persistent;
        record->m_unflushedFields.clear();
        if (record->m_snapshot && record->m_state != Record::State::Deleted) {
            for (size_t i = 0; i < record->m_values.size(); ++i) {
                const QVariant& old = (*record->m_snapshot)[i];
                if (old != record->m_values[i] || old.isNull() != record->m_values[i].isNull())
                    record->m_unflushedFields.set(int(i));
            }
        }
        queueFlush(*record);
    }
}

void ModelContext::rollback()
{
    if (m_connection.inTransaction())
        m_connection.execute(QStringLiteral("ROLLBACK"));
    m_transactionOpen = false;
    QSet<QString> names;
    for (const RecordRef& record : std::as_const(m_changed)) {
        names.insert(record->entity().name);
        if (record->m_stateAtSave == Record::State::Persistent) {
            if (record->m_snapshot)
                record->m_values = *record->m_snapshot;
            record->m_state = Record::State::Persistent;
            record->m_inDatabase = true;
            m_identity.insert(record->idText(), record);
        } else {
            forget(*record);
        }
        record->m_snapshot.reset();
        record->m_unflushedFields.clear();
    }
    for (const RecordRef& record : m_flushQueue)
        record->m_queuedForFlush = false;
    m_flushQueue.clear();
    m_changed.clear();
    announce(names);
}

void ModelContext::forget(Record& record)
{
    m_identity.remove(record.idText());
    record.m_context = nullptr;
    record.m_state = Record::State::New;
    record.m_inDatabase = false;
}

RecordRef ModelContext::materialize(const Entity& entity, SqliteStatement& row)
{
    const QString id = row.text(0);
    auto known = m_identity.constFind(id);
    if (known != m_identity.constEnd()) {
        if (RecordRef live = known.value().lock())
            return live;
    }
    RecordRef record = entity.makeForLoading();
    int column = 0;
    for (int field : entity.columnFields) {
        const FieldDescription& description = entity.fields[size_t(field)];
        QVariant& value = record->m_values[size_t(field)];
        const bool null = row.isNull(column);
        switch (description.type) {
        case FieldType::Id:
        case FieldType::Text:
            value = null ? description.defaultValue : QVariant(row.text(column));
            break;
        case FieldType::Number:
        case FieldType::Date:
            value = null ? QVariant(description.defaultValue.toDouble()) : QVariant(row.real(column));
            break;
        case FieldType::Integer:
            value = null ? QVariant(description.defaultValue.toLongLong()) : QVariant(row.integer(column));
            break;
        case FieldType::Flag:
            value = null ? QVariant(description.defaultValue.toBool()) : QVariant(row.integer(column) != 0);
            break;
        case FieldType::OptText:
        case FieldType::OptUuid:
        case FieldType::ToOne:
            value = null ? QVariant() : QVariant(row.text(column));
            break;
        case FieldType::OptNumber:
        case FieldType::OptDate:
            value = null ? QVariant() : QVariant(row.real(column));
            break;
        case FieldType::OptInteger:
            value = null ? QVariant() : QVariant(row.integer(column));
            break;
        case FieldType::OptBytes:
            value = null ? QVariant() : QVariant(row.blob(column));
            break;
        default:
            break;
        }
        ++column;
    }
    record->m_context = this;
    record->m_state = Record::State::Persistent;
    record->m_stateAtSave = Record::State::Persistent;
    record->m_inDatabase = true;
    if (m_identity.size() >= m_identityPurgeAt) {
        m_identity.removeIf([](const auto& entry) { return entry.value().expired(); });
        m_identityPurgeAt = qMax<qsizetype>(4096, m_identity.size() * 2);
    }
    m_identity.insert(id, record);
    return record;
}

QList<RecordRef> ModelContext::fetch(const Entity& entity, const FetchDescriptor& descriptor)
{
    flush();
    QString sql = QStringLiteral("SELECT %1 FROM \"%2\"").arg(entity.selectList, entity.name);
    if (!descriptor.filter.isEmpty())
        sql += QStringLiteral(" WHERE ") + descriptor.filter.sql();
    sql += QStringLiteral(" ORDER BY ");
    for (const SortDescriptor& sort : descriptor.sort)
        sql += sort.column.quoted() + (sort.ascending ? QStringLiteral(" ASC, ") : QStringLiteral(" DESC, "));
    sql += QStringLiteral("rowid");
    const bool paged = descriptor.limit >= 0 || descriptor.offset > 0;
    if (paged)
        sql += QStringLiteral(" LIMIT ? OFFSET ?");

    SqliteStatement statement = m_connection.prepare(sql);
    statement.bindAll(descriptor.filter.bindings());
    if (paged) {
        const int first = int(descriptor.filter.bindings().size()) + 1;
        statement.bind(first, descriptor.limit);
        statement.bind(first + 1, descriptor.offset);
    }
    QList<RecordRef> result;
    while (statement.step())
        result.append(materialize(entity, statement));
    return result;
}

RecordRef ModelContext::find(const Entity& entity, const QString& id)
{
    auto known = m_identity.constFind(id);
    if (known != m_identity.constEnd()) {
        if (RecordRef live = known.value().lock())
            return &live->entity() == &entity ? live : nullptr;
    }
    const QList<RecordRef> found = fetch(entity, FetchDescriptor(Column{"id"} == id).limitedTo(1));
    return found.isEmpty() ? nullptr : found.first();
}

qint64 ModelContext::count(const Entity& entity, const Condition& filter)
{
    flush();
    QString sql = QStringLiteral("SELECT COUNT(*) FROM \"%1\"").arg(entity.name);
    if (!filter.isEmpty())
        sql += QStringLiteral(" WHERE ") + filter.sql();
    return m_connection.scalar(sql, filter.bindings()).toLongLong();
}

QVariant ModelContext::scalar(const QString& sql, const QVariantList& bindings)
{
    flush();
    return m_connection.scalar(sql, bindings);
}

void ModelContext::onChange(QObject* receiver, std::initializer_list<const Entity*> entities,
                            std::function<void()> handler)
{
    QStringList names;
    for (const Entity* entity : entities)
        names.append(entity->name);
    connect(this, &ModelContext::didChange, receiver,
            [names, handler = std::move(handler)](const QSet<QString>& changed) {
                for (const QString& name : names) {
                    if (!changed.contains(name))
                        continue;
                    // One screen that can't refresh must not keep the others from it.
                    try {
                        handler();
                    } catch (const std::exception& error) {
                        qCWarning(lcStore) << "A screen could not follow a change:" << error.what();
                    }
                    return;
                }
            });
}

QList<RecordRef> ModelContext::liveRecords() const
{
    QList<RecordRef> records;
    for (const std::weak_ptr<Record>& entry : m_identity) {
        if (RecordRef record = entry.lock())
            records.append(record);
    }
    return records;
}
