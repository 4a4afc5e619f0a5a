#include "reports/accountingexportservice.h"

#include "records/records.h"
#include "reportbuilders.h"
#include "reports/filewriteerror.h"
#include "reports/reportcalculator.h"
#include "reports/salesreader.h"
#include "strictcsv.h"
#include "support/refusalof.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

// A line as the tests write it: account, description, debit, credit.
struct Expected {
    LedgerAccount account;
    QString description;
    double debit;
    double credit;
};

void expectLines(const Journal& journal, const QList<Expected>& expected)
{
    ASSERT_EQ(journal.lines.size(), expected.size());
    for (qsizetype i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE(qPrintable(expected[i].description));
        EXPECT_EQ(journal.lines[i].account, expected[i].account);
        EXPECT_EQ(journal.lines[i].description, expected[i].description);
        EXPECT_EQ(journal.lines[i].debit, expected[i].debit);
        EXPECT_EQ(journal.lines[i].credit, expected[i].credit);
    }
    EXPECT_TRUE(journal.isBalanced());
}

ReportAccountPayment accountPayment(const QDateTime& when, const char* method, double amount)
{
    return {when, QString::fromUtf8(method), amount};
}

// 85 before tax and 15 of tax, paid in cash.
ReportSale hundredCediSale(const QDateTime& when = at(9, 10))
{
    return sale({.when = when, .lines = {{.unitPrice = 85, .taxRate = 15.0 / 85.0}}});
}

const QString partsTax = QStringLiteral("VAT \"std\"|0.15");

// Every kind of line on one day: takings of each kind, a discount in tax-inclusive prices, stock
// and a service, an account payment in two methods.
QList<ReportSale> busyDay()
{
    return {sale({.when = at(9, 10),
                  .lines = {{.unitPrice = 115, .unitCost = 50, .taxRate = 0.15, .lineDiscount = 11.5,
                             .pricesIncludeTax = true, .taxComponentsRaw = partsTax},
                            {.quantity = 2, .unitPrice = 20, .unitCost = 5, .typeRaw = "service"}},
                  .payments = {{"card", 100}, {"voucher", 43.5}}}),
            sale({.when = at(9, 16), .lines = {{.unitPrice = 30, .unitCost = 10, .typeRaw = "nonInventory"}},
                  .payments = {{"onAccount", 30}}})};
}

QList<ReportAccountPayment> busyDayAccountPayments()
{
    return {accountPayment(at(9, 11), "mobileMoney", 20), accountPayment(at(9, 17), "other", 5)};
}

AccountMap ownAccounts()
{
    AccountMap accounts;
    accounts.names.insert(QStringLiteral("cash"), QStringLiteral("  Cash, front till "));
    accounts.codes.insert(QStringLiteral("cash"), QStringLiteral("1001"));
    accounts.codes.insert(QStringLiteral("card"), QStringLiteral("   "));
    return accounts;
}

Journal busyJournal()
{
    return AccountingExportService::journal(march(9), busyDay(), busyDayAccountPayments());
}

// The file as a strict RFC 4180 reader sees it.
QList<QStringList> parsed(const QString& text)
{
    const auto result = readStrictCSV(text);
    if (const QString* error = std::get_if<QString>(&result)) {
        ADD_FAILURE() << qPrintable(*error);
        return {};
    }
    return std::get<QList<QStringList>>(result);
}

} // namespace

TEST(AccountingJournal, EveryKindOfLineInTheOrderOfItsSideAndAccount)
{
    const Journal journal = busyJournal();
    // 11.50 off a price holding 15% tax is 10 off before tax; the service carries no cost.
    expectLines(
        journal,
        {{LedgerAccount::cash, QStringLiteral("Cash takings"), 43.5, 0},
         {LedgerAccount::card, QStringLiteral("Card takings"), 100, 0},
         {LedgerAccount::mobileMoney, QStringLiteral("Account payments received — Mobile Money"), 20, 0},
         {LedgerAccount::otherPayments, QStringLiteral("Account payments received — Other"), 5, 0},
         {LedgerAccount::receivable, QStringLiteral("Credit sales (On Account)"), 30, 0},
         {LedgerAccount::discounts, QStringLiteral("Discounts and loyalty points (ex tax)"), 10, 0},
         {LedgerAccount::costOfGoods, QStringLiteral("Cost of goods sold"), 50, 0},
         {LedgerAccount::receivable, QStringLiteral("Account payments received"), 0, 25},
         {LedgerAccount::inventory, QStringLiteral("Inventory sold"), 0, 50},
         {LedgerAccount::tax, QStringLiteral("VAT \"std\""), 0, 13.5},
         {LedgerAccount::sales, QStringLiteral("Sales before tax and discounts"), 0, 170}});
    EXPECT_EQ(journal.totalDebit(), 258.5);
    EXPECT_EQ(journal.totalCredit(), 258.5);
    EXPECT_EQ(journal.roundingAdjustment, 0);
}

