#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

// One store on this machine, as the user's preferences list it.
struct MarketInfo {
    // The storeFileName of the store at the record layer's default location, outside Markets.
    static QString defaultStoreFileName() { return QStringLiteral("__default__"); }

    QUuid id;
    QString name;
    QString storeFileName; // inside the markets folder, or defaultStoreFileName()
    QDateTime createdAt;

    bool isDefaultStore() const { return storeFileName == defaultStoreFileName(); }

    // A JSON array of {"id", "name", "storeFileName", "createdAt"} with the id as upper-case UUID
    // text and createdAt in seconds since the Unix epoch.
    static QByteArray encodeList(const QList<MarketInfo>& markets);
    // All or nothing: bytes that aren't such a list, or hold one bad entry, give an empty list.
    static QList<MarketInfo> decodeList(const QByteArray& json);

    friend bool operator==(const MarketInfo&, const MarketInfo&) = default;
};
