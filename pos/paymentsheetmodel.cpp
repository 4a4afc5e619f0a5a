#include "pos/paymentsheetmodel.h"

#include "customers/loyaltyservice.h"
#include "money/currency.h"
#include "money/numberentry.h"
#include "money/rounding.h"
#include "money/tolerances.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {

// Amounts are kept as typed, to the millionth, so that the tolerances decide and not an early
// rounding: a split of 50.00 and 49.995 comes within a cent of 100.00. Blank is 0, as the hint shows.
std::optional<double> typedAmount(const QString& text)
{
    if (text.trimmed().isEmpty())
        return 0.0;
    return NumberEntry::money(text, 6).value;
}

std::optional<QString> fieldProblem(const QString& text)
{
    if (typedAmount(text))
        return std::nullopt;
    return NumberEntry::money(text, 6).problem;
}

// Amounts typed in cents differ by float noise (100 - 99.99 is 0.010000000000005116): cut to
// millionths first, as checkout does, so a difference of exactly a cent is a cent.
double difference(double a, double b)
{
    return Rounding::toPlaces(a - b, 6);
}

} // namespace

PaymentSheetModel::PaymentSheetModel(PaymentSheetInputs inputs, Actions actions, QObject* parent)
    : ViewModel(parent)
    , m_inputs(std::move(inputs))
    , m_actions(std::move(actions))
{
}

void PaymentSheetModel::setInputs(const PaymentSheetInputs& inputs)
{
    m_inputs = inputs;
    Q_EMIT inputsChanged();
}

QString PaymentSheetModel::modeTitle(Mode mode)
{
    switch (mode) {
    case Mode::cash:
        return QStringLiteral("Cash");
    case Mode::card:
        return QStringLiteral("Card");
    case Mode::mobileMoney:
        return QStringLiteral("Mobile Money");
    case Mode::onAccount:
        return QStringLiteral("On Account");
    case Mode::split:
        return QStringLiteral("Split");
    }
    Q_UNREACHABLE();
}

QString PaymentSheetModel::money(double amount) const
{
    return Currency::format(amount, m_inputs.currencySymbol);
}

QString PaymentSheetModel::customerName() const
{
    return m_inputs.customer ? m_inputs.customer->name() : QString();
}

QList<double> PaymentSheetModel::quickCashOptions() const
{
    constexpr qsizetype most = 4;
    QList<double> options{Rounding::toCents(m_inputs.total)};
    const double wholeDue = std::ceil(Rounding::toPlaces(m_inputs.total, 6));
    for (const double note : {5.0, 10.0, 20.0, 50.0}) {
        if (note >= wholeDue && !options.contains(note))
            options.append(note);
    }
    return options.mid(0, most);
}

void PaymentSheetModel::chooseQuickCash(double amount)
{
    setCashTenderedText(QString::number(amount, 'f', 2));
}

std::optional<QString> PaymentSheetModel::cashTenderedProblem() const
{
    return fieldProblem(m_cashTenderedText);
}

double PaymentSheetModel::changeDue() const
{
    const double tendered = typedAmount(m_cashTenderedText).value_or(0);
    return Rounding::toCents(std::max(tendered - m_inputs.total, 0.0));
}

QString PaymentSheetModel::changeDueText() const
{
    return money(changeDue());
}

QString PaymentSheetModel::fullAmountText() const
{
    return QStringLiteral("Full amount of %1 will be charged.").arg(money(m_inputs.total));
}

std::optional<QString> PaymentSheetModel::onAccountProblem() const
{
    const Ref<Customer>& customer = m_inputs.customer;
    if (!customer)
        return QStringLiteral("Add a customer to the sale first (Add Customer at the top of the cart).");
    if (!customer->allowCredit())
        return QStringLiteral("%1 isn't set up to buy on credit. Turn on Allow Credit for them in Customers.")
            .arg(customer->name());
    if (m_inputs.availableCredit && difference(m_inputs.total, *m_inputs.availableCredit) > Tolerance::credit)
        return QStringLiteral("This would take %1 over their credit limit — they can have up to %2 more.")
            .arg(customer->name(), money(std::max(*m_inputs.availableCredit, 0.0)));
    return std::nullopt;
}

QString PaymentSheetModel::onAccountNote() const
{
    return QStringLiteral("%1 will be added to %2's account.").arg(money(m_inputs.total), customerName());
}

QString PaymentSheetModel::owesNowText() const
{
    return money(m_inputs.accountBalance);
}

QString PaymentSheetModel::willOweText() const
{
    return money(m_inputs.accountBalance + m_inputs.total);
}

QString PaymentSheetModel::creditLimitText() const
{
    const double limit = m_inputs.customer ? m_inputs.customer->creditLimit() : 0;
    return limit > 0 ? money(limit) : QStringLiteral("No limit");
}

PaymentSheetModel::SplitRow* PaymentSheetModel::row(const QUuid& id)
{
    const auto found = std::find_if(m_splitRows.begin(), m_splitRows.end(), [&](const SplitRow& r) { return r.id == id; });
    return found == m_splitRows.end() ? nullptr : &*found;
}

