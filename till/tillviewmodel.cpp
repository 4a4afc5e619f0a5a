#include "till/tillviewmodel.h"

#include "clock/clock.h"
#include "money/currency.h"
#include "money/numberentry.h"
#include "records/customerpayment.h"
#include "records/payment.h"
#include "records/sale.h"
#include "records/user.h"
#include "money/rounding.h"
#include "till/tillerror.h"

#include <QLocale>

namespace {
// A blank float is the "0.00" its hint shows; a float of nothing is a real way to start a day.
NumberEntry floatEntry(const QString& text)
{
    return text.trimmed().isEmpty() ? NumberEntry{0.0, {}} : NumberEntry::money(text);
}

QString money(double amount)
{
    return Currency::format(amount, Currency::fixedSign);
}
} // namespace

ShiftHistoryRow ShiftHistoryRow::make(const ShiftHistory::Row& shift)
{
    ShiftHistoryRow row;
    row.key = shift.key;
    row.periodText = TillViewModel::periodText(shift.openedAt, shift.closedAt);
    row.cashierName = shift.cashierName;
    row.notes = shift.notes;
    const auto amountOrDash = [](std::optional<double> amount) {
        return amount ? money(*amount) : QStringLiteral("—");
    };
    row.expectedText = QStringLiteral("Expected ") + amountOrDash(shift.expectedCash);
    row.countedText = QStringLiteral("Counted ") + amountOrDash(shift.countedCash);
    const std::optional<double> variance = shift.variance;
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

ShiftHistoryRow ShiftHistoryRow::make(const TillShift& shift)
{
    ShiftHistory::Row row;
    row.key = {Record::secondsFromDate(shift.openedAt()), shift.idText()};
    row.openedAt = shift.openedAt();
    row.closedAt = shift.closedAt();
    const Ref<User> cashier = shift.cashier();
    row.cashierName = cashier ? cashier->name() : QString();
    row.expectedCash = shift.expectedCash();
    row.countedCash = shift.countedCash();
    row.variance = shift.variance();
    row.notes = shift.notes();
    return make(row);
}

TillViewModel::TillViewModel(TillService& till, AccountsService& accounts, ApprovalService& approvals,
                             ModelContext& context, SessionStore& session, QObject* parent)
    : ViewModel(parent)
    , m_till(till)
    , m_accounts(accounts)
    , m_approvals(approvals)
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
    const NumberEntry openingFloat = floatEntry(m_openingFloatText);
    if (!openingFloat.isValid()) {
        setErrorMessage(openingFloat.problem);
        return false;
    }
    Ref<TillShift> shift;
    if (!writing([&] { shift = m_till.openShift(m_session.currentUser(), *openingFloat.value); }))
        return false;
    // Told once the shift is saved, so that nothing a screen does in reply can make it look failed.
    m_session.setCurrentTillShift(shift);
    return true;
}

bool TillViewModel::recordCashMovement(const Ref<TillShift>& shift)
{
    Q_ASSERT(shift);
    setErrorMessage(std::nullopt);
    // Nothing typed is no amount at all, which the rule below refuses in its own words.
    const NumberEntry amount =
        m_payAmountText.trimmed().isEmpty() ? NumberEntry{0.0, {}} : NumberEntry::money(m_payAmountText);
    if (!amount.isValid()) {
        setErrorMessage(amount.problem);
        return false;
    }
    if (!(*amount.value > 0)) {
        setErrorMessage(TillError::describe(TillError::Case::invalidAmount));
        return false;
    }
    const bool saved = saveOrUndo(m_context, [&] {
        // Cash that isn't in the drawer can't go out of it; what a pay-out leaves is the count's to find.
        if (m_payType == CashMovementType::payOut
            && Rounding::toCents(*amount.value - m_till.expectedCash(shift)) > 0.005)
            throw TillError(TillErrorCase::payOutExceedsCash);
        auto movement = std::make_shared<CashMovement>();
        movement->setTillShift(shift);
        movement->setTypeRaw(CashMovementTypes::raw(m_payType));
        movement->setAmount(*amount.value);
        movement->setReason(m_payReason);
        movement->setPerformedBy(m_session.currentUser());
        movement->setTimestamp(Clock::now());
        m_context.insert(movement);
        if (m_payType == CashMovementType::payOut) {
            m_approvals.record(AuditAction::payOut, m_session.currentUser().get(), QString(), *amount.value,
                               QString(), m_payReason, QString());
        }
    });
    if (!saved)
        return false;
    setPayAmountText(QString());
    setPayReason(QString());
    return true;
}

bool TillViewModel::closeShift(const Ref<TillShift>& shift)
{
    Q_ASSERT(shift);
    setErrorMessage(std::nullopt);
    // A close can't be undone, so a count that was skipped or mistyped is never taken for 0:
    // it would stand as a shortage for good.
    const NumberEntry counted = NumberEntry::money(m_countedCashText);
    if (!counted.isValid()) {
        setErrorMessage(counted.problem);
        return false;
    }
    if (!writing([&] { m_till.closeShift(shift, *counted.value, m_closingNotes, m_session.currentUser()); }))
        return false;
    const Ref<TillShift> current = m_session.currentTillShift();
    if (current && current->id() == shift->id())
        m_session.setCurrentTillShift(nullptr);
    setCountedCashText(QString());
    setClosingNotes(QString());
    return true;
}

Ref<TillShift> TillViewModel::openShiftShown()
{
    try {
        return m_context.fetchFirst<TillShift>(
            FetchDescriptor(TillShift::Col::statusRaw == TillService::openStatus())
                .sortedBy(descending(TillShift::Col::openedAt)));
    } catch (const Refusal& error) {
        setErrorMessage(error.description());
        return nullptr;
    }
}

QList<ShiftHistoryRow> TillViewModel::historyPage(const std::optional<ShiftHistory::Key>& after, int limit)
{
    try {
        const Ref<TillShift> open = openShiftShown();
        const QList<ShiftHistory::Row> shifts =
            ShiftHistory(m_context).page(after, open ? open->id() : QUuid(), limit);
        QList<ShiftHistoryRow> rows;
        rows.reserve(shifts.size());
        for (const ShiftHistory::Row& shift : shifts)
            rows.append(ShiftHistoryRow::make(shift));
        return rows;
    } catch (const Refusal& error) {
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
    } catch (const Refusal& error) {
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
    } catch (const Refusal& error) {
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

QString TillViewModel::periodText(const QDateTime& openedAt, const std::optional<QDateTime>& closedAt)
{
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    const QString dateAndTime = QStringLiteral("MMM d, yyyy h:mm AP");
    const QDateTime opened = openedAt.toLocalTime();
    QString text = locale.toString(opened, dateAndTime);
    if (closedAt) {
        const QDateTime closed = closedAt->toLocalTime();
        text += QStringLiteral(" – ") +
                locale.toString(closed, closed.date() == opened.date() ? QStringLiteral("h:mm AP") : dateAndTime);
    }
    return text;
}
