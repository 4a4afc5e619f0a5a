#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <QString>
#include <QVariant>

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

class SqliteConnection;

// A prepared statement borrowed from the connection's cache, or one of its own while the cached
// one is busy with another caller. It is reset when it goes out of scope, so no read stays open
// and holds back WAL checkpoints.
class SqliteStatement {
public:
    SqliteStatement(const SqliteStatement&) = delete;
    SqliteStatement& operator=(const SqliteStatement&) = delete;
    ~SqliteStatement();

    void bind(int index, const QVariant& value); // 1-based, as SQLite counts
    void bindAll(const QVariantList& values);

    // Steps once: true while a row is there. Throws StoreError on failure.
    bool step();
    void execute(); // steps to the end, for writes

    int columnCount() const;
    bool isNull(int column) const;
    QString text(int column) const;
    // The text as SQLite holds it, in UTF-8, without a copy: valid until the next step. For readers
    // of many rows that look a value up or keep one copy of each repeated text.
    QByteArrayView utf8(int column) const;
    double real(int column) const;
    qint64 integer(int column) const;
    QByteArray blob(int column) const;
    QVariant value(int column) const; // by SQLite's storage class

private:
    friend class SqliteConnection;
    SqliteStatement(SqliteConnection& connection, sqlite3_stmt* statement, bool* busy);

    SqliteConnection& m_connection;
    sqlite3_stmt* m_statement;
    bool* m_busy; // the cache entry's flag; null for a statement of its own, finalized at the end
};

class SqliteConnection {
public:
    friend class SqliteStatement;

    // Statements kept prepared; the least recently used idle one makes room for a new one.
    static constexpr int statementCacheSize = 64;

    SqliteConnection() = default;
    SqliteConnection(const SqliteConnection&) = delete;
    SqliteConnection& operator=(const SqliteConnection&) = delete;
    ~SqliteConnection();

    // Throws StoreError when the file can't be opened or made.
    void open(const QString& path);
    void close();
    bool isOpen() const { return m_db != nullptr; }

    SqliteStatement prepare(const QString& sql);
    void execute(const QString& sql);
    QVariant scalar(const QString& sql, const QVariantList& bindings = {});

    QString errorMessage() const;
    qint64 changes() const;
    bool inTransaction() const;
    QString path() const { return m_path; }
    sqlite3* handle() const { return m_db; }
    int cachedStatementCount() const { return int(m_cache.size()); }

    // Throws the StoreError for SQLite's last failure, `what` naming the statement for the log.
    [[noreturn]] void fail(const QString& what) const;
    [[noreturn]] void fail(int extendedCode, const QString& what) const;

    // For tests, in the manner of SQLite's own I/O-error tests: the nth call from now that reaches
    // SQLite (prepare, step or execute, on any connection) fails with `extendedCode` instead. A
    // full disk or an I/O error also cancels the open transaction, as SQLite may do.
    static void injectFault(qint64 nthCall, int extendedCode);
    static void clearFault();
    static bool faultFired();

private:
    struct CachedStatement {
        sqlite3_stmt* statement = nullptr;
        bool busy = false;
        quint64 lastUse = 0;
    };

    // Counts a call toward an injected fault; throws when it is the one to fail.
    void countCall(const char* what) const;
    void evictIdleStatement();

    sqlite3* m_db = nullptr;
    QString m_path;
    QHash<QString, std::shared_ptr<CachedStatement>> m_cache;
    quint64 m_useCounter = 0;
};