const PaymentSheetModel::SplitRow* PaymentSheetModel::row(const QUuid& id) const
{
    return const_cast<PaymentSheetModel*>(this)->row(id);
}

void PaymentSheetModel::addSplitRow(PaymentMethodType method)
{
    SplitRow added;
    added.method = method;
    m_splitRows.append(added);
    Q_EMIT fieldsChanged();
}

void PaymentSheetModel::removeSplitRow(const QUuid& id)
{
    if (m_splitRows.removeIf([&](const SplitRow& r) { return r.id == id; }) > 0)
        Q_EMIT fieldsChanged();
}

void PaymentSheetModel::setSplitMethod(const QUuid& id, PaymentMethodType method)
{
    if (SplitRow* found = row(id))
        assign(found->method, method);
}

void PaymentSheetModel::setSplitAmountText(const QUuid& id, const QString& text)
{
    if (SplitRow* found = row(id))
        assign(found->amountText, text);
}

void PaymentSheetModel::setSplitTenderedText(const QUuid& id, const QString& text)
{
    if (SplitRow* found = row(id))
        assign(found->tenderedText, text);
}

std::optional<QString> PaymentSheetModel::splitAmountProblem(const QUuid& id) const
{
    const SplitRow* found = row(id);
    return found ? fieldProblem(found->amountText) : std::nullopt;
}

std::optional<QString> PaymentSheetModel::splitTenderedProblem(const QUuid& id) const
{
    const SplitRow* found = row(id);
    if (!found || found->method != PaymentMethodType::cash)
        return std::nullopt;
    return fieldProblem(found->tenderedText);
}

double PaymentSheetModel::splitTotal() const
{
    double sum = 0;
    for (const SplitRow& r : m_splitRows)
        sum += typedAmount(r.amountText).value_or(0);
    return sum;
}

bool PaymentSheetModel::showsPoints() const
{
    return m_inputs.settings && m_inputs.settings->loyaltyEnabled() && m_inputs.customer;
}

QString PaymentSheetModel::pointsHeader() const
{
    const qint64 points = m_inputs.customer ? m_inputs.customer->loyaltyPoints() : 0;
    return QStringLiteral("%1 has %2 points").arg(customerName()).arg(points);
}

std::optional<QString> PaymentSheetModel::pointsWorth() const
{
    if (!m_inputs.settings || !m_inputs.customer)
        return std::nullopt;
    const double rate = m_inputs.settings->loyaltyValuePerPoint();
    if (rate <= 0)
        return std::nullopt;
    return QStringLiteral("worth %1").arg(money(double(m_inputs.customer->loyaltyPoints()) * rate));
}

std::optional<QString> PaymentSheetModel::redeemingText() const
{
    if (m_inputs.pointsRedeemed <= 0)
        return std::nullopt;
    return QStringLiteral("Redeeming %1 points: %2 before tax")
        .arg(m_inputs.pointsRedeemed)
        .arg(money(m_inputs.pointsDiscount));
}

qint64 PaymentSheetModel::mostRedeemable() const
{
    if (!m_inputs.settings || !m_inputs.customer)
        return 0;
    return LoyaltyService::maxRedeemable(m_inputs.customer->loyaltyPoints(), m_inputs.discountable,
                                         *m_inputs.settings);
}

QStringList PaymentSheetModel::pointsOffer() const
{
    if (!showsPoints() || m_inputs.pointsRedeemed > 0)
        return {};
    const AppSettings& settings = *m_inputs.settings;
    const qint64 minimum = settings.loyaltyMinimumRedeem();
    const QString rate = QStringLiteral("%1 points = %2")
                             .arg(settings.loyaltyRedeemPoints())
                             .arg(money(settings.loyaltyRedeemValue()));
    if (m_inputs.customer->loyaltyPoints() < minimum)
        return {QStringLiteral("Points can be redeemed from %1. %2.").arg(minimum).arg(rate)};
    const qint64 most = mostRedeemable();
    if (most == 0)
        return {QStringLiteral("This sale is too small to redeem %1 points.").arg(minimum)};
    return {QStringLiteral("Ask %1 if they'd like to use their points.").arg(customerName()),
            QStringLiteral("%1, taken off before tax. Up to %2 on this sale.").arg(rate).arg(most)};
}

bool PaymentSheetModel::offersRedeeming() const
{
    return showsPoints() && m_inputs.pointsRedeemed == 0 && m_inputs.customer->loyaltyPoints() >=
               m_inputs.settings->loyaltyMinimumRedeem() && mostRedeemable() > 0;
}

QString PaymentSheetModel::useMostText() const
{
    return QStringLiteral("Use %1").arg(mostRedeemable());
}

bool PaymentSheetModel::redeem()
{
    setErrorMessage(std::nullopt);
    static const QRegularExpression whole(QStringLiteral("^\\d+$"));
    const QString typed = m_pointsText.trimmed();
    bool ok = whole.match(typed).hasMatch();
    const qint64 points = ok ? typed.toLongLong(&ok) : 0;
    if (!ok) {
        setErrorMessage(QStringLiteral("Enter how many points to redeem."));
        return false;
    }
    const bool allowed = writing([&] {
        if (m_inputs.settings)
            LoyaltyService::checkRedemption(points, m_inputs.customer, m_inputs.discountable, *m_inputs.settings);
    });
    if (!allowed)
        return false;
    setPointsText(QString());
    m_actions.redeemPoints(points);
    return true;
}