TEST(AccountingJournal, TaxesThatRoundUnevenlyShiftTheSalesLineAndTheRoundingIsShown)
{
    // A net of 10.24 at 2.5% + 2.5% + 15%: 0.256 + 0.256 + 1.536 round to 2.06, the total 12.288 to
    // 12.29, which leaves 10.23 for Sales.
    const ReportSale shifted =
        sale({.lines = {{.unitPrice = 10.24, .taxRate = 0.2, .taxComponentsRaw = ghanaTaxes()}}});
    ASSERT_EQ(shifted.total, 12.29);
    const Journal journal = AccountingExportService::journal(march(9), {shifted}, {});
    expectLines(journal,
                {{LedgerAccount::cash, QStringLiteral("Cash takings"), 12.29, 0},
                 {LedgerAccount::tax, QStringLiteral("NHIL"), 0, 0.26},
                 {LedgerAccount::tax, QStringLiteral("GETFund Levy"), 0, 0.26},
                 {LedgerAccount::tax, QStringLiteral("VAT"), 0, 1.54},
                 {LedgerAccount::sales, QStringLiteral("Sales before tax and discounts"), 0, 10.23}});
    EXPECT_EQ(journal.roundingAdjustment, -0.01);

    const QList<QStringList> preview =
        AccountingExportService::previewRows({journal}, {}, AccountingFormat::quickBooks);
    ASSERT_EQ(preview.size(), 7);
    EXPECT_EQ(preview[0].at(1), QStringLiteral("Cash on Hand"));
    EXPECT_EQ(preview[6].at(1), QStringLiteral("Includes -0.01 rounding in Sales"));
}

// A refund day credits the takings and debits tax and Sales, debits still first. Discounts and cost
// are posted only above nothing, so a day whose refunds give back more discount than its sales gave
// posts none: the Sales line is net of it and shows it as rounding.
TEST(AccountingJournal, ARefundDayCreditsTheTakingsAndStillListsDebitsFirst)
{
    const auto sales = [](double amount) {
        return Expected{LedgerAccount::sales, QStringLiteral("Sales before tax and discounts"), amount, 0};
    };
    const auto taxes = [](double levy, double vat) {
        return QList<Expected>{{LedgerAccount::tax, QStringLiteral("NHIL"), levy, 0},
                               {LedgerAccount::tax, QStringLiteral("GETFund Levy"), levy, 0},
                               {LedgerAccount::tax, QStringLiteral("VAT"), vat, 0}};
    };
    const struct {
        const char* name;
        double lineDiscount;
        QList<Expected> lines;
        double rounding;
    } cases[] = {
        {"no discount", 0,
         taxes(0.25, 1.5) +
             QList<Expected>{sales(10), {LedgerAccount::cash, QStringLiteral("Cash takings"), 0, 12}},
         0},
        {"a discount given back", -2,
         taxes(0.2, 1.2) +
             QList<Expected>{sales(8), {LedgerAccount::cash, QStringLiteral("Cash takings"), 0, 9.6}},
         2},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        const ReportSale refund = sale({.lines = {{.quantity = -1,
                                                   .unitPrice = 10,
                                                   .unitCost = 6,
                                                   .taxRate = 0.2,
                                                   .lineDiscount = test.lineDiscount,
                                                   .taxComponentsRaw = ghanaTaxes()}},
                                        .statusRaw = QStringLiteral("refunded")});
        const Journal journal = AccountingExportService::journal(march(9), {refund}, {});
        expectLines(journal, test.lines);
        EXPECT_EQ(journal.roundingAdjustment, test.rounding);
    }
}

