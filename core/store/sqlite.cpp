#include "store/sqlite.h"

#include "store/storeerror.h"

#include <sqlite3.h>

SqliteStatement::SqliteStatement(SqliteConnection& connection, sqlite3_stmt* statement)
    : m_connection(connection)
    , m_statement(statement)
{
}

SqliteStatement::~SqliteStatement()
{
    sqlite3_reset(m_statement);
    sqlite3_clear_bindings(m_statement);
}

void SqliteStatement::bind(int index, const QVariant& value)
{
    int rc = SQLITE_OK;
    if (!value.isValid() || value.isNull()) {
        rc = sqlite3_bind_null(m_statement, index);
    } else {
        switch (value.typeId()) {
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::UInt:
        case QMetaType::ULongLong:
            rc = sqlite3_bind_int64(m_statement, index, value.toLongLong());
            break;
        case QMetaType::Double:
        case QMetaType::Float:
            rc = sqlite3_bind_double(m_statement, index, value.toDouble());
            break;
        case QMetaType::QByteArray: {
            const QByteArray bytes = value.toByteArray();
            rc = sqlite3_bind_blob64(m_statement, index, bytes.constData(), sqlite3_uint64(bytes.size()),
                                     SQLITE_TRANSIENT);
            break;
        }
        default: {
            const QByteArray utf8 = value.toString().toUtf8();
            rc = sqlite3_bind_text64(m_statement, index, utf8.constData(), sqlite3_uint64(utf8.size()),
                                     SQLITE_TRANSIENT, SQLITE_UTF8);
            break;
        }
        }
    }
    if (rc != SQLITE_OK)
        m_connection.fail(QStringLiteral("A value could not be bound"));
}

void SqliteStatement::bindAll(const QVariantList& values)
{
    for (int i = 0; i < values.size(); ++i)
        bind(i + 1, values.at(i));
}

bool SqliteStatement::step()
{
    const int rc = sqlite3_step(m_statement);
    if (rc == SQLITE_ROW)
        return true;
    if (rc == SQLITE_DONE)
        return false;
    m_connection.fail(QStringLiteral("The store could not run \"%1\"")
                          .arg(QString::fromUtf8(sqlite3_sql(m_statement)).left(80)));
}

void SqliteStatement::execute()
{
    while (step()) {
    }
}

int SqliteStatement::columnCount() const
{
    return sqlite3_column_count(m_statement);
}

bool SqliteStatement::isNull(int column) const
{
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}

QString SqliteStatement::text(int column) const
{
    const auto* chars = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
    return chars ? QString::fromUtf8(chars, sqlite3_column_bytes(m_statement, column)) : QString();
}

double SqliteStatement::real(int column) const
{
    return sqlite3_column_double(m_statement, column);
}

qint64 SqliteStatement::integer(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

QByteArray SqliteStatement::blob(int column) const
{
    const void* data = sqlite3_column_blob(m_statement, column);
    return data ? QByteArray(static_cast<const char*>(data), sqlite3_column_bytes(m_statement, column))
                : QByteArray("");
}

QVariant SqliteStatement::value(int column) const
{
    switch (sqlite3_column_type(m_statement, column)) {
    case SQLITE_INTEGER:
        return integer(column);
    case SQLITE_FLOAT:
        return real(column);
    case SQLITE_TEXT:
        return text(column);
    case SQLITE_BLOB:
        return blob(column);
    default:
        return {};
    }
}

SqliteConnection::~SqliteConnection()
{
    close();
}

void SqliteConnection::open(const QString& path)
{
    close();
    m_path = path;
    const int rc = sqlite3_open_v2(path.toUtf8().constData(), &m_db,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (rc != SQLITE_OK) {
        const QString message =
            m_db ? QString::fromUtf8(sqlite3_errmsg(m_db)) : QString::fromUtf8(sqlite3_errstr(rc));
        sqlite3_close(m_db);
        m_db = nullptr;
        throw StoreError(QStringLiteral("The store file %1 could not be opened: %2").arg(path, message));
    }
    sqlite3_extended_result_codes(m_db, 1);
    sqlite3_busy_timeout(m_db, 5000);
}

void SqliteConnection::close()
{
    for (sqlite3_stmt* statement : std::as_const(m_cache))
        sqlite3_finalize(statement);
    m_cache.clear();
    if (m_db) {
        sqlite3_close(m_db);
        m_db = nullptr;
    }
}

SqliteStatement SqliteConnection::prepare(const QString& sql)
{
    auto found = m_cache.constFind(sql);
    if (found != m_cache.constEnd())
        return SqliteStatement(*this, found.value());
    sqlite3_stmt* statement = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    if (sqlite3_prepare_v3(m_db, utf8.constData(), int(utf8.size()), SQLITE_PREPARE_PERSISTENT, &statement,
                           nullptr) != SQLITE_OK)
        fail(QStringLiteral("The store could not prepare \"%1\"").arg(sql.left(80)));
    m_cache.insert(sql, statement);
    return SqliteStatement(*this, statement);
}

void SqliteConnection::execute(const QString& sql)
{
    char* error = nullptr;
    if (sqlite3_exec(m_db, sql.toUtf8().constData(), nullptr, nullptr, &error) != SQLITE_OK) {
        const QString message = QString::fromUtf8(error ? error : "unknown error");
        sqlite3_free(error);
        throw StoreError(QStringLiteral("The store could not run \"%1\": %2").arg(sql.left(80), message));
    }
}

QVariant SqliteConnection::scalar(const QString& sql, const QVariantList& bindings)
{
    SqliteStatement statement = prepare(sql);
    statement.bindAll(bindings);
    return statement.step() ? statement.value(0) : QVariant();
}

QString SqliteConnection::errorMessage() const
{
    return m_db ? QString::fromUtf8(sqlite3_errmsg(m_db)) : QStringLiteral("the store is not open");
}

qint64 SqliteConnection::changes() const
{
    return sqlite3_changes64(m_db);
}

bool SqliteConnection::inTransaction() const
{
    return m_db && !sqlite3_get_autocommit(m_db);
}

void SqliteConnection::fail(const QString& what) const
{
    throw StoreError(QStringLiteral("%1: %2").arg(what, errorMessage()));
}
