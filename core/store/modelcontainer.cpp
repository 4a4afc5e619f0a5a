#include "store/modelcontainer.h"

#include "store/storeerror.h"

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
} // namespace

ModelContainer::ModelContainer(const QString& path, SchemaDescription schema)
    : m_schema(std::move(schema))
{
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
        throw StoreError(QStringLiteral("The file holds data of another program, not a Tallyrun store."));
    if (version > m_schema.version)
        throw StoreError(
            QStringLiteral(
                "The store was made by a newer version of Tallyrun (layout %1, this version reads %2).")
                .arg(version)
                .arg(m_schema.version));

    m_connection.execute(QStringLiteral("BEGIN IMMEDIATE"));
    try {
        for (const Entity* entity : m_schema.entities) {
            const bool exists =
                m_connection
                    .scalar(QStringLiteral(
                                "SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name = ?"),
                            {entity->name})
                    .toLongLong() > 0;
            if (exists)
                upgradeTable(*entity);
            else
                createTable(*entity);
        }
        for (const IndexDescription& index : m_schema.indexes) {
            QStringList columns;
            for (const QString& column : index.columns)
                columns << quoted(column);
            m_connection.execute(QStringLiteral("CREATE INDEX IF NOT EXISTS %1 ON %2 (%3)")
                                     .arg(quoted(QLatin1String(index.table) + QLatin1Char('_') +
                                                 index.columns.join(QLatin1Char('_'))),
                                          quoted(QLatin1String(index.table)),
                                          columns.join(QStringLiteral(", "))));
        }
        m_connection.execute(QStringLiteral("PRAGMA application_id = %1").arg(m_schema.applicationId));
        m_connection.execute(QStringLiteral("PRAGMA user_version = %1").arg(m_schema.version));
        m_connection.execute(QStringLiteral("COMMIT"));
    } catch (const StoreError&) {
        if (m_connection.inTransaction())
            m_connection.execute(QStringLiteral("ROLLBACK"));
        throw;
    }
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

void ModelContainer::createTable(const Entity& entity)
{
    QStringList columns;
    for (int field : entity.columnFields)
        columns << columnDefinition(entity.fields[size_t(field)]);
    m_connection.execute(
        QStringLiteral("CREATE TABLE %1 (%2)").arg(quoted(entity.name), columns.join(QStringLiteral(", "))));
    createRelationshipTables(entity);
}

void ModelContainer::createRelationshipTables(const Entity& entity)
{
    for (size_t i = 0; i < entity.fields.size(); ++i) {
        const FieldDescription& field = entity.fields[i];
        if (field.type == FieldType::ToOne) {
            m_connection.execute(QStringLiteral("CREATE INDEX IF NOT EXISTS %1 ON %2 (%3)")
                                     .arg(quoted(entity.name + QLatin1Char('_') + QLatin1String(field.name)),
                                          quoted(entity.name), quoted(QLatin1String(field.name))));
        } else if (field.type == FieldType::ManyToMany) {
            const QString join = entity.joinTable(int(i));
            const QString left = entity.name;
            const QString right = field.target().name;
            m_connection.execute(
                QStringLiteral(
                    "CREATE TABLE IF NOT EXISTS %1 (%2 TEXT NOT NULL REFERENCES %2(\"id\") ON DELETE CASCADE "
                    "DEFERRABLE INITIALLY DEFERRED, %3 TEXT NOT NULL REFERENCES %3(\"id\") ON DELETE CASCADE "
                    "DEFERRABLE INITIALLY DEFERRED)")
                    .arg(quoted(join), quoted(left), quoted(right)));
            m_connection.execute(
                QStringLiteral("CREATE INDEX IF NOT EXISTS %1 ON %2 (%3)")
                    .arg(quoted(join + QLatin1Char('_') + left), quoted(join), quoted(left)));
            m_connection.execute(
                QStringLiteral("CREATE INDEX IF NOT EXISTS %1 ON %2 (%3)")
                    .arg(quoted(join + QLatin1Char('_') + right), quoted(join), quoted(right)));
        }
    }
}

// An older store gains the columns added since, with their defaults; a column that exists with
// another kind of data means the file is not what it seems.
void ModelContainer::upgradeTable(const Entity& entity)
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
            m_connection.execute(QStringLiteral("ALTER TABLE %1 ADD COLUMN %2")
                                     .arg(quoted(entity.name), columnDefinition(field)));
        } else if (found.value() != field.sqlType()) {
            throw StoreError(
                QStringLiteral("Its column %1.%2 holds %3 where %4 is expected.")
                    .arg(entity.name, name,
                         found.value().isEmpty() ? QStringLiteral("untyped data") : found.value(),
                         field.sqlType()));
        }
    }
    createRelationshipTables(entity);
}
