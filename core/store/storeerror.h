#pragma once

#include "refusal/refusal.h"

#include <QLoggingCategory>
#include <QString>

Q_DECLARE_LOGGING_CATEGORY(lcStore)

// A failure of the store file or of a statement on it, told as one sentence a shop owner can act
// on. What SQLite said, and the statement, go to the lcStore log on standard error instead.
class StoreError : public Refusal {
public:
    enum class Kind { diskFull, readOnly, busy, damaged, diskError, notOpened, other };

    // A failure of SQLite with its extended result code.
    static StoreError fromSqlite(int extendedCode, const QString& detail);
    // The store is not what it should be; the text is the whole message.
    explicit StoreError(const QString& description, Kind kind = Kind::other);

    Kind kind() const { return m_kind; }
    static QString sentence(Kind kind);
    static Kind kindOf(int extendedCode);

private:
    Kind m_kind;
};
