#pragma once

#include <QString>

#include <array>

// The accounts a day's journal posts to, in the order journal lines are sorted by. The raw text is
// stored as the key of the account map in AppSettings, so it never changes.
enum class LedgerAccount {
    cash,
    card,
    mobileMoney,
    otherPayments,
    receivable,
    inventory,
    tax,
    sales,
    discounts,
    costOfGoods
};

struct LedgerAccounts {
    static constexpr std::array<LedgerAccount, 10> all{
        LedgerAccount::cash,          LedgerAccount::card,       LedgerAccount::mobileMoney,
        LedgerAccount::otherPayments, LedgerAccount::receivable, LedgerAccount::inventory,
        LedgerAccount::tax,           LedgerAccount::sales,      LedgerAccount::discounts,
        LedgerAccount::costOfGoods};

    static QString raw(LedgerAccount account);
    // The label in settings.
    static QString title(LedgerAccount account);
    // What the journal says when the user has set no name or code.
    static QString defaultName(LedgerAccount account);
    static QString defaultCode(LedgerAccount account);
};

// The import layout of the journal files.
enum class AccountingFormat { quickBooks, xero };

struct AccountingFormats {
    // The picker's label.
    static QString label(AccountingFormat format);
    // The package's name, as file names carry it.
    static QString name(AccountingFormat format);
};
