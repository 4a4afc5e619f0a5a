#pragma once

#include "store/entity.h"
#include "store/modelcontext.h"
#include "store/sqlite.h"

#include <QSet>

#include <memory>
#include <vector>

struct IndexDescription {
    const char* table;
    QStringList columns;
};

struct SchemaDescription {
    std::vector<const Entity*> entities;
    std::vector<IndexDescription> indexes; // beyond the ones every relationship column gets
    qint32 applicationId;
    qint32 version;
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
