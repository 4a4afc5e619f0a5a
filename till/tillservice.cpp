#include "till/tillservice.h"

#include "clock/clock.h"
#include "customers/accountsservice.h"
#include "money/rounding.h"
#include "records/enums.h"
#include "store/unitofwork.h"
#include "till/tillerror.h"

TillService::TillService(ModelContext& context)
    : m_context(context)
{
}

Ref<TillShift> TillService::currentOpenShift()
{
    return m_context.fetchFirst<TillShift>(FetchDescriptor(TillShift::Col::statusRaw == openStatus()));
}

Ref<TillShift> TillService::openShift(const Ref<User>& cashier, double openingFloat)
{
    return performUnitOfWork(m_context, [&] {
        if (currentOpenShift())
            throw TillError(TillError::Case::shiftAlreadyOpen);
        // NaN fails the comparison too, so it is refused with the negatives.
        if (!(openingFloat >= 0))
            throw TillError(TillError::Case::invalidAmount);

        auto shift = std::make_shared<TillShift>();
        shift->setCashier(cashier);
        shift->setOpeningFloat(openingFloat);
        shift->setOpenedAt(Clock::now());
        shift->setStatusRaw(openStatus());
        m_context.insert(shift);
        return shift;
    });
}

double TillService::cashSalesTotal(const Ref<TillShift>& shift)
{
    Q_ASSERT(shift);
    // Driven by Sale(tillShift, timestamp), then Payment(sale): a shift's few payments. "+methodRaw"
    // keeps SQLite off Payment(methodRaw, timestamp), which holds every cash payment of the store.
    // An unknown method reads as cash, so the test is "none of the others".
    QVariantList bindings{shift->idText(), SaleStatuses::raw(SaleStatus::voided)};
    for (PaymentMethodType method : PaymentMethodTypes::all) {
        if (method != PaymentMethodType::cash)
            bindings.append(PaymentMethodTypes::raw(method));
    }
    const double total =
        m_context
            .scalar(QStringLiteral(
                        "SELECT TOTAL(\"amount\") FROM \"Payment\" WHERE \"sale\" IN (SELECT \"id\" FROM "
                        "\"Sale\" WHERE \"tillShift\" = ? AND \"statusRaw\" != ?) AND +\"methodRaw\" NOT "
                        "IN (?, ?, ?, ?)"),
                    bindings)
            .toDouble();
    return Rounding::toCents(total);
}

double TillService::expectedCash(const Ref<TillShift>& shift)
{
    Q_ASSERT(shift);
    // Anything not a pay-out counts as a pay-in, as CashMovementTypes::fromRaw reads it.
    const double movements =
        m_context
            .scalar(
                QStringLiteral("SELECT TOTAL(CASE WHEN \"typeRaw\" = ? THEN -\"amount\" ELSE \"amount\" END) "
                               "FROM \"CashMovement\" WHERE \"tillShift\" = ?"),
                {CashMovementTypes::raw(CashMovementType::payOut), shift->idText()})
            .toDouble();
    const double accountCash = AccountsService(m_context).cashReceived(shift);
    return Rounding::toCents(shift->openingFloat() + cashSalesTotal(shift) + accountCash + movements);
}

Ref<TillShift> TillService::closeShift(const Ref<TillShift>& shift, double countedCash, const QString& notes,
                                       const Ref<User>& closedBy)
{
    Q_ASSERT(shift);
    performUnitOfWork(m_context, [&] {
        const double expected = expectedCash(shift);
        shift->setExpectedCash(expected);
        shift->setCountedCash(countedCash);
        shift->setVariance(Rounding::toCents(countedCash - expected));
        shift->setNotes(notes);
        shift->setClosedAt(Clock::now());
        shift->setClosedBy(closedBy);
        shift->setStatusRaw(closedStatus());
    });
    return shift;
}
