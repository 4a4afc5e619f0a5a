#pragma once

#include "records/enums.h"
#include "store/modelcontext.h"
#include "till/tillviewmodel.h"
#include "viewmodel/viewmodel.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

// One cash movement of a shift as its detail lists it.
struct ShiftMovementLine {
    QDateTime timestamp;
    CashMovementType type = CashMovementType::payIn;
    double amount = 0; // as stored, always positive
    QString reason;
    QString performedBy; // "" when nobody was signed in, or the account is gone

    double signedAmount() const { return type == CashMovementType::payOut ? -amount : amount; }
};

// What the detail of a shift shows. The cash figures are those frozen at the close: a sale voided
// since changes the counts below, never what the drawer was expected to hold that day.
struct ShiftDetail {
    QUuid shiftID;
    QString title;      // "Shift of Jun 3, 2025"
    QString periodText; // as in the history list
    QString openedText; // "Opened by Esi at 9:05 AM"
    QString closedText; // "Closed by Kofi at 5:30 PM", "Still open"
    double openingFloat = 0;
    std::optional<double> expectedCash;
    std::optional<double> countedCash;
    std::optional<double> variance;
    QString varianceText; // as in the history list
    ShiftHistoryRow::Tone tone = ShiftHistoryRow::Tone::neutral;
    double paidIn = 0;
    double paidOut = 0;
    QList<ShiftMovementLine> movements; // oldest first
    qint64 sales = 0;   // sales that stand, refunds and voided ones left out
    qint64 refunds = 0; // refunds that stand
    qint64 voided = 0;  // sales and refunds voided since
    QString notes;
};

// The detail of one shift chosen in "Shift History": who opened and closed it and when, its cash,
// its pay-ins and pay-outs, and how many sales it took. Read-only.
class ShiftDetailModel : public ViewModel {
    Q_OBJECT

public:
    static QString movementsTitle() { return QStringLiteral("Paid In / Paid Out"); }
    static QString noMovementsMessage() { return QStringLiteral("No cash was paid in or out."); }

    explicit ShiftDetailModel(ModelContext& context, QObject* parent = nullptr);

    // Absent when the shift is gone or the store can't be read, with the reason in errorMessage.
    std::optional<ShiftDetail> detail(const QUuid& shiftID);

private:
    ModelContext& m_context;
};
