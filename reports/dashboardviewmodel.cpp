#include "reports/dashboardviewmodel.h"

#include "clock/clock.h"
#include "money/currency.h"
#include "money/quantity.h"
#include "money/rounding.h"
#include "money/tolerances.h"
#include "records/accountopeningbalance.h"
#include "records/customer.h"
#include "records/customerpayment.h"
#include "records/payment.h"
#include "records/product.h"
#include "records/sale.h"
#include "records/tillshift.h"
#include "reports/dayrange.h"
#include "stock/stockconditions.h"
#include "reports/reportcalculator.h"
#include "reports/salesreader.h"

#include <QLocale>

namespace {
const QLocale& usLocale()
{
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    return locale;
}
} // namespace

DashboardViewModel::DashboardViewModel(ModelContext& context, AccountsService& accounts, TillService& till,
                                       SessionStore& session, QObject* parent)
    : ViewModel(parent)
    , m_context(context)
    , m_accounts(accounts)
    , m_till(till)
    , m_session(session)
    , m_day(Clock::now().toLocalTime().date())
{
    context.onChange(this,
                     {&Sale::schema(), &Payment::schema(), &Product::schema(), &TillShift::schema(),
                      &Customer::schema(), &CustomerPayment::schema(), &AccountOpeningBalance::schema()},
                     [this] { Q_EMIT storeChanged(); });
}

void DashboardViewModel::refresh()
{
    m_day = Clock::now().toLocalTime().date();
    try {
        const DayRange today(m_day);
        QList<ReportSale> todaySales;
        // The reader also brings sales voided today though rung up before; none of today's figures
        // reads those.
        for (ReportSale& sale : SalesReader(m_context).sales(today)) {
            if (today.contains(sale.timestamp))
                todaySales.append(std::move(sale));
        }
        m_daily = ReportCalculator::dailySales(todaySales, m_day);
        m_grossProfit = ReportCalculator::grossProfit(todaySales);
        m_paymentTotals = ReportCalculator::paymentMethodTotals(todaySales);

        double owed = 0;
        for (double balance : m_accounts.balancesByCustomer()) {
            if (balance > Tolerance::credit)
                owed += balance;
        }
        m_owedToYou = Rounding::toCents(owed);

        // Only products already low become records, a handful out of thousands.
        m_lowStock = ReportCalculator::lowStock(
            m_context.fetch<Product>(FetchDescriptor(Product::Col::isActive == true && StockConditions::lowStock())));

        const Ref<TillShift> shift = m_till.currentOpenShift();
        m_tillOpenedAt = shift ? shift->openedAt() : QDateTime();
        m_tillFloat = shift ? shift->openingFloat() : 0;
        setErrorMessage(std::nullopt);
    } catch (const Refusal& refusal) {
        clearFigures();
        setErrorMessage(refusal.description());
    }
    Q_EMIT figuresChanged();
}

void DashboardViewModel::clearFigures()
{
    m_daily = DailySalesSummary{};
    m_grossProfit = 0;
    m_owedToYou = 0;
    m_lowStock.clear();
    m_paymentTotals.clear();
    m_tillOpenedAt = QDateTime();
    m_tillFloat = 0;
}

QString DashboardViewModel::titleText() const
{
    return QStringLiteral("Today, ") + usLocale().toString(m_day, QStringLiteral("MMM d, yyyy"));
}

QString DashboardViewModel::tillStatusText() const
{
    if (!isTillOpen())
        return QStringLiteral("No till open");
    const QDateTime opened = m_tillOpenedAt.toLocalTime();
    // A shift left open overnight says so, rather than passing for one opened this morning.
    const QString when = opened.date() == m_day
                             ? usLocale().toString(opened.time(), QLocale::ShortFormat)
                             : usLocale().toString(opened, QStringLiteral("MMM d, h:mm AP"));
    return QStringLiteral("Opened %1 with %2 float").arg(when, money(m_tillFloat));
}

QString DashboardViewModel::tillStatusNote() const
{
    return isTillOpen() ? QString() : QStringLiteral("Open a till shift before selling.");
}

QList<DashboardLine> DashboardViewModel::paymentLines() const
{
    QList<DashboardLine> lines;
    for (const PaymentMethodRow& row : m_paymentTotals)
        lines.append({row.method, money(row.total)});
    return lines;
}

QList<DashboardLine> DashboardViewModel::lowStockLines() const
{
    QList<DashboardLine> lines;
    for (const LowStockRow& row : m_lowStock)
        lines.append({row.productName, Quantity::format(row.quantity, row.sellingUnit) + QStringLiteral(" left")});
    return lines;
}

QString DashboardViewModel::money(double amount) const
{
    const Ref<AppSettings> settings = m_session.settings();
    return Currency::format(amount, settings ? settings->currencySymbol() : Currency::fixedSign);
}
