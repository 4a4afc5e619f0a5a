#include "reports/accountingexportservice.h"

#include "money/rounding.h"
#include "records/enums.h"
#include "reports/csvtext.h"
#include "reports/dayrange.h"
#include "reports/reportcalculator.h"
#include "reports/salesreader.h"
#include "reports/wholefile.h"
#include "store/unitofwork.h"

#include <QDir>
#include <QLocale>
#include <QMap>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Sums of a ten-thousandth or less are nothing to post.
constexpr double postingThreshold = 0.0001;

const QString memo = QStringLiteral("Brindle daily summary");

struct Takings {
    PaymentMethodType method;
    LedgerAccount account;
    const char* description;
};

// In the order the journal adds them.
constexpr std::array<Takings, 5> takings{{
    {PaymentMethodType::cash, LedgerAccount::cash, "Cash takings"},
    {PaymentMethodType::card, LedgerAccount::card, "Card takings"},
    {PaymentMethodType::mobileMoney, LedgerAccount::mobileMoney, "Mobile Money takings"},
    {PaymentMethodType::other, LedgerAccount::otherPayments, "Other takings"},
    {PaymentMethodType::onAccount, LedgerAccount::receivable, "Credit sales (On Account)"},
}};

// A signed amount on one account and description, debit positive; adding to a pair already there
// sums into it, so each pair occurs once, in order of first addition.
struct Posting {
    LedgerAccount account;
    QString description;
    double amount;
};

class Postings {
public:
    void add(LedgerAccount account, const QString& description, double amount)
    {
        const auto found = std::find_if(m_list.begin(), m_list.end(), [&](const Posting& posting) {
            return posting.account == account && posting.description == description;
        });
        if (found == m_list.end())
            m_list.append({account, description, amount});
        else
            found->amount += amount;
    }
    QList<Posting>& list() { return m_list; }

private:
    QList<Posting> m_list;
};

bool isPosted(double amount)
{
    return std::abs(amount) > postingThreshold;
}

bool keepsStock(const ReportItem& item)
{
    return ProductTypes::fromRaw(item.productTypeRaw) == ProductType::inventory;
}

// The discount as it stands in the sales figure: without its tax when prices include tax.
double discountExTax(const ReportItem& item)
{
    const double rate = item.taxRateSnapshot;
    return item.pricesIncludeTax && rate > 0 ? item.lineDiscount / (1 + rate) : item.lineDiscount;
}

QString amountText(double amount)
{
    return QString::asprintf("%.2f", Rounding::toCents(amount));
}

QString positiveAmountText(double amount)
{
    return amount > 0 ? amountText(amount) : QString();
}

QString journalDate(const Journal& journal)
{
    return journal.date.toLocalTime().toString(QStringLiteral("dd/MM/yyyy"));
}

QString previewAmount(double amount)
{
    static const QLocale english(QLocale::English, QLocale::UnitedStates);
    return english.toString(amount, 'f', 2);
}

} // namespace

AccountingExportService::AccountingExportService(ModelContext& context)
    : m_context(context)
{
}

QList<Journal> AccountingExportService::journals(const QList<ReportSale>& sales,
                                                 const QList<ReportAccountPayment>& accountPayments,
                                                 QDate from, QDate to)
{
    const DayRange range(from, to);
    QMap<QDate, QList<ReportSale>> salesByDay;
    for (const ReportSale& sale : ReportCalculator::counted(sales)) {
        if (range.contains(sale.timestamp))
            salesByDay[sale.timestamp.toLocalTime().date()].append(sale);
    }
    QMap<QDate, QList<ReportAccountPayment>> paymentsByDay;
    for (const ReportAccountPayment& payment : accountPayments) {
        if (range.contains(payment.timestamp))
            paymentsByDay[payment.timestamp.toLocalTime().date()].append(payment);
    }
    QList<QDate> days = salesByDay.keys() + paymentsByDay.keys();
    std::sort(days.begin(), days.end());
    days.erase(std::unique(days.begin(), days.end()), days.end());

    QList<Journal> result;
    for (QDate day : days)
        result.append(journal(day, salesByDay.value(day), paymentsByDay.value(day)));
    return result;
}

