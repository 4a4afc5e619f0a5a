#pragma once

#include "store/entity.h"
#include "store/modelcontext.h"
#include "store/sqlite.h"

#include <QSet>

#include <functional>

#include <memory>
#include <vector>

struct IndexDescription {
    const char* table;
    QStringList columns;
};

// A numbered change of the layout that tables, columns and indexes made from the records can't
// express. Runs once, in its own transaction, on a store whose user_version is below `version`.
struct MigrationStep {
    qint32 version;
    std::function<void(SqliteConnection&)> apply;
};

struct SchemaDescription {
    std::vector<const Entity*> entities;
    std::vector<IndexDescription> indexes; // beyond the ones every relationship column gets
    qint32 applicationId;
    std::vector<MigrationStep> migrations; // in order; the last one's number is the layout's version

    // The layout made from the records alone is version 1.
    qint32 version() const { return migrations.empty() ? 1 : migrations.back().version; }
};

// One store file opened with its schema, and its one model context. Opening makes the tables
// of a new file and adds missing columns (with their defaults) to an older one; a file that is
// not a store of this program, or one whose columns hold other kinds of data, is refused with
// a StoreError instead of being read wrongly.
class ModelContainer {
public:
    ModelContainer(const QString& path, SchemaDescription schema);
    ModelContainer(const ModelContainer&) = delete;
    ModelContainer& operator=(const ModelContainer&) = delete;
    ~ModelContainer();

    ModelContext& mainContext() { return *m_context; }
    QString path() const { return m_connection.path(); }

private:
    void configure();
    void createOrUpgrade();
    void migrate(qint64 fromVersion);
    // These add to a plan of statements that runs in one transaction, only when it isn't empty.
    void createTable(const Entity& entity, QStringList& plan);
    void upgradeTable(const Entity& entity, QStringList& plan);
    void createRelationshipTables(const Entity& entity, QStringList& plan); // indexes and join tables
    void addIndex(const QString& name, const QString& table, const QString& columns, QStringList& plan);
    bool coveredByDeclaredIndex(const Entity& entity, const char* column) const;
    QString columnDefinition(const FieldDescription& field) const;

    SqliteConnection m_connection;
    SchemaDescription m_schema;
    QSet<QString> m_existingNames; // tables and indexes in the file
    std::unique_ptr<ModelContext> m_context;
};
