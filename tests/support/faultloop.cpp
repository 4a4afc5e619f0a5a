#include "support/faultloop.h"

#include "store/storeerror.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

namespace {
QString columnText(sqlite3_stmt* statement, int column)
{
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
        return QStringLiteral("NULL");
    case SQLITE_INTEGER:
        return QString::number(sqlite3_column_int64(statement, column));
    case SQLITE_FLOAT:
        return QString::number(sqlite3_column_double(statement, column), 'g', 17);
    default:
        return QLatin1Char('\'') +
               QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                                 sqlite3_column_bytes(statement, column)) +
               QLatin1Char('\'');
    }
}

// Runs sql on a read-only connection of its own; each row as its columns' texts.
QList<QStringList> readRows(const QString& path, const QString& sql, const QVariantList& bindings = {})
{
    sqlite3* db = nullptr;
    QList<QStringList> rows;
    if (sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        ADD_FAILURE() << "can't open " << path.toStdString();
        sqlite3_close(db);
        return rows;
    }
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK) {
        ADD_FAILURE() << sqlite3_errmsg(db) << " in " << sql.toStdString();
    } else {
        for (int i = 0; i < bindings.size(); ++i) {
            const QByteArray text = bindings[i].toString().toUtf8();
            sqlite3_bind_text(statement, i + 1, text.constData(), int(text.size()), SQLITE_TRANSIENT);
        }
        while (sqlite3_step(statement) == SQLITE_ROW) {
            QStringList row;
            for (int c = 0; c < sqlite3_column_count(statement); ++c)
                row.append(columnText(statement, c));
            rows.append(row);
        }
    }
    sqlite3_finalize(statement);
    sqlite3_close(db);
    return rows;
}
} // namespace

QString dumpStoreFile(const QString& path)
{
    QString dump;
    const QList<QStringList> tables = readRows(
        path, QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%' "
                             "ORDER BY name"));
    for (const QStringList& table : tables) {
        const QString name = table.first().mid(1).chopped(1);
        dump += QStringLiteral("[%1]\n").arg(name);
        // In the order the file keeps the rows: by rowid, or by key in a table without one.
        for (const QStringList& row : readRows(path, QStringLiteral("SELECT * FROM \"%1\"").arg(name)))
            dump += row.join(QLatin1Char('|')) + QLatin1Char('\n');
    }
    return dump;
}

void expectMemoryMatchesFile(ModelContext& context, const QString& path)
{
    EXPECT_FALSE(context.hasChanges()) << "changes left pending after the failure";
    for (const RecordRef& record : context.liveRecords()) {
        const Entity& entity = record->entity();
        const QList<QStringList> rows = readRows(
            path, QStringLiteral("SELECT %1 FROM \"%2\" WHERE \"id\" = ?").arg(entity.selectList, entity.name),
            {record->idText()});
        if (rows.size() != 1) {
            ADD_FAILURE() << entity.name.toStdString() << " " << record->idText().toStdString()
                          << " is alive in memory but not in the file";
            continue;
        }
        int column = 0;
        for (int field : entity.columnFields) {
            const QVariant& value = record->rawValue(field);
            const QString onDisk = rows.first().at(column++);
            QString inMemory;
            if (!value.isValid() || value.isNull())
                inMemory = QStringLiteral("NULL");
            else if (value.typeId() == QMetaType::Double)
                inMemory = QString::number(value.toDouble(), 'g', 17);
            else if (value.typeId() == QMetaType::Bool)
                inMemory = value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
            else if (value.typeId() == QMetaType::LongLong)
                inMemory = QString::number(value.toLongLong());
            else
                inMemory = QLatin1Char('\'') + value.toString() + QLatin1Char('\'');
            EXPECT_EQ(inMemory, onDisk) << entity.name.toStdString() << "."
                                        << entity.fields[size_t(field)].name << " differs from the file";
        }
    }
}

int failEachCallUntilItSucceeds(ModelContext& context, const QString& path, int extendedCode,
                                const FaultTry& attempt, const std::function<void()>& afterFailure)
{
    const QString sentence = StoreError::sentence(StoreError::kindOf(extendedCode));
    int failures = 0;
    for (qint64 nth = 1;; ++nth) {
        const QString before = dumpStoreFile(path);
        SqliteConnection::injectFault(nth, extendedCode);
        const std::optional<QString> message = attempt();
        const bool fired = SqliteConnection::faultFired();
        SqliteConnection::clearFault();
        if (!message) {
            // A fault after the commit (a screen refreshing, say) leaves the write standing.
            return failures;
        }
        if (!fired) {
            ADD_FAILURE() << "refused without a fault: " << message->toStdString();
            return failures;
        }
        ++failures;
        SCOPED_TRACE(QStringLiteral("call %1 failed with code %2").arg(nth).arg(extendedCode).toStdString());
        EXPECT_TRUE(message->contains(sentence)) << message->toStdString();
        EXPECT_EQ(dumpStoreFile(path), before) << "the file changed although the write failed";
        expectMemoryMatchesFile(context, path);
        if (afterFailure)
            afterFailure();
        if (::testing::Test::HasFailure() || nth > 5000)
            return failures;
    }
}

const std::vector<int>& injectedFaultCodes()
{
    static const std::vector<int> codes{SQLITE_FULL, SQLITE_IOERR_WRITE, SQLITE_BUSY};
    return codes;
}
