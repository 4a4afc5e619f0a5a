#include "support/teststore.h"

#include "records/posschema.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

TestStore::TestStore()
    : m_path(m_dir.filePath(QStringLiteral("test.store")))
{
    m_container = std::make_unique<ModelContainer>(m_path, POSSchema::description());
}

void TestStore::reopen()
{
    m_container.reset();
    m_container = std::make_unique<ModelContainer>(m_path, POSSchema::description());
}

qint64 countRowsOnDisk(const QString& path, const QString& table)
{
    sqlite3* db = nullptr;
    EXPECT_EQ(sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
    sqlite3_stmt* statement = nullptr;
    const QByteArray sql = QStringLiteral("SELECT COUNT(*) FROM \"%1\"").arg(table).toUtf8();
    qint64 result = -1;
    if (sqlite3_prepare_v2(db, sql.constData(), -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW)
        result = sqlite3_column_int64(statement, 0);
    sqlite3_finalize(statement);
    sqlite3_close(db);
    return result;
}
