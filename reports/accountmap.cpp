#include "reports/accountmap.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {
const QString namesKey = QStringLiteral("names");
const QString codesKey = QStringLiteral("codes");

QMap<QString, QString> textsOf(const QJsonValue& value)
{
    QMap<QString, QString> texts;
    const QJsonObject object = value.toObject();
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        if (entry.value().isString())
            texts.insert(entry.key(), entry.value().toString());
    }
    return texts;
}

QJsonObject objectOf(const QMap<QString, QString>& texts)
{
    QJsonObject object;
    for (auto entry = texts.begin(); entry != texts.end(); ++entry)
        object.insert(entry.key(), entry.value());
    return object;
}

QString storedOr(const QMap<QString, QString>& texts, LedgerAccount account, const QString& fallback)
{
    const QString stored = texts.value(LedgerAccounts::raw(account)).trimmed();
    return stored.isEmpty() ? fallback : stored;
}
} // namespace

AccountMap AccountMap::decode(const QString& text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    if (!document.isObject())
        return {};
    const QJsonObject root = document.object();
    return {textsOf(root.value(namesKey)), textsOf(root.value(codesKey))};
}

QString AccountMap::json() const
{
    const QJsonObject root{{namesKey, objectOf(names)}, {codesKey, objectOf(codes)}};
    return QString::fromUtf8(QJsonDocument(root).toJson(QJsonDocument::Compact));
}

QString AccountMap::name(LedgerAccount account) const
{
    return storedOr(names, account, LedgerAccounts::defaultName(account));
}

QString AccountMap::code(LedgerAccount account) const
{
    return storedOr(codes, account, LedgerAccounts::defaultCode(account));
}
