#include "reports/ledgeraccount.h"

namespace {
struct AccountTexts {
    const char* raw;
    const char* title;
    const char* defaultName;
    const char* defaultCode;
};

const AccountTexts& texts(LedgerAccount account)
{
    // In the order of the enumeration.
    static constexpr std::array<AccountTexts, LedgerAccounts::all.size()> table{{
        {"cash", "Cash", "Cash on Hand", "1000"},
        {"card", "Card", "Card Clearing", "1010"},
        {"mobileMoney", "Mobile Money", "Mobile Money", "1020"},
        {"otherPayments", "Other Payments", "Other Receipts", "1030"},
        {"receivable", "Accounts Receivable", "Accounts Receivable", "1100"},
        {"inventory", "Inventory", "Inventory Asset", "1200"},
        {"tax", "Tax Payable (VAT, NHIL, GETFund)", "VAT and Levies Payable", "2200"},
        {"sales", "Sales", "Sales", "4000"},
        {"discounts", "Discounts", "Discounts Given", "4900"},
        {"costOfGoods", "Cost of Goods Sold", "Cost of Goods Sold", "5000"},
    }};
    return table[size_t(account)];
}
} // namespace

QString LedgerAccounts::raw(LedgerAccount account)
{
    return QString::fromUtf8(texts(account).raw);
}

QString LedgerAccounts::title(LedgerAccount account)
{
    return QString::fromUtf8(texts(account).title);
}

QString LedgerAccounts::defaultName(LedgerAccount account)
{
    return QString::fromUtf8(texts(account).defaultName);
}

QString LedgerAccounts::defaultCode(LedgerAccount account)
{
    return QString::fromUtf8(texts(account).defaultCode);
}

QString AccountingFormats::label(AccountingFormat format)
{
    switch (format) {
    case AccountingFormat::quickBooks:
        return QStringLiteral("QuickBooks (journal entries)");
    case AccountingFormat::xero:
        return QStringLiteral("Xero (manual journals)");
    }
    Q_UNREACHABLE();
}

QString AccountingFormats::name(AccountingFormat format)
{
    switch (format) {
    case AccountingFormat::quickBooks:
        return QStringLiteral("QuickBooks");
    case AccountingFormat::xero:
        return QStringLiteral("Xero");
    }
    Q_UNREACHABLE();
}
