#include "startup/marketinfo.h"

#include "store/record.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

namespace {
std::optional<MarketInfo> decodeMarket(const QJsonValue& value)
{
    const QJsonObject object = value.toObject();
    const QJsonValue id = object.value(QLatin1String("id"));
    const QJsonValue name = object.value(QLatin1String("name"));
    const QJsonValue storeFileName = object.value(QLatin1String("storeFileName"));
    const QJsonValue createdAt = object.value(QLatin1String("createdAt"));
    if (!value.isObject() || !id.isString() || !name.isString() || !storeFileName.isString() ||
        !createdAt.isDouble())
        return std::nullopt;
    const QUuid uuid = QUuid::fromString(id.toString());
    if (uuid.isNull())
        return std::nullopt;
    return MarketInfo{uuid, name.toString(), storeFileName.toString(),
                      Record::dateFromSeconds(createdAt.toDouble())};
}
} // namespace

QByteArray MarketInfo::encodeList(const QList<MarketInfo>& markets)
{
    QJsonArray list;
    for (const MarketInfo& market : markets) {
        list.append(QJsonObject{
            {QLatin1String("id"), Record::uuidText(market.id)},
            {QLatin1String("name"), market.name},
            {QLatin1String("storeFileName"), market.storeFileName},
            {QLatin1String("createdAt"), Record::secondsFromDate(market.createdAt)},
        });
    }
    return QJsonDocument(list).toJson(QJsonDocument::Compact);
}

QList<MarketInfo> MarketInfo::decodeList(const QByteArray& json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isArray())
        return {};
    QList<MarketInfo> markets;
    for (const QJsonValue& value : document.array()) {
        const std::optional<MarketInfo> market = decodeMarket(value);
        if (!market)
            return {};
        markets.append(*market);
    }
    return markets;
}