TEST(AccountingJournal, JournalsComeOneADayInOrderWithoutVoidsOrEmptyDays)
{
    const QList<ReportSale> sales{
        hundredCediSale(QDateTime(march(12), QTime(23, 59, 59, 999))), hundredCediSale(march(9).startOfDay()),
        sale({.when = at(10, 9), .statusRaw = QStringLiteral("voided"), .voidedAt = at(10, 9, 5)}),
        hundredCediSale(march(13).startOfDay()), // the day after the range
    };
    const QList<Journal> journals = AccountingExportService::journals(
        sales, {accountPayment(at(11, 8), "card", 12), accountPayment(at(8, 23), "card", 7)}, march(9),
        march(12));
    QStringList numbers;
    for (const Journal& journal : journals)
        numbers << journal.number;
    EXPECT_EQ(numbers, (QStringList{QStringLiteral("POS-20260309"), QStringLiteral("POS-20260311"),
                                    QStringLiteral("POS-20260312")}));
    // A day of one account payment has no sales line.
    ASSERT_EQ(journals[1].lines.size(), 2);
    EXPECT_EQ(journals[1].lines.at(0).description, QStringLiteral("Account payments received — Card"));
    EXPECT_EQ(journals[1].lines.at(1).account, LedgerAccount::receivable);
}

TEST(AccountingJournal, TheAccountMapKeepsWhatWasTypedAndFallsBackOnBlanks)
{
    // What a blank or typed account reads as, the CSV layouts show byte for byte.
    const AccountMap accounts = ownAccounts();
    EXPECT_EQ(AccountMap::decode(accounts.json()), accounts);
    EXPECT_EQ(
        accounts.json(),
        QStringLiteral(R"({"codes":{"card":"   ","cash":"1001"},"names":{"cash":"  Cash, front till "}})"));

    for (const char* unreadable : {"", "not json", "[1, 2]", R"({"names": 3, "codes": {"tax": 2200}})"}) {
        const AccountMap decoded = AccountMap::decode(QString::fromUtf8(unreadable));
        EXPECT_TRUE(decoded.names.isEmpty()) << unreadable;
        EXPECT_TRUE(decoded.codes.isEmpty()) << unreadable;
        EXPECT_EQ(decoded.code(LedgerAccount::tax), QStringLiteral("2200"));
    }
}

TEST(AccountingCSV, QuickBooksLayoutByteForByte)
{
    const QString text = AccountingExportService::quickBooksCSV({busyJournal()}, ownAccounts());
    const QString rows = QStringLiteral(
        "POS-20260309,09/03/2026,\"Cash, front till\",43.50,,Cash takings,Brindle daily summary\n"
        "POS-20260309,09/03/2026,Card Clearing,100.00,,Card takings,Brindle daily summary\n"
        "POS-20260309,09/03/2026,Mobile Money,20.00,,Account payments received — Mobile Money,Brindle daily "
        "summary\n"
        "POS-20260309,09/03/2026,Other Receipts,5.00,,Account payments received — Other,Brindle daily "
        "summary\n"
        "POS-20260309,09/03/2026,Accounts Receivable,30.00,,Credit sales (On Account),Brindle daily summary\n"
        "POS-20260309,09/03/2026,Discounts Given,10.00,,Discounts and loyalty points (ex tax),Brindle daily "
        "summary\n"
        "POS-20260309,09/03/2026,Cost of Goods Sold,50.00,,Cost of goods sold,Brindle daily summary\n"
        "POS-20260309,09/03/2026,Accounts Receivable,,25.00,Account payments received,Brindle daily summary\n"
        "POS-20260309,09/03/2026,Inventory Asset,,50.00,Inventory sold,Brindle daily summary\n"
        "POS-20260309,09/03/2026,VAT and Levies Payable,,13.50,\"VAT \"\"std\"\"\",Brindle daily summary\n"
        "POS-20260309,09/03/2026,Sales,,170.00,Sales before tax and discounts,Brindle daily summary\n");
    EXPECT_EQ(text, QStringLiteral("Journal No,Journal Date,Account Name,Debits,Credits,Description,Memo\n") +
                        rows);
    const QList<QStringList> records = parsed(text);
    ASSERT_EQ(records.size(), 12);
    EXPECT_EQ(records[10].at(5), QStringLiteral("VAT \"std\""));
}