Journal AccountingExportService::journal(QDate day, const QList<ReportSale>& sales,
                                         const QList<ReportAccountPayment>& accountPayments)
{
    const DayRange range(day);
    QList<ReportSale> daySales;
    for (const ReportSale& sale : ReportCalculator::counted(sales)) {
        if (range.contains(sale.timestamp))
            daySales.append(sale);
    }
    Postings postings;

    // What came in for the day's sales; a day of refunds sums below zero and so turns to a credit.
    for (const Takings& kind : takings) {
        double sum = 0;
        for (const ReportSale& sale : daySales) {
            for (const ReportPayment& payment : sale.payments) {
                if (PaymentMethodTypes::fromRaw(payment.methodRaw) == kind.method)
                    sum += payment.amount;
            }
        }
        if (isPosted(sum))
            postings.add(kind.account, QString::fromUtf8(kind.description), sum);
    }

    double discounts = 0;
    double salesSum = 0;
    double cost = 0;
    QList<TaxAmount> taxes; // by label, in order of first appearance
    for (const ReportSale& sale : daySales) {
        for (const ReportItem& item : sale.items) {
            const double discount = discountExTax(item);
            discounts += discount;
            salesSum += discount + (item.lineTotal() - item.taxAmount());
            for (const TaxAmount& component : item.taxBreakdown()) {
                const auto found = std::find_if(taxes.begin(), taxes.end(), [&](const TaxAmount& tax) {
                    return tax.label == component.label;
                });
                if (found == taxes.end())
                    taxes.append(component);
                else
                    found->amount += component.amount;
            }
            // Services and non-inventory lines carry no cost.
            if (keepsStock(item))
                cost += item.unitCostSnapshot * item.quantity;
        }
    }
    if (discounts > postingThreshold)
        postings.add(LedgerAccount::discounts, QStringLiteral("Discounts and loyalty points (ex tax)"),
                     discounts);
    for (const TaxAmount& tax : std::as_const(taxes)) {
        if (isPosted(tax.amount))
            postings.add(LedgerAccount::tax, tax.label, -tax.amount);
    }
    if (cost > postingThreshold) {
        postings.add(LedgerAccount::costOfGoods, QStringLiteral("Cost of goods sold"), cost);
        postings.add(LedgerAccount::inventory, QStringLiteral("Inventory sold"), -cost);
    }

    for (const Takings& kind : takings) {
        if (kind.method == PaymentMethodType::onAccount)
            continue;
        double sum = 0;
        for (const ReportAccountPayment& payment : accountPayments) {
            if (range.contains(payment.timestamp) &&
                PaymentMethodTypes::fromRaw(payment.methodRaw) == kind.method)
                sum += payment.amount;
        }
        if (!isPosted(sum))
            continue;
        postings.add(kind.account,
                     QStringLiteral("Account payments received — ") + PaymentMethodTypes::label(kind.method),
                     sum);
        postings.add(LedgerAccount::receivable, QStringLiteral("Account payments received"), -sum);
    }

    // Each line is rounded on its own; the Sales line then takes up whatever that leaves over, so
    // the journal balances exactly and the sales figure never comes from the sales sum itself.
    double balance = 0;
    for (Posting& posting : postings.list()) {
        posting.amount = Rounding::toCents(posting.amount);
        balance += posting.amount;
    }
    const double salesLine = isPosted(balance) ? Rounding::toCents(-balance) : 0;
    if (salesLine != 0)
        postings.add(LedgerAccount::sales, QStringLiteral("Sales before tax and discounts"), salesLine);

    QList<Posting> posted;
    std::copy_if(postings.list().begin(), postings.list().end(), std::back_inserter(posted),
                 [](const Posting& posting) { return isPosted(posting.amount); });
    std::stable_sort(posted.begin(), posted.end(), [](const Posting& a, const Posting& b) {
        const bool aDebit = a.amount > 0;
        const bool bDebit = b.amount > 0;
        if (aDebit != bDebit)
            return aDebit;
        return a.account < b.account;
    });

    Journal result;
    result.date = day.startOfDay();
    result.number = QStringLiteral("POS-") + day.toString(QStringLiteral("yyyyMMdd"));
    for (const Posting& posting : std::as_const(posted)) {
        result.lines.append({posting.account, posting.description, posting.amount > 0 ? posting.amount : 0,
                             posting.amount < 0 ? -posting.amount : 0});
    }
    // The Sales line as a credit, less the day's sales as a credit: what rounding put into Sales.
    result.roundingAdjustment = Rounding::toCents(-Rounding::toCents(salesSum) - salesLine);
    return result;
}

