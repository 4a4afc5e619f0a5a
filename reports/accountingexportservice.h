#pragma once

#include "records/appsettings.h"
#include "reports/accountmap.h"
#include "reports/journal.h"
#include "reports/reportsale.h"
#include "store/modelcontext.h"

#include <QDate>
#include <QList>
#include <QStringList>

// One balanced journal a day for QuickBooks or Xero, from the day's counted sales and customers'
// account payments. Every line is rounded on its own, so the Sales line is the balancing figure and
// the difference it absorbs is kept as the day's rounding.
class AccountingExportService {
public:
    // The tax rate every Xero line carries.
    inline static const QString xeroTaxRate = QStringLiteral("Tax Exempt");

    explicit AccountingExportService(ModelContext& context);

    // A journal for each day from `from` to `to` with a counted sale or an account payment, oldest
    // first.
    static QList<Journal> journals(const QList<ReportSale>& sales,
                                   const QList<ReportAccountPayment>& accountPayments, QDate from, QDate to);
    // The journal of `day`, from those of the sales and payments that fall on it.
    static Journal journal(QDate day, const QList<ReportSale>& sales,
                           const QList<ReportAccountPayment>& accountPayments);

    static QString quickBooksCSV(const QList<Journal>& journals, const AccountMap& accounts);
    static QString xeroCSV(const QList<Journal>& journals, const AccountMap& accounts,
                           const QString& taxRate);
    // For the screen: each journal's lines as day, account, debit, credit; then its "Total" row with
    // "Balanced" or "NOT BALANCED", and a note of the rounding when there is any.
    static QList<QStringList> previewRows(const QList<Journal>& journals, const AccountMap& accounts,
                                          AccountingFormat format);

    // The journals of the days from `from` to `to`, read from the store. Throws StoreError.
    QList<Journal> dailyJournals(QDate from, QDate to);
    // One file a journal in `folder`, "{QuickBooks or Xero} journal {yyyy-MM-dd}.csv", each written
    // whole or not at all; the paths written. Throws FileWriteError at the first that fails, with the
    // ones before it written.
    static QStringList writeDailyFiles(const QList<Journal>& journals, AccountingFormat format,
                                       const AccountMap& accounts, const QString& folder);
    // One unit of work on the store's settings record; throws StoreError with nothing saved.
    void saveAccountMap(AppSettings& settings, const AccountMap& accounts);

private:
    ModelContext& m_context;
};
