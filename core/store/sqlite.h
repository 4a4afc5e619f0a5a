#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVariant>

struct sqlite3;
struct sqlite3_stmt;

class SqliteConnection;

// A prepared statement borrowed from the connection's cache. It is reset when it goes out of
// scope, so no read stays open and holds back WAL checkpoints.
class SqliteStatement {
public:
    SqliteStatement(SqliteConnection& connection, sqlite3_stmt* statement);
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
    double real(int column) const;
    qint64 integer(int column) const;
    QByteArray blob(int column) const;
    QVariant value(int column) const; // by SQLite's storage class

private:
    SqliteConnection& m_connection;
    sqlite3_stmt* m_statement;
};

class SqliteConnection {
public:
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

    [[noreturn]] void fail(const QString& what) const;

private:
    sqlite3* m_db = nullptr;
    QString m_path;
    QHash<QString, sqlite3_stmt*> m_cache;
};
