#pragma once

#include "access/approvalservice.h"
#include "customers/accountsservice.h"
#include "records/cashmovement.h"
#include "records/enums.h"
#include "records/tillshift.h"
#include "startup/sessionstore.h"
#include "store/modelcontext.h"
#include "till/shifthistory.h"
#include "till/tillservice.h"
#include "viewmodel/viewmodel.h"

#include <QString>

#include <optional>

// One closed shift in "Shift History", in finished text.
struct ShiftHistoryRow {
    enum class Tone { neutral, balanced, over, shortOfCash }; // no colour, green, blue, red

    ShiftHistory::Key key;
    QString periodText;  // "Jun 3, 2025 9:05 AM – 5:30 PM"
    QString cashierName;
    QString expectedText; // "Expected ₵150.00"
    QString countedText;  // "Counted ₵150.00"
    QString varianceText; // "Balanced", "Over ₵1.00", "Short ₵0.01", or "" without a variance
    Tone tone = Tone::neutral;
    QString notes;

    QUuid shiftID() const { return QUuid(key.id); }

    static ShiftHistoryRow make(const ShiftHistory::Row& shift);
    static ShiftHistoryRow make(const TillShift& shift);
};

// The figures of the open shift, worked out on each display until the close freezes them.
struct ShiftFigures {
    double openingFloat = 0;
    double cashSales = 0;
    double accountCash = 0; // cash taken for customers' accounts
    double expectedCash = 0;
};

// The till screen: opening with a float, cash paid in and out, closing against the count, and the
// shift history. The after-close backup is not part of it yet. Reads that fail put their reason
// in errorMessage without clearing it when they succeed: a refresh after a failed action must not
// wipe that action's message.
class TillViewModel : public ViewModel {
    Q_OBJECT

public:
    static QString openTitle() { return QStringLiteral("Open Till"); }
    static QString openMessage()
    {
        return QStringLiteral("Enter the opening cash float to start a new shift.");
    }
    static QString openingFloatTitle() { return QStringLiteral("Opening Float"); }
    static QString moneyHint() { return QStringLiteral("0.00"); }
    static QString openCardTitle() { return QStringLiteral("Till Open"); }
    static QString cashSalesTitle() { return QStringLiteral("Cash Sales"); }
    static QString expectedCashTitle() { return QStringLiteral("Expected Cash"); }
    static QString movementTitle() { return QStringLiteral("Paid In / Paid Out"); }
    static QString amountTitle() { return QStringLiteral("Amount"); }
    static QString reasonTitle() { return QStringLiteral("Reason"); }
    static QString closeTitle() { return QStringLiteral("Close Till"); }
    static QString countedCashTitle() { return QStringLiteral("Counted Cash"); }
    static QString notesTitle() { return QStringLiteral("Notes"); }
    static QString historyTitle() { return QStringLiteral("Shift History"); }
    static QString noHistoryMessage() { return QStringLiteral("No closed shifts yet."); }

    TillViewModel(TillService& till, AccountsService& accounts, ApprovalService& approvals, ModelContext& context,
                  SessionStore& session, QObject* parent = nullptr);

    QString openingFloatText() const { return m_openingFloatText; }
    void setOpeningFloatText(const QString& text) { assign(m_openingFloatText, text); }
    QString payAmountText() const { return m_payAmountText; }
    void setPayAmountText(const QString& text) { assign(m_payAmountText, text); }
    QString payReason() const { return m_payReason; }
    void setPayReason(const QString& text) { assign(m_payReason, text); }
    CashMovementType payType() const { return m_payType; }
    void setPayType(CashMovementType type) { assign(m_payType, type); }
    QString countedCashText() const { return m_countedCashText; }
    void setCountedCashText(const QString& text) { assign(m_countedCashText, text); }
    QString closingNotes() const { return m_closingNotes; }
    void setClosingNotes(const QString& text) { assign(m_closingNotes, text); }
    std::optional<QString> backupMessage() const { return m_backupMessage; }
    void setBackupMessage(const std::optional<QString>& message);

    // Each returns true on success; otherwise errorMessage says why and the store and the records
    // in memory are as they were, so the same action can be tried again. Money fields take what
    // NumberEntry reads; other text is refused with its message, never taken for 0. A blank float
    // is 0, as its hint shows; a blank count is refused.
    bool openShift();
    bool recordCashMovement(const Ref<TillShift>& shift);
    bool closeShift(const Ref<TillShift>& shift);

    // The newest shift that is open, as the screen's list finds it; absent when none is.
    Ref<TillShift> openShiftShown();
    // The shifts other than the open one shown, newest first, a page at a time: up to `limit`
    // after `after`, or from the newest without it.
    QList<ShiftHistoryRow> historyPage(const std::optional<ShiftHistory::Key>& after = std::nullopt,
                                       int limit = ShiftHistory::pageSize);
    QList<Ref<CashMovement>> movements(const Ref<TillShift>& shift);
    ShiftFigures figures(const Ref<TillShift>& shift);
    // "Since 9:05 AM"
    static QString sinceText(const TillShift& shift);
    // "Jun 3, 2025 9:05 AM – 5:30 PM", with the closing date too when the shift ran past midnight.
    static QString periodText(const QDateTime& openedAt, const std::optional<QDateTime>& closedAt);

Q_SIGNALS:
    void backupMessageChanged();
    // A save or rollback touched shifts, movements, sales or account payments: figures are stale.
    void tillChanged();

private:
    TillService& m_till;
    AccountsService& m_accounts;
    ApprovalService& m_approvals;
    ModelContext& m_context;
    SessionStore& m_session;
    QString m_openingFloatText;
    QString m_payAmountText;
    QString m_payReason;
    CashMovementType m_payType = CashMovementType::payIn;
    QString m_countedCashText;
    QString m_closingNotes;
    std::optional<QString> m_backupMessage;
};
