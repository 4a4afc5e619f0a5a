#include "till/shiftdetailmodel.h"

#include "records/sale.h"
#include "records/tillshift.h"
#include "records/user.h"
#include "store/record.h"

#include <QLocale>

namespace {
const QLocale& usLocale()
{
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    return locale;
}

QString timeText(const QDateTime& moment)
{
    return usLocale().toString(moment.toLocalTime().time(), QLocale::ShortFormat);
}

// "by Esi at 9:05 AM", or "at 9:05 AM" without anyone to name.
QString byAndAt(const Ref<User>& who, const QDateTime& moment)
{
    const QString at = QStringLiteral("at ") + timeText(moment);
    return who && !who->name().isEmpty() ? QStringLiteral("by %1 %2").arg(who->name(), at) : at;
}
} // namespace

ShiftDetailModel::ShiftDetailModel(ModelContext& context, QObject* parent)
    : ViewModel(parent)
    , m_context(context)
{
}

std::optional<ShiftDetail> ShiftDetailModel::detail(const QUuid& shiftID)
{
    return reading(std::optional<ShiftDetail>(), [&]() -> std::optional<ShiftDetail> {
        const Ref<TillShift> shift = m_context.find<TillShift>(shiftID);
        if (!shift)
            return std::nullopt;
        ShiftDetail detail;
        detail.shiftID = shiftID;
        detail.title = QStringLiteral("Shift of ") +
                       usLocale().toString(shift->openedAt().toLocalTime().date(), QStringLiteral("MMM d, yyyy"));
        detail.periodText = TillViewModel::periodText(shift->openedAt(), shift->closedAt());
        detail.openedText = QStringLiteral("Opened ") + byAndAt(shift->cashier(), shift->openedAt());
        const std::optional<QDateTime> closedAt = shift->closedAt();
        detail.closedText = closedAt ? QStringLiteral("Closed ") + byAndAt(shift->closedBy(), *closedAt)
                                     : QStringLiteral("Still open");
        detail.openingFloat = shift->openingFloat();
        detail.expectedCash = shift->expectedCash();
        detail.countedCash = shift->countedCash();
        detail.variance = shift->variance();
        const ShiftHistoryRow row = ShiftHistoryRow::make(*shift);
        detail.varianceText = row.varianceText;
        detail.tone = row.tone;
        detail.notes = shift->notes();

        detail.movements = m_context.rows<ShiftMovementLine>(
            QStringLiteral("SELECT m.timestamp, m.typeRaw, m.amount, m.reason, u.name FROM CashMovement m "
                           "LEFT JOIN User u ON u.id = m.performedBy WHERE m.tillShift = ? "
                           "ORDER BY m.timestamp, m.id"),
            {shift->idText()}, [](const SqliteStatement& statement) {
                return ShiftMovementLine{Record::dateFromSeconds(statement.real(0)),
                                         CashMovementTypes::fromRaw(statement.text(1)), statement.real(2),
                                         statement.text(3), statement.text(4)};
            });
        for (const ShiftMovementLine& movement : detail.movements)
            (movement.type == CashMovementType::payOut ? detail.paidOut : detail.paidIn) += movement.amount;

        // One pass over the shift's sales on the Sale(tillShift, timestamp) index.
        const QString voided = SaleStatuses::raw(SaleStatus::voided);
        m_context.forEachRow(
            QStringLiteral("SELECT TOTAL(refundOfSaleID IS NULL AND statusRaw != ?), "
                           "TOTAL(refundOfSaleID IS NOT NULL AND statusRaw != ?), TOTAL(statusRaw = ?) "
                           "FROM Sale WHERE tillShift = ?"),
            {voided, voided, voided, shift->idText()}, [&](const SqliteStatement& statement) {
                detail.sales = statement.integer(0);
                detail.refunds = statement.integer(1);
                detail.voided = statement.integer(2);
            });
        return detail;
    });
}
