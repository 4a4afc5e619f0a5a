#pragma once

#include "reports/ledgeraccount.h"

#include <QMap>
#include <QString>

// The user's names and codes for the ledger accounts, kept as JSON in
// AppSettings.accountingAccountsJSON: {"names": {"cash": …}, "codes": {"cash": …}}, keyed by the
// accounts' raw texts. What the user left blank takes the default.
struct AccountMap {
    QMap<QString, QString> names;
    QMap<QString, QString> codes;

    // Text that isn't such JSON gives two empty maps, so every account takes its default.
    static AccountMap decode(const QString& text);
    QString json() const;

    QString name(LedgerAccount account) const;
    QString code(LedgerAccount account) const;

    friend bool operator==(const AccountMap&, const AccountMap&) = default;
};