QString AccountingExportService::quickBooksCSV(const QList<Journal>& journals, const AccountMap& accounts)
{
    QList<QStringList> rows{{QStringLiteral("Journal No"), QStringLiteral("Journal Date"),
                             QStringLiteral("Account Name"), QStringLiteral("Debits"),
                             QStringLiteral("Credits"), QStringLiteral("Description"),
                             QStringLiteral("Memo")}};
    for (const Journal& journal : journals) {
        for (const JournalLine& line : journal.lines) {
            rows.append({journal.number, journalDate(journal), accounts.name(line.account),
                         positiveAmountText(line.debit), positiveAmountText(line.credit), line.description,
                         memo});
        }
    }
    return CSVText::lines(rows);
}

QString AccountingExportService::xeroCSV(const QList<Journal>& journals, const AccountMap& accounts,
                                         const QString& taxRate)
{
    QList<QStringList> rows{{QStringLiteral("*Narration"), QStringLiteral("*Date"),
                             QStringLiteral("Description"), QStringLiteral("*AccountCode"),
                             QStringLiteral("*TaxRate"), QStringLiteral("*Amount"),
                             QStringLiteral("TrackingName1"), QStringLiteral("TrackingOption1"),
                             QStringLiteral("TrackingName2"), QStringLiteral("TrackingOption2")}};
    for (const Journal& journal : journals) {
        for (const JournalLine& line : journal.lines) {
            // Xero reads debits as positive amounts and credits as negative ones.
            const double amount = line.debit > 0 ? line.debit : -line.credit;
            rows.append({memo + u' ' + journal.number, journalDate(journal), line.description,
                         accounts.code(line.account), taxRate, amountText(amount), QString(), QString(),
                         QString(), QString()});
        }
    }
    return CSVText::lines(rows);
}

QList<QStringList> AccountingExportService::previewRows(const QList<Journal>& journals,
                                                        const AccountMap& accounts, AccountingFormat format)
{
    QList<QStringList> rows;
    for (const Journal& journal : journals) {
        const QString day = journal.date.toLocalTime().toString(QStringLiteral("yyyy-MM-dd"));
        for (const JournalLine& line : journal.lines) {
            const QString account = format == AccountingFormat::xero
                                        ? accounts.code(line.account) + u' ' + accounts.name(line.account)
                                        : accounts.name(line.account);
            rows.append({day, account, previewAmount(line.debit), previewAmount(line.credit), QString()});
        }
        rows.append({day, QStringLiteral("Total"), previewAmount(journal.totalDebit()),
                     previewAmount(journal.totalCredit()),
                     journal.isBalanced() ? QStringLiteral("Balanced") : QStringLiteral("NOT BALANCED")});
        if (isPosted(journal.roundingAdjustment)) {
            rows.append({day,
                         QStringLiteral("Includes %1 rounding in Sales")
                             .arg(previewAmount(journal.roundingAdjustment)),
                         QString(), QString(), QString()});
        }
    }
    return rows;
}

QList<Journal> AccountingExportService::dailyJournals(QDate from, QDate to)
{
    SalesReader reader(m_context);
    const DayRange range(from, to);
    return journals(reader.sales(range), reader.accountPayments(range), from, to);
}

QStringList AccountingExportService::writeDailyFiles(const QList<Journal>& journals, AccountingFormat format,
                                                     const AccountMap& accounts, const QString& folder)
{
    QStringList written;
    for (const Journal& journal : journals) {
        const QString name = QStringLiteral("%1 journal %2.csv")
                                 .arg(AccountingFormats::name(format),
                                      journal.date.toLocalTime().toString(QStringLiteral("yyyy-MM-dd")));
        const QString path = QDir(folder).filePath(name);
        const QString text = format == AccountingFormat::quickBooks
                                 ? quickBooksCSV({journal}, accounts)
                                 : xeroCSV({journal}, accounts, xeroTaxRate);
        writeWholeFile(path, text.toUtf8());
        written.append(path);
    }
    return written;
}

void AccountingExportService::saveAccountMap(AppSettings& settings, const AccountMap& accounts)
{
    performUnitOfWork(m_context, [&] { settings.setAccountingAccountsJSON(accounts.json()); });
}