TEST(AccountingCSV, XeroLayoutByteForByteWithCreditsNegative)
{
    const QString text = AccountingExportService::xeroCSV({busyJournal()}, ownAccounts(),
                                                          AccountingExportService::xeroTaxRate);
    const QString header =
        QStringLiteral("*Narration,*Date,Description,*AccountCode,*TaxRate,*Amount,TrackingName1,"
                       "TrackingOption1,TrackingName2,TrackingOption2\n");
    const QString first = QStringLiteral(
        "Brindle daily summary POS-20260309,09/03/2026,Cash takings,1001,Tax Exempt,43.50,,,,\n"
        "Brindle daily summary POS-20260309,09/03/2026,Card takings,1010,Tax Exempt,100.00,,,,\n");
    const QString last = QStringLiteral(
        "Brindle daily summary POS-20260309,09/03/2026,\"VAT \"\"std\"\"\",2200,Tax Exempt,-13.50,,,,\n"
        "Brindle daily summary POS-20260309,09/03/2026,Sales before tax and discounts,4000,Tax "
        "Exempt,-170.00,,,,\n");
    EXPECT_TRUE(text.startsWith(header + first)) << qPrintable(text);
    EXPECT_TRUE(text.endsWith(last)) << qPrintable(text);

    const QList<QStringList> records = parsed(text);
    ASSERT_EQ(records.size(), 12);
    EXPECT_EQ(records[0].join(u','), header.chopped(1));
}

TEST(AccountingCSV, ThePreviewNamesXeroAccountsByCodeAndName)
{
    const QList<QStringList> rows =
        AccountingExportService::previewRows({busyJournal()}, ownAccounts(), AccountingFormat::xero);
    ASSERT_EQ(rows.size(), 12); // no rounding note
    EXPECT_EQ(rows[0], (QStringList{"2026-03-09", "1001 Cash, front till", "43.50", "0.00", ""}));
    EXPECT_EQ(rows[11], (QStringList{"2026-03-09", "Total", "258.50", "258.50", "Balanced"}));

    Journal lopsided = busyJournal();
    lopsided.lines.removeLast();
    EXPECT_EQ(AccountingExportService::previewRows({lopsided}, {}, AccountingFormat::quickBooks).last().at(4),
              QStringLiteral("NOT BALANCED"));
}

class DailyFilesTest : public ::testing::Test {
protected:
    QTemporaryDir folder;
    QList<Journal> journals = AccountingExportService::journals(
        {hundredCediSale(at(9)), hundredCediSale(at(10))}, {}, march(9), march(10));

    QString pathOf(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }
    QStringList filesThere() const { return QDir(folder.path()).entryList(QDir::Files | QDir::System); }
    QString failureWritingTo(const QString& path) const
    {
        return refusalOf(
            [&] { AccountingExportService::writeDailyFiles(journals, AccountingFormat::quickBooks, {}, path); });
    }
};

TEST_F(DailyFilesTest, OneFileADayEachTheLayoutOfItsOwnJournal)
{
    QFile stale(pathOf("Xero journal 2026-03-10.csv"));
    ASSERT_TRUE(stale.open(QIODevice::WriteOnly));
    stale.write("an older export that is longer than the new one will be, so a leftover tail would show\n");
    stale.close();

    const QStringList written =
        AccountingExportService::writeDailyFiles(journals, AccountingFormat::xero, {}, folder.path());
    EXPECT_EQ(written,
              (QStringList{pathOf("Xero journal 2026-03-09.csv"), pathOf("Xero journal 2026-03-10.csv")}));
    EXPECT_EQ(filesThere(), (QStringList{QStringLiteral("Xero journal 2026-03-09.csv"),
                                         QStringLiteral("Xero journal 2026-03-10.csv")}));
    for (qsizetype i = 0; i < journals.size(); ++i) {
        QFile file(written[i]);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(QString::fromUtf8(file.readAll()),
                  AccountingExportService::xeroCSV({journals[i]}, {}, QStringLiteral("Tax Exempt")));
    }

    const QStringList quickBooks =
        AccountingExportService::writeDailyFiles(journals, AccountingFormat::quickBooks, {}, folder.path());
    EXPECT_EQ(quickBooks.first(), pathOf("QuickBooks journal 2026-03-09.csv"));
}

