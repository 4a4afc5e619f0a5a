#include "store/modelcontainer.h"

#include "store/storeerror.h"

#include <QFileInfo>
#include <QSet>

namespace {
QString quoted(const QString& name)
{
    return QLatin1Char('"') + name + QLatin1Char('"');
}

QString sqlLiteral(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::Double:
        return QString::number(value.toDouble(), 'g', 17);
    case QMetaType::LongLong:
        return QString::number(value.toLongLong());
    default:
        return QLatin1Char('\'') + value.toString().replace(QLatin1Char('\''), QStringLiteral("''")) +
               QLatin1Char('\'');
    }
}
template <class Work> void inTransaction(SqliteConnection& connection, Work work)
{
    connection.execute(QStringLiteral("BEGIN IMMEDIATE"));
    try {
        work();
        connection.execute(QStringLiteral("COMMIT"));
    } catch (const StoreError&) {
        if (connection.inTransaction())
            connection.execute(QStringLiteral("ROLLBACK"));
        throw;
    }
}
} // namespace

ModelContainer::ModelContainer(const QString& path, SchemaDescription schema)
    : m_schema(std::move(schema))
{
    // Said at the door rather than by the first sale: SQLite would open such a file for reading
    // and fail every write, or fail to make the write-ahead log beside it.
    const QFileInfo file(path);
    if ((file.exists() && !file.isWritable()) || !QFileInfo(file.absolutePath()).isWritable())
        throw StoreError(QStringLiteral("The store %1 can't be written: its file or folder is read-only. Make "
                                        "it writable and start Brindle again.")
                             .arg(path),
                         StoreError::Kind::readOnly);
    m_connection.open(path);
    try {
        configure();
        createOrUpgrade();
    } catch (const StoreError& error) {
        m_connection.close();
        throw StoreError(
            QStringLiteral("%1 could not be opened as a store. %2").arg(path, error.description()));
    }
    m_context = std::make_unique<ModelContext>(m_connection, m_schema.entities);
}

ModelContainer::~ModelContainer()
{
    m_context.reset();
    // Keeps the query planner's statistics fresh, bounded so closing stays quick on a big store;
    // without them SQLite can pick an index that walks every payment of five years.
    try {
        m_connection.execute(QStringLiteral("PRAGMA analysis_limit=400; PRAGMA optimize;"));
    } catch (const StoreError&) {
        // Only advice for the planner: a store that can't take it is still whole.
    }
    m_connection.close();
}

void ModelContainer::configure()
{
    // A file that is not SQLite at all fails on its first read, here.
    const QString mode = m_connection.scalar(QStringLiteral("PRAGMA journal_mode=WAL")).toString();
    if (mode.compare(QStringLiteral("wal"), Qt::CaseInsensitive) != 0)
        throw StoreError(QStringLiteral("Its journal could not be switched to WAL (it is %1).").arg(mode));
    // A sale that was saved must survive a power cut.
    m_connection.execute(QStringLiteral("PRAGMA synchronous=FULL"));
    m_connection.execute(QStringLiteral("PRAGMA foreign_keys=ON"));
    // Years of sales spread one customer's or one shift's rows over many pages; SQLite's 2 MB
    // default would read them from the file again on every look. Taken only as pages are read.
    m_connection.execute(QStringLiteral("PRAGMA cache_size=-32768"));
    // A year's report reads some 100 MB of lines; with the file mapped SQLite reads those pages in
    // place rather than copying each out of the system's cache, which halves the time. Writes
    // still go through the log. SQLite caps the size at what it was built for.
    m_connection.execute(QStringLiteral("PRAGMA mmap_size=2147418112"));
    // A sale dirties the same table tails and index pages as the one before it; copying the log
    // back less often writes each of them once for more sales. The log stays under 40 MB.
    m_connection.execute(QStringLiteral("PRAGMA wal_autocheckpoint=10000"));
}

void ModelContainer::createOrUpgrade()
{
    const qint64 tables =
        m_connection
            .scalar(QStringLiteral(
                "SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%'"))
            .toLongLong();
    const qint64 applicationId = m_connection.scalar(QStringLiteral("PRAGMA application_id")).toLongLong();
    const qint64 version = m_connection.scalar(QStringLiteral("PRAGMA user_version")).toLongLong();
    if (tables > 0 && applicationId != m_schema.applicationId)
        throw StoreError(QStringLiteral("The file holds data of another program, not a Brindle store."));
    if (version > m_schema.version())
        throw StoreError(
            QStringLiteral(
                "The store was made by a newer version of Brindle (layout %1, this version reads %2).")
                .arg(version)
                .arg(m_schema.version()));

    // Work out what is missing by reading only, so that opening a store that is up to date
    // writes nothing and needs no write lock.
    {
        SqliteStatement existing = m_connection.prepare(
            QStringLiteral("SELECT name FROM sqlite_master WHERE type IN ('table', 'index')"));
        while (existing.step())
            m_existingNames.insert(existing.text(0));
    }
    QStringList plan;
    for (const Entity* entity : m_schema.entities) {
        if (m_existingNames.contains(entity->name))
            upgradeTable(*entity, plan);
        else
            createTable(*entity, plan);
    }
    for (const IndexDescription& index : m_schema.indexes) {
        QStringList columns;
        for (const QString& column : index.columns)
            columns << quoted(column);
        addIndex(QLatin1String(index.table) + QLatin1Char('_') + index.columns.join(QLatin1Char('_')),
                 QLatin1String(index.table), columns.join(QStringLiteral(", ")), plan);
    }
    if (applicationId != m_schema.applicationId)
        plan << QStringLiteral("PRAGMA application_id = %1").arg(m_schema.applicationId);
    if (version < 1)
        plan << QStringLiteral("PRAGMA user_version = 1");
    if (!plan.isEmpty()) {
        inTransaction(m_connection, [&] {
            for (const QString& statement : std::as_const(plan))
                m_connection.execute(statement);
        });
    }
    migrate(qMax<qint64>(version, 1));
}

