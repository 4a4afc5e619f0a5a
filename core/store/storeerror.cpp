#include "store/storeerror.h"

#include <sqlite3.h>

Q_LOGGING_CATEGORY(lcStore, "tallyrun.store")

StoreError::StoreError(const QString& description, Kind kind)
    : Refusal(description)
    , m_kind(kind)
{
}

StoreError StoreError::fromSqlite(int extendedCode, const QString& detail)
{
    qCWarning(lcStore).noquote() << detail << QStringLiteral("(SQLite code %1)").arg(extendedCode);
    const Kind kind = kindOf(extendedCode);
    return StoreError(sentence(kind), kind);
}

StoreError::Kind StoreError::kindOf(int extendedCode)
{
    switch (extendedCode & 0xff) {
    case SQLITE_FULL:
        return Kind::diskFull;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return Kind::readOnly;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return Kind::busy;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_FORMAT:
        return Kind::damaged;
    case SQLITE_IOERR:
        return extendedCode == SQLITE_IOERR_NOMEM ? Kind::other : Kind::diskError;
    case SQLITE_CANTOPEN:
        return Kind::notOpened;
    default:
        return Kind::other;
    }
}

QString StoreError::sentence(Kind kind)
{
    switch (kind) {
    case Kind::diskFull:
        return QStringLiteral("The disk is full, so nothing was saved. Free some space and try again.");
    case Kind::readOnly:
        return QStringLiteral("The store can't be written: its file or folder is read-only, so nothing was "
                              "saved.");
    case Kind::busy:
        return QStringLiteral("Another program is using the store, so nothing was saved. Try again in a "
                              "moment.");
    case Kind::damaged:
        return QStringLiteral("The store file is damaged. Restore it from a backup.");
    case Kind::diskError:
        return QStringLiteral("The disk couldn't be read or written, so nothing was saved. Try again.");
    case Kind::notOpened:
        return QStringLiteral("The store file can't be opened. Check that its folder is there and readable.");
    case Kind::other:
        break;
    }
    return QStringLiteral("The store couldn't do this, so nothing was saved. Try again.");
}