bool PaymentSheetModel::useMost()
{
    setPointsText(QString::number(mostRedeemable()));
    return redeem();
}

void PaymentSheetModel::removePoints()
{
    m_actions.redeemPoints(0);
}

bool PaymentSheetModel::remindAboutPoints() const
{
    const Ref<AppSettings>& settings = m_inputs.settings;
    return settings && settings->loyaltyEnabled() && settings->loyaltyRemindAtPayment() &&
           m_inputs.pointsRedeemed == 0 && m_inputs.customer && mostRedeemable() > 0;
}

QString PaymentSheetModel::pointsReminderTitle() const
{
    const qint64 points = m_inputs.customer ? m_inputs.customer->loyaltyPoints() : 0;
    if (!m_inputs.customer)
        return QStringLiteral("The customer has %1 points").arg(points);
    return QStringLiteral("%1 has %2 points").arg(customerName()).arg(points);
}

QString PaymentSheetModel::pointsReminderText() const
{
    const double rate = m_inputs.settings ? m_inputs.settings->loyaltyValuePerPoint() : 0;
    return QStringLiteral("They can take up to %1 off this sale. Ask if they'd like to use their points.")
        .arg(money(double(mostRedeemable()) * rate));
}

void PaymentSheetModel::closePointsReminder()
{
    if (replace(m_showPointsReminder, false))
        Q_EMIT pointsReminderChanged();
}

bool PaymentSheetModel::completeWithoutPoints()
{
    m_pointsReminderDismissed = true;
    closePointsReminder();
    return complete();
}

std::optional<QList<PaymentInput>> PaymentSheetModel::tenders()
{
    const double total = m_inputs.total;
    const auto refuse = [this](const QString& message) {
        setErrorMessage(message);
        return std::nullopt;
    };
    switch (m_mode) {
    case Mode::cash: {
        if (const std::optional<QString> problem = cashTenderedProblem())
            return refuse(*problem);
        const double tendered = *typedAmount(m_cashTenderedText);
        // Up to a cent short, that cent included: checkout then stores no change.
        if (difference(total, tendered) > Tolerance::payment)
            return refuse(QStringLiteral("Cash tendered is less than the amount due."));
        return QList<PaymentInput>{{PaymentMethodType::cash, total, tendered, {}}};
    }
    case Mode::card:
        return QList<PaymentInput>{{PaymentMethodType::card, total, 0, m_referenceText}};
    case Mode::mobileMoney:
        return QList<PaymentInput>{{PaymentMethodType::mobileMoney, total, 0, m_referenceText}};
    case Mode::onAccount:
        if (const std::optional<QString> problem = onAccountProblem())
            return refuse(*problem);
        return QList<PaymentInput>{{PaymentMethodType::onAccount, total, 0, m_referenceText}};
    case Mode::split: {
        for (const SplitRow& r : m_splitRows) {
            if (const std::optional<QString> problem = splitAmountProblem(r.id))
                return refuse(*problem);
            if (const std::optional<QString> problem = splitTenderedProblem(r.id))
                return refuse(*problem);
        }
        // Strictly within a cent: a split is typed row by row, so a whole cent off is a typing slip.
        if (std::abs(difference(splitTotal(), total)) >= Tolerance::payment)
            return refuse(QStringLiteral("Split payments must add up to the total due."));
        QList<PaymentInput> inputs;
        for (const SplitRow& r : m_splitRows) {
            const double amount = *typedAmount(r.amountText);
            double tendered = 0;
            if (r.method == PaymentMethodType::cash)
                tendered = r.tenderedText.trimmed().isEmpty() ? amount : *typedAmount(r.tenderedText);
            inputs.append({r.method, amount, tendered, {}});
        }
        for (const PaymentInput& input : inputs) {
            if (input.method == PaymentMethodType::cash &&
                difference(input.amount, input.tenderedAmount) > Tolerance::payment)
                return refuse(QStringLiteral("Cash tendered in the split is less than the cash amount applied."));
        }
        return inputs;
    }
    }
    Q_UNREACHABLE();
}

bool PaymentSheetModel::complete()
{
    setErrorMessage(std::nullopt);
    // Asked once each time the sheet is open: a cashier who goes on without points isn't stopped again.
    if (!m_pointsReminderDismissed && remindAboutPoints()) {
        m_pointsReminderDismissed = true;
        m_showPointsReminder = true;
        Q_EMIT pointsReminderChanged();
        return false;
    }
    const std::optional<QList<PaymentInput>> inputs = tenders();
    if (!inputs)
        return false;
    m_actions.complete(*inputs);
    return true;
}

void PaymentSheetModel::cancel()
{
    if (m_actions.cancel)
        m_actions.cancel();
}