void ModelContainer::migrate(qint64 fromVersion)
{
    for (const MigrationStep& step : m_schema.migrations) {
        if (step.version <= fromVersion)
            continue;
        inTransaction(m_connection, [&] {
            step.apply(m_connection);
            m_connection.execute(QStringLiteral("PRAGMA user_version = %1").arg(step.version));
        });
    }
}

void ModelContainer::addIndex(const QString& name, const QString& table, const QString& columns,
                              QStringList& plan)
{
    if (m_existingNames.contains(name))
        return;
    m_existingNames.insert(name);
    plan << QStringLiteral("CREATE INDEX %1 ON %2 (%3)").arg(quoted(name), quoted(table), columns);
}

QString ModelContainer::columnDefinition(const FieldDescription& field) const
{
    QString definition = quoted(QLatin1String(field.name)) + QLatin1Char(' ') + field.sqlType();
    switch (field.type) {
    case FieldType::Id:
        return definition + QStringLiteral(" PRIMARY KEY NOT NULL");
    case FieldType::Text:
    case FieldType::Number:
    case FieldType::Integer:
    case FieldType::Flag:
        return definition + QStringLiteral(" NOT NULL DEFAULT ") + sqlLiteral(field.defaultValue);
    case FieldType::Date:
        return definition + QStringLiteral(" NOT NULL DEFAULT 0");
    case FieldType::ToOne:
        // Relationship rules are applied to the live objects first; the constraint only keeps
        // the file consistent if a row goes by another road.
        return definition +
               QStringLiteral(" REFERENCES %1(\"id\") ON DELETE SET NULL DEFERRABLE INITIALLY DEFERRED")
                   .arg(quoted(field.target().name));
    default:
        return definition;
    }
}

void ModelContainer::createTable(const Entity& entity, QStringList& plan)
{
    QStringList columns;
    for (int field : entity.columnFields)
        columns << columnDefinition(entity.fields[size_t(field)]);
    plan << QStringLiteral("CREATE TABLE %1 (%2)")
                .arg(quoted(entity.name), columns.join(QStringLiteral(", ")));
    m_existingNames.insert(entity.name);
    createRelationshipTables(entity, plan);
}

// Every relationship column is indexed, unless a declared index already starts with it.
bool ModelContainer::coveredByDeclaredIndex(const Entity& entity, const char* column) const
{
    for (const IndexDescription& index : m_schema.indexes) {
        if (entity.name == QLatin1String(index.table) && index.columns.first() == QLatin1String(column))
            return true;
    }
    return false;
}

void ModelContainer::createRelationshipTables(const Entity& entity, QStringList& plan)
{
    for (size_t i = 0; i < entity.fields.size(); ++i) {
        const FieldDescription& field = entity.fields[i];
        if (field.type == FieldType::ToOne) {
            if (!coveredByDeclaredIndex(entity, field.name))
                addIndex(entity.name + QLatin1Char('_') + QLatin1String(field.name), entity.name,
                         quoted(QLatin1String(field.name)), plan);
        } else if (field.type == FieldType::ManyToMany) {
            const QString join = entity.joinTable(int(i));
            const QString left = entity.name;
            const QString right = field.target().name;
            if (!m_existingNames.contains(join)) {
                plan << QStringLiteral(
                            "CREATE TABLE %1 (%2 TEXT NOT NULL REFERENCES %2(\"id\") ON DELETE CASCADE "
                            "DEFERRABLE INITIALLY DEFERRED, %3 TEXT NOT NULL REFERENCES %3(\"id\") ON "
                            "DELETE CASCADE DEFERRABLE INITIALLY DEFERRED)")
                            .arg(quoted(join), quoted(left), quoted(right));
                m_existingNames.insert(join);
            }
            addIndex(join + QLatin1Char('_') + left, join, quoted(left), plan);
            addIndex(join + QLatin1Char('_') + right, join, quoted(right), plan);
        }
    }
}

// An older store gains the columns added since, with their defaults; a column that exists with
// another kind of data means the file is not what it seems.
void ModelContainer::upgradeTable(const Entity& entity, QStringList& plan)
{
    QHash<QString, QString> existing;
    {
        SqliteStatement info =
            m_connection.prepare(QStringLiteral("PRAGMA table_info(%1)").arg(quoted(entity.name)));
        while (info.step())
            existing.insert(info.text(1), info.text(2).toUpper());
    }
    for (int index : entity.columnFields) {
        const FieldDescription& field = entity.fields[size_t(index)];
        const QString name = QLatin1String(field.name);
        auto found = existing.constFind(name);
        if (found == existing.constEnd()) {
            if (field.type == FieldType::Id)
                throw StoreError(QStringLiteral("Its table %1 has no id column.").arg(entity.name));
            plan << QStringLiteral("ALTER TABLE %1 ADD COLUMN %2")
                        .arg(quoted(entity.name), columnDefinition(field));
        } else if (found.value() != field.sqlType()) {
            throw StoreError(
                QStringLiteral("Its column %1.%2 holds %3 where %4 is expected.")
                    .arg(entity.name, name,
                         found.value().isEmpty() ? QStringLiteral("untyped data") : found.value(),
                         field.sqlType()));
        }
    }
    createRelationshipTables(entity, plan);
}
