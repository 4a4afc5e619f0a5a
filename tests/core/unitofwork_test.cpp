#include "records/posschema.h"
#include "records/records.h"
#include "store/storeerror.h"
#include "store/unitofwork.h"
#include "support/faultloop.h"
#include "support/printers.h"
#include "support/teststore.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <sqlite3.h>

namespace {

Ref<Category> addCategory(ModelContext& context, const QString& name)
{
    auto category = std::make_shared<Category>();
    category->setName(name);
    context.insert(category);
    return category;
}

} // namespace

TEST(UnitOfWork, AnyExceptionRollsBackEverythingSinceItBegan)
{
    TestStore store;
    ModelContext& context = store.context();
    const Ref<Category> kept = performUnitOfWork(context, [&] { return addCategory(context, "Kept"); });
    EXPECT_THROW(performUnitOfWork(context,
                                   [&] {
                                       kept->setName(QStringLiteral("Renamed"));
                                       addCategory(context, QStringLiteral("Dropped"));
                                       context.count<Category>(); // flushed into the open transaction
                                       throw 42;                  // not even an exception class
                                   }),
                 int);
    EXPECT_EQ(kept->name(), QStringLiteral("Kept"));
    EXPECT_FALSE(context.hasChanges());
    EXPECT_FALSE(context.connection().inTransaction());
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Category")), 1);
}

TEST(UnitOfWork, InnerUnitsJoinAndOnlyTheOutermostSaves)
{
    TestStore store;
    ModelContext& context = store.context();
    QSignalSpy spy(&context, &ModelContext::didChange);
    performUnitOfWork(context, [&] {
        addCategory(context, QStringLiteral("Outer"));
        performUnitOfWork(context, [&] { addCategory(context, QStringLiteral("Inner")); });
        EXPECT_TRUE(context.hasChanges()); // the inner commit saved nothing yet
        EXPECT_EQ(spy.count(), 0);
    });
    EXPECT_EQ(spy.count(), 1);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Category")), 2);
}

// A failed BEGIN once left the context flushing for good: every later save was a silent no-op.
TEST(UnitOfWork, AFailedBeginLeavesTheContextUsable)
{
    TestStore store;
    ModelContext& context = store.context();
    // The first call of a write is its BEGIN IMMEDIATE.
    SqliteConnection::injectFault(1, SQLITE_BUSY);
    EXPECT_THROW(performUnitOfWork(context, [&] { addCategory(context, QStringLiteral("Busy")); }), StoreError);
    SqliteConnection::clearFault();
    performUnitOfWork(context, [&] { addCategory(context, QStringLiteral("Later")); });
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Category")), 1);

    // And a bare save, which keeps its changes pending for a retry, writes them all next time.
    addCategory(context, QStringLiteral("Retried"));
    SqliteConnection::injectFault(1, SQLITE_BUSY);
    EXPECT_THROW(context.save(), StoreError);
    SqliteConnection::clearFault();
    context.save();
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Category")), 2);
}

// SQLite cancels the whole transaction on a full disk: what an earlier read flushed is gone from
// the file and must be written again, not counted as written.
TEST(UnitOfWork, ATransactionCancelledBySqliteIsWrittenAgainWhole)
{
    TestStore store;
    ModelContext& context = store.context();
    addCategory(context, QStringLiteral("First"));
    context.count<Category>(); // BEGIN, SAVEPOINT, INSERT, RELEASE, then the count
    addCategory(context, QStringLiteral("Second"));
    SqliteConnection::injectFault(2, SQLITE_FULL); // the second flush's INSERT, after its SAVEPOINT
    EXPECT_THROW(context.count<Category>(), StoreError);
    SqliteConnection::clearFault();
    EXPECT_FALSE(context.connection().inTransaction());
    context.save();
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Category")), 2);
    expectMemoryMatchesFile(context, store.path());
}

TEST(UnitOfWork, AListenerThatThrowsCannotMakeACommittedSaveLookFailed)
{
    TestStore store;
    ModelContext& context = store.context();
    QObject screen;
    int laterListenerCalls = 0;
    context.onChange(&screen, {&Category::schema()}, [] { throw StoreError(QStringLiteral("refresh failed")); });
    context.onChange(&screen, {&Category::schema()}, [&] { ++laterListenerCalls; });
    QObject::connect(&context, &ModelContext::didChange, &screen,
                     [](const QSet<QString>&) { throw std::runtime_error("a raw listener failed"); });
    EXPECT_NO_THROW(performUnitOfWork(context, [&] { addCategory(context, QStringLiteral("Saved")); }));
    EXPECT_EQ(laterListenerCalls, 1);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Category")), 1);
    EXPECT_FALSE(context.hasChanges());
}

TEST(Statements, ABusyStatementIsNeverHandedToASecondCaller)
{
    TestStore store;
    SqliteConnection& connection = store.context().connection();
    const QString counting = QStringLiteral("WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n "
                                            "WHERE x < 3) SELECT x FROM n");
    SqliteStatement outer = connection.prepare(counting);
    ASSERT_TRUE(outer.step());
    {
        SqliteStatement inner = connection.prepare(counting);
        int innerRows = 0;
        while (inner.step())
            ++innerRows;
        EXPECT_EQ(innerRows, 3);
    }
    ASSERT_TRUE(outer.step());
    EXPECT_EQ(outer.integer(0), 2) << "the outer cursor kept its place";
}

TEST(Migrations, AStoreGainsUniqueInvoiceNumbersAndItsVersion)
{
    TestStore store;
    ModelContext& context = store.context();
    EXPECT_EQ(context.scalar(QStringLiteral("PRAGMA user_version")).toInt(), POSSchema::description().version());
    performUnitOfWork(context, [&] { context.insert(Sale::make(QStringLiteral("INV-1"), nullptr, nullptr, nullptr)); });
    EXPECT_THROW(performUnitOfWork(context,
                                   [&] { context.insert(Sale::make(QStringLiteral("INV-1"), nullptr, nullptr, nullptr)); }),
                 StoreError);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Sale")), 1);
}
