#include "till/tillviewmodel.h"

#include "clock/clock.h"
#include "money/currency.h"
#include "records/customerpayment.h"
#include "records/payment.h"
#include "records/sale.h"
#include "store/storeerror.h"
#include "till/tillerror.h"

#include <QLocale>

#include <cmath>

namespace {
// Bad entries never stop the till: what isn't a number is 0, and the service's rule then applies.
double numberOrZero(const QString& text)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    return ok && std::isfinite(value) ? value : 0.0;
}

QString money(double amount)
{
    return Currency::format(amount, Currency::fixedSign);
}
} // namespace

ShiftHistoryRow ShiftHistoryRow::make(const Ref<TillShift>& shift)
{
    ShiftHistoryRow row;
    row.shift = shift;
    const auto amountOrDash = [](std::optional<double> amount) {
        return amount ? money(*amount) : QStringLiteral("—");
    };
    row.expectedText = QStringLiteral("Expected ") + amountOrDash(shift->expectedCash());
    row.countedText = QStringLiteral("Counted ") + amountOrDash(shift->countedCash());
    const std::optional<double> variance = shift->variance();
    if (!variance) {
        row.tone = Tone::neutral;
    } else if (*variance == 0) {
        row.varianceText = QStringLiteral("Balanced");
        row.tone = Tone::balanced;
    } else if (*variance > 0) {
        row.varianceText = QStringLiteral("Over ") + money(*variance);
        row.tone = Tone::over;
    } else {
        row.varianceText = QStringLiteral("Short ") + money(-*variance);
        row.tone = Tone::shortOfCash;
    }
    return row;
}

TillViewModel::TillViewModel(TillService& till, AccountsService& accounts, ModelContext& context,
                             SessionStore& session, QObject* parent)
    : ViewModel(parent)
    , m_till(till)
    , m_accounts(accounts)
    , m_context(context)
    , m_session(session)
{
    m_context.onChange(this,
                       {&TillShift::schema(), &CashMovement::schema(), &Sale::schema(), &Payment::schema(),
                        &CustomerPayment::schema()},
                       [this] { Q_EMIT tillChanged(); });
}

void TillViewModel::setBackupMessage(const std::optional<QString>& message)
{
    if (replace(m_backupMessage, message))
        Q_EMIT backupMessageChanged();
}

bool TillViewModel::openShift()
{
    setErrorMessage(std::nullopt);
    setBackupMessage(std::nullopt);
    return acting<TillError>([this] {
        m_session.setCurrentTillShift(
            m_till.openShift(m_session.currentUser(), numberOrZero(m_openingFloatText)));
    });
}

bool TillViewModel::recordCashMovement(const Ref<TillShift>& shift)
{
    Q_ASSERT(shift);
    setErrorMessage(std::nullopt);
    const double amount = numberOrZero(m_payAmountText);
    if (amount <= 0) {
        setErrorMessage(TillError::describe(TillError::Case::invalidAmount));
        return false;
    }
    // Neither the reason nor the cash in the drawer is checked: a pay-out is taken at its word.
    auto movement = std::make_shared<CashMovement>();
    movement->setTillShift(shift);
    movement->setTypeRaw(CashMovementTypes::raw(m_payType));
    movement->setAmount(amount);
    movement->setReason(m_payReason);
    movement->setPerformedBy(m_session.currentUser());
    movement->setTimestamp(Clock::now());
    m_context.insert(movement);
    if (!saveOrUndo(m_context))
        return false;
    setPayAmountText(QString());
    setPayReason(QString());
    return true;
}

bool TillViewModel::closeShift(const Ref<TillShift>& shift)
{
    Q_ASSERT(shift);
    setErrorMessage(std::nullopt);
    try {
        m_till.closeShift(shift, numberOrZero(m_countedCashText), m_closingNotes);
    } catch (const StoreError& error) {
        setErrorMessage(error.description());
        return false;
    }
    const Ref<TillShift> current = m_session.currentTillShift();
    if (current && current->id() == shift->id())
        m_session.setCurrentTillShift(nullptr);
    setCountedCashText(QString());
    setClosingNotes(QString());
    return true;
}

QList<Ref<TillShift>> TillViewModel::shiftsNewestFirst()
{
    return m_context.fetch<TillShift>(FetchDescriptor().sortedBy(descending(TillShift::Col::openedAt)));
}

Ref<TillShift> TillViewModel::openShiftShown()
{
    try {
        return m_context.fetchFirst<TillShift>(
            FetchDescriptor(TillShift::Col::statusRaw == TillService::openStatus())
                .sortedBy(descending(TillShift::Col::openedAt)));
    } catch (const StoreError& error) {
        setErrorMessage(error.description());
        return nullptr;
    }
}

QList<ShiftHistoryRow> TillViewModel::shiftHistory()
{
    try {
        const Ref<TillShift> open = openShiftShown();
        QList<ShiftHistoryRow> rows;
        for (const Ref<TillShift>& shift : shiftsNewestFirst()) {
            if (shift != open)
                rows.append(ShiftHistoryRow::make(shift));
        }
        return rows;
    } catch (const StoreError& error) {
        setErrorMessage(error.description());
        return {};
    }
}

QList<Ref<CashMovement>> TillViewModel::movements(const Ref<TillShift>& shift)
{
    Q_ASSERT(shift);
    try {
        return m_context.fetch<CashMovement>(FetchDescriptor(CashMovement::Col::tillShift == shift)
                                                 .sortedBy(ascending(CashMovement::Col::timestamp)));
    } catch (const StoreError& error) {
        setErrorMessage(error.description());
        return {};
    }
}

ShiftFigures TillViewModel::figures(const Ref<TillShift>& shift)
{
    Q_ASSERT(shift);
    ShiftFigures figures;
    figures.openingFloat = shift->openingFloat();
    try {
        figures.cashSales = m_till.cashSalesTotal(shift);
        figures.accountCash = m_accounts.cashReceived(shift);
        figures.expectedCash = m_till.expectedCash(shift);
    } catch (const StoreError& error) {
        setErrorMessage(error.description());
    }
    return figures;
}

QString TillViewModel::sinceText(const TillShift& shift)
{
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    return QStringLiteral("Since ") +
           locale.toString(shift.openedAt().toLocalTime().time(), QLocale::ShortFormat);
}
