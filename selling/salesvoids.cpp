// SalesService: voids, which change the one row and add none.

#include "selling/salesservice.h"

#include "clock/clock.h"
#include "records/product.h"
#include "store/unitofwork.h"

namespace {

bool isAdmin(const User* user)
{
    return user && user->role() == UserRole::admin;
}

} // namespace

std::optional<SalesError> SalesService::voidProblem(const Sale& sale, const User* by, const User* approvedBy,
                                                    bool cashiersMayVoid, const TillShift* openShift)
{
    if (sale.isVoided())
        return SalesError::voidAlreadyVoided();
    if (sale.isRefund())
        return SalesError::voidRefundRow();
    if (!isAdmin(by) && !isAdmin(approvedBy) && !cashiersMayVoid)
        return SalesError::voidNeedsAdmin();
    // An unknown status counts as completed, like everywhere a total is made.
    const std::optional<SaleStatus> status = sale.status();
    if (status && *status != SaleStatus::completed)
        return SalesError::voidHasRefunds();
    for (const Ref<SaleItem>& item : sale.items()) {
        if (item->returnedQuantity() > 0)
            return SalesError::voidHasRefunds();
    }
    // Only the till open now: the clock plays no part.
    const Ref<TillShift> shift = sale.tillShift();
    if (!openShift || !shift || shift->id() != openShift->id())
        return SalesError::voidNotThisTill();
    return std::nullopt;
}

void SalesService::voidSale(const Ref<Sale>& sale, const QString& reason, const Ref<User>& by,
                            const Ref<User>& approvedBy, bool cashiersMayVoid,
                            const Ref<TillShift>& openShift)
{
    Q_ASSERT(sale);
    if (const std::optional<SalesError> problem =
            voidProblem(*sale, by.get(), approvedBy.get(), cashiersMayVoid, openShift.get()))
        throw *problem;
    const QString trimmed = reason.trimmed();
    if (trimmed.isEmpty())
        throw SalesError::voidNeedsReason();

    performUnitOfWork(m_context, [&] {
        // The full quantity of every line: voidProblem made sure nothing was returned.
        for (const Ref<SaleItem>& item : sale->items()) {
            if (const Ref<Product> product = item->product())
                m_inventoryService.restockForVoid(product, item->quantity(), sale, by);
        }
        m_loyalty.applyVoid(sale, by);
        QString voidedBy = by ? by->name() : QStringLiteral("—");
        if (approvedBy)
            voidedBy += QStringLiteral(" (approved by %1)").arg(approvedBy->name());
        sale->setStatus(SaleStatus::voided);
        sale->setVoidedAt(Clock::now());
        sale->setVoidReason(trimmed);
        sale->setVoidedByName(voidedBy);
    });
}