TEST_F(DailyFilesTest, AFullDiskOrAMissingFolderIsSaidPlainlyAndLeavesNoFile)
{
    // Whatever is written to /dev/full fails as on a full disk.
    ASSERT_TRUE(
        QFile::link(QStringLiteral("/dev/full"), pathOf("QuickBooks journal 2026-03-10.csv.partial")));
    EXPECT_EQ(failureWritingTo(folder.path()),
              QStringLiteral("The disk is full, so QuickBooks journal 2026-03-10.csv wasn't "
                             "saved. Free some space and try again."));
    // The day before went through whole; the failed one left nothing, not even its side file.
    EXPECT_EQ(filesThere(), QStringList{QStringLiteral("QuickBooks journal 2026-03-09.csv")});

    EXPECT_EQ(
        failureWritingTo(pathOf("gone")),
        QStringLiteral("QuickBooks journal 2026-03-09.csv couldn't be saved: No such file or directory."));
}

namespace {
// A sale of one line paid 100 in cash on 9 March, unsaved: the journal reads what the context holds.
void addCashSale(ModelContext& context, double unitPrice, double taxRate)
{
    const Ref<Sale> sold = Sale::make(QStringLiteral("INV-1"), nullptr, nullptr, nullptr);
    sold->setTimestamp(at(9, 10));
    sold->setTotal(100);
    const Ref<SaleItem> line = SaleItem::make(nullptr, 1, unitPrice, 0, taxRate, 0, false);
    const Ref<Payment> paid = Payment::make(PaymentMethodType::cash, 100, 100, 0, QString());
    line->setSale(sold);
    paid->setSale(sold);
    context.insert(line); // the sale joins with it
    context.insert(paid);
}
} // namespace

TEST(AccountingExportService, JournalsOfTheStoreComeFromItsCountedSalesAndAccountPayments)
{
    TestStore store;
    ModelContext& context = store.context();
    addCashSale(context, 85, 15.0 / 85.0);
    auto received = std::make_shared<CustomerPayment>();
    received->setTimestamp(at(10, 9));
    received->setAmount(50);
    store.saved(received);

    const QList<Journal> journals = AccountingExportService(context).dailyJournals(march(1), march(31));
    ASSERT_EQ(journals.size(), 2);
    expectLines(journals[0],
                {{LedgerAccount::cash, QStringLiteral("Cash takings"), 100, 0},
                 {LedgerAccount::tax, QStringLiteral("Tax (17.65%)"), 0, 15},
                 {LedgerAccount::sales, QStringLiteral("Sales before tax and discounts"), 0, 85}});
    EXPECT_EQ(journals[1].number, QStringLiteral("POS-20260310"));
}

// Debt carried over from the credit book when an account starts here was never money taken: no
// journal, sales figure or account-payment line may count it, on its own day or the day it dates from.
TEST(AccountingExportService, AnOpeningBalanceIsNoTakingsInAnyJournalOrReport)
{
    TestStore store;
    ModelContext& context = store.context();
    addCashSale(context, 100, 0);
    const Ref<Customer> kofi = store.saved(std::make_shared<Customer>());
    for (const auto& [since, entered] : {std::pair{at(9, 0), at(9, 11)}, std::pair{at(12, 0), at(12, 9)}}) {
        auto opening = std::make_shared<AccountOpeningBalance>();
        opening->setCustomer(kofi);
        opening->setAmount(500);
        opening->setOwedSince(since);
        opening->setTimestamp(entered);
        store.saved(opening);
    }

    const QList<Journal> journals = AccountingExportService(context).dailyJournals(march(1), march(31));
    ASSERT_EQ(journals.size(), 1);
    expectLines(journals[0], {{LedgerAccount::cash, QStringLiteral("Cash takings"), 100, 0},
                              {LedgerAccount::sales, QStringLiteral("Sales before tax and discounts"), 0, 100}});

    SalesReader reader(context);
    for (const QDate day : {march(9), march(12)}) {
        const QList<ReportSale> sales = reader.sales(DayRange(day));
        const DailySalesSummary summary = ReportCalculator::dailySales(sales, day);
        EXPECT_EQ(sales.size(), day == march(9) ? 1 : 0) << day.toString().toStdString();
        EXPECT_EQ(summary.transactionCount, day == march(9) ? 1 : 0);
        EXPECT_TRUE(reader.accountPayments(DayRange(day)).isEmpty());
    }
}
