#pragma once

#include "customers/accountsservice.h"
#include "reports/reportrows.h"
#include "startup/sessionstore.h"
#include "store/modelcontext.h"
#include "till/tillservice.h"
#include "viewmodel/viewmodel.h"

#include <QDate>
#include <QList>
#include <QString>

// One line of "Payment Totals Today" or "Low Stock Alerts", in finished text.
struct DashboardLine {
    QString label;
    QString value;
};

// The admin's view of today, in the local calendar: the day's sales figures, what customers owe,
// stock to reorder and the till. Each refresh reads only today's sales, a grouped sum per customer
// and the products already low, so the figures cost the same on the first day as after five years.
// A store that can't be read leaves every figure at zero and says why in errorMessage.
class DashboardViewModel : public ViewModel {
    Q_OBJECT

public:
    static QString netSalesTitle() { return QStringLiteral("Net Sales"); }
    static QString transactionsTitle() { return QStringLiteral("Transactions"); }
    static QString averageBasketTitle() { return QStringLiteral("Average Basket"); }
    static QString taxCollectedTitle() { return QStringLiteral("Tax Collected"); }
    static QString grossProfitTitle() { return QStringLiteral("Gross Profit"); }
    static QString owedToYouTitle() { return QStringLiteral("Owed to You"); }
    static QString owedToYouCaption() { return QStringLiteral("Customer accounts"); }
    static QString lowStockItemsTitle() { return QStringLiteral("Low Stock Items"); }
    static QString lowStockItemsCaption() { return QStringLiteral("Needs reorder"); }
    static QString tillStatusTitle() { return QStringLiteral("Till Status"); }
    static QString paymentTotalsTitle() { return QStringLiteral("Payment Totals Today"); }
    static QString noPaymentsMessage() { return QStringLiteral("No payments recorded yet."); }
    static QString lowStockAlertsTitle() { return QStringLiteral("Low Stock Alerts"); }
    static QString noLowStockMessage() { return QStringLiteral("Nothing needs reordering."); }

    DashboardViewModel(ModelContext& context, AccountsService& accounts, TillService& till, SessionStore& session,
                       QObject* parent = nullptr);

    // Reads every figure again for the day the clock is on now.
    void refresh();

    QDate day() const { return m_day; }
    // "Today, Mar 9, 2026"
    QString titleText() const;

    const DailySalesSummary& daily() const { return m_daily; }
    double grossProfit() const { return m_grossProfit; }
    // The balances of the customers who owe, in cents; one in credit takes nothing off another's debt.
    double owedToYou() const { return m_owedToYou; }
    const QList<LowStockRow>& lowStock() const { return m_lowStock; }
    const QList<PaymentMethodRow>& paymentTotals() const { return m_paymentTotals; }
    bool isTillOpen() const { return m_tillOpenedAt.isValid(); }

    QString netSalesText() const { return money(m_daily.netTotal); }
    QString transactionsText() const { return QString::number(m_daily.transactionCount); }
    QString averageBasketText() const { return money(m_daily.averageBasket); }
    QString taxCollectedText() const { return money(m_daily.tax); }
    QString grossProfitText() const { return money(m_grossProfit); }
    QString owedToYouText() const { return money(m_owedToYou); }
    QString lowStockCountText() const { return QString::number(m_lowStock.size()); }
    // "Opened 9:05 AM with ₵200.00 float", or "No till open".
    QString tillStatusText() const;
    // Empty while a till is open; otherwise what to do about it.
    QString tillStatusNote() const;
    // Method and total, highest total first; empty before the day's first payment.
    QList<DashboardLine> paymentLines() const;
    // Product and "{quantity} left", lowest first.
    QList<DashboardLine> lowStockLines() const;

Q_SIGNALS:
    // The figures were read again, or fell back to zero.
    void figuresChanged();
    // A save or rollback touched sales, products, customers' accounts or the till: figures are stale.
    void storeChanged();

private:
    QString money(double amount) const;
    void clearFigures();

    ModelContext& m_context;
    AccountsService& m_accounts;
    TillService& m_till;
    SessionStore& m_session;

    QDate m_day;
    DailySalesSummary m_daily;
    double m_grossProfit = 0;
    double m_owedToYou = 0;
    QList<LowStockRow> m_lowStock;
    QList<PaymentMethodRow> m_paymentTotals;
    QDateTime m_tillOpenedAt; // invalid while no till is open
    double m_tillFloat = 0;
};
