#include "store/sqlite.h"

#include "store/storeerror.h"

#include <sqlite3.h>

namespace {
struct Fault {
    qint64 callsLeft = 0; // 0: none armed
    int code = SQLITE_OK;
    bool fired = false;
};
Fault fault;

// lower_unicode(text): the text lower-cased as Qt does it, for searches that must find "ÉBÈNE" in
// "Ébène" where SQLite's lower() and LIKE fold only ASCII letters. ASCII text, the usual case, is
// folded in place without a round trip through UTF-16.
void lowerUnicode(sqlite3_context* context, int, sqlite3_value** arguments)
{
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(arguments[0]));
    const int size = sqlite3_value_bytes(arguments[0]);
    QByteArray folded(text, size);
    bool ascii = true;
    for (char& c : folded) {
        if (static_cast<unsigned char>(c) >= 0x80) {
            ascii = false;
            break;
        }
        if (c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
    }
    if (!ascii)
        folded = QString::fromUtf8(text, size).toLower().toUtf8();
    sqlite3_result_text(context, folded.constData(), int(folded.size()), SQLITE_TRANSIENT);
}
} // namespace

SqliteStatement::SqliteStatement(SqliteConnection& connection, sqlite3_stmt* statement, bool* busy)
    : m_connection(connection)
    , m_statement(statement)
    , m_busy(busy)
{
}

SqliteStatement::~SqliteStatement()
{
    if (!m_busy) {
        sqlite3_finalize(m_statement);
        return;
    }
    sqlite3_reset(m_statement);
    sqlite3_clear_bindings(m_statement);
    *m_busy = false;
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
    m_connection.countCall(sqlite3_sql(m_statement));
    const int rc = sqlite3_step(m_statement);
    if (rc == SQLITE_ROW)
        return true;
    if (rc == SQLITE_DONE)
        return false;
    m_connection.fail(rc, QStringLiteral("The store could not run \"%1\"")
                              .arg(QString::fromUtf8(sqlite3_sql(m_statement))));
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

QByteArrayView SqliteStatement::utf8(int column) const
{
    const auto* chars = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
    return chars ? QByteArrayView(chars, sqlite3_column_bytes(m_statement, column)) : QByteArrayView();
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
        throw StoreError::fromSqlite(rc, QStringLiteral("%1 could not be opened: %2").arg(path, message));
    }
    sqlite3_extended_result_codes(m_db, 1);
    sqlite3_busy_timeout(m_db, 5000);
    sqlite3_create_function_v2(m_db, "lower_unicode", 1,
                               SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr, lowerUnicode,
                               nullptr, nullptr, nullptr);
}

void SqliteConnection::close()
{
    for (const auto& cached : std::as_const(m_cache)) {
        Q_ASSERT(!cached->busy);
        sqlite3_finalize(cached->statement);
    }
    m_cache.clear();
    if (m_db) {
        sqlite3_close(m_db);
        m_db = nullptr;
    }
}

SqliteStatement SqliteConnection::prepare(const QString& sql)
{
    countCall("prepare");
    auto found = m_cache.find(sql);
    const bool cached = found != m_cache.end();
    if (cached && !found.value()->busy) {
        CachedStatement& entry = *found.value();
        entry.busy = true;
        entry.lastUse = ++m_useCounter;
        return SqliteStatement(*this, entry.statement, &entry.busy);
    }
    sqlite3_stmt* statement = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    // One still stepping for an outer caller is never handed out twice: the inner caller gets a
    // statement of its own.
    const unsigned flags = cached ? 0 : SQLITE_PREPARE_PERSISTENT;
    const int rc = sqlite3_prepare_v3(m_db, utf8.constData(), int(utf8.size()), flags, &statement, nullptr);
    if (rc != SQLITE_OK)
        fail(rc, QStringLiteral("The store could not prepare \"%1\"").arg(sql));
    if (cached)
        return SqliteStatement(*this, statement, nullptr);
    if (m_cache.size() >= statementCacheSize)
        evictIdleStatement();
    auto entry = std::make_shared<CachedStatement>();
    entry->statement = statement;
    entry->busy = true;
    entry->lastUse = ++m_useCounter;
    m_cache.insert(sql, entry);
    return SqliteStatement(*this, statement, &entry->busy);
}

void SqliteConnection::evictIdleStatement()
{
    auto oldest = m_cache.end();
    for (auto it = m_cache.begin(); it != m_cache.end(); ++it) {
        if (!it.value()->busy && (oldest == m_cache.end() || it.value()->lastUse < oldest.value()->lastUse))
            oldest = it;
    }
    if (oldest == m_cache.end())
        return;
    sqlite3_finalize(oldest.value()->statement);
    m_cache.erase(oldest);
}

void SqliteConnection::execute(const QString& sql)
{
    const QByteArray utf8 = sql.toUtf8();
    // Undoing is never what fails, here as in SQLite.
    if (!utf8.startsWith("ROLLBACK") && !utf8.startsWith("RELEASE"))
        countCall(utf8.constData());
    char* error = nullptr;
    const int rc = sqlite3_exec(m_db, utf8.constData(), nullptr, nullptr, &error);
    if (rc != SQLITE_OK) {
        const QString message = QString::fromUtf8(error ? error : "unknown error");
        sqlite3_free(error);
        throw StoreError::fromSqlite(sqlite3_extended_errcode(m_db),
                                     QStringLiteral("The store could not run \"%1\": %2").arg(sql, message));
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
    fail(m_db ? sqlite3_extended_errcode(m_db) : SQLITE_MISUSE, what);
}

void SqliteConnection::fail(int extendedCode, const QString& what) const
{
    throw StoreError::fromSqlite(extendedCode, QStringLiteral("%1: %2").arg(what, errorMessage()));
}

void SqliteConnection::countCall(const char* what) const
{
    if (fault.callsLeft == 0 || --fault.callsLeft > 0)
        return;
    fault.fired = true;
    const int primary = fault.code & 0xff;
    if ((primary == SQLITE_FULL || primary == SQLITE_IOERR) && inTransaction())
        sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
    throw StoreError::fromSqlite(fault.code, QStringLiteral("Injected failure at \"%1\"").arg(QString::fromUtf8(what)));
}

void SqliteConnection::injectFault(qint64 nthCall, int extendedCode)
{
    Q_ASSERT(nthCall > 0);
    fault = Fault{nthCall, extendedCode, false};
}

void SqliteConnection::clearFault()
{
    fault = Fault{};
}

bool SqliteConnection::faultFired()
{
    return fault.fired;
}
