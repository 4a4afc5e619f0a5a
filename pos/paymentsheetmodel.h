#pragma once

#include "records/appsettings.h"
#include "records/customer.h"
#include "selling/paymentinput.h"
#include "viewmodel/viewmodel.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <functional>
#include <optional>

// What the payment sheet is shown, worked out from the cart by the workspace each time the cart
// changes while the sheet is open.
struct PaymentSheetInputs {
    double total = 0; // after points
    QString currencySymbol = QStringLiteral("₵");
    Ref<Customer> customer;
    double accountBalance = 0;
    std::optional<double> availableCredit; // absent: no limit
    Ref<AppSettings> settings;
    qint64 pointsRedeemed = 0;
    double pointsDiscount = 0;
    double discountable = 0; // the most points may take off
};

// The payment sheet: turns the finished cart into tenders for checkout, and is where points are
// redeemed, because only here is the customer asked. It writes nothing; checkout checks all of it
// again, and the sheet's own checks only give the message before the attempt. Money fields read
// en_US amounts ("1,250.00"); text that isn't a number is refused at its field, never taken for 0.
class PaymentSheetModel : public ViewModel {
    Q_OBJECT

public:
    enum class Mode { cash, card, mobileMoney, onAccount, split };
    struct SplitRow {
        QUuid id = QUuid::createUuid();
        PaymentMethodType method = PaymentMethodType::cash;
        QString amountText;
        QString tenderedText; // cash rows only; empty counts as tendered in full
    };
    struct Actions {
        std::function<void(qint64 points)> redeemPoints;
        std::function<void(const QList<PaymentInput>& payments)> complete;
        std::function<void()> cancel;
    };

    PaymentSheetModel(PaymentSheetInputs inputs, Actions actions, QObject* parent = nullptr);

    const PaymentSheetInputs& inputs() const { return m_inputs; }
    // The cart moved on (points redeemed or removed): totals follow, what was typed stays.
    void setInputs(const PaymentSheetInputs& inputs);

    static QString modeTitle(Mode mode);
    Mode mode() const { return m_mode; }
    void setMode(Mode mode) { assign(m_mode, mode); }
    QString cashTenderedText() const { return m_cashTenderedText; }
    void setCashTenderedText(const QString& text) { assign(m_cashTenderedText, text); }
    QString referenceText() const { return m_referenceText; }
    void setReferenceText(const QString& text) { assign(m_referenceText, text); }

    // Cash.
    QList<double> quickCashOptions() const;
    // Writes the option into the field as the button shows it.
    void chooseQuickCash(double amount);
    // The field's refusal, under it; absent while blank or a number.
    std::optional<QString> cashTenderedProblem() const;
    double changeDue() const;
    QString changeDueText() const;
    QString fullAmountText() const; // "Full amount of ₵12.00 will be charged."

    // On account.
    std::optional<QString> onAccountProblem() const;
    QString onAccountNote() const; // "₵12.00 will be added to Kofi's account."
    QString owesNowText() const;
    QString willOweText() const;
    QString creditLimitText() const;

    // Split.
    const QList<SplitRow>& splitRows() const { return m_splitRows; }
    void addSplitRow(PaymentMethodType method = PaymentMethodType::cash);
    void removeSplitRow(const QUuid& id);
    void setSplitMethod(const QUuid& id, PaymentMethodType method);
    void setSplitAmountText(const QUuid& id, const QString& text);
    void setSplitTenderedText(const QUuid& id, const QString& text);
    std::optional<QString> splitAmountProblem(const QUuid& id) const;
    std::optional<QString> splitTenderedProblem(const QUuid& id) const;
    double splitTotal() const;
    double remaining() const { return m_inputs.total - splitTotal(); }

    // Points.
    bool showsPoints() const;
    QString pointsHeader() const;             // "Kofi has 240 points"
    std::optional<QString> pointsWorth() const; // "worth ₵12.00"
    std::optional<QString> redeemingText() const; // "Redeeming 100 points: ₵5.00 before tax"
    qint64 mostRedeemable() const;
    // What the points part says when nothing is redeemed yet, line by line.
    QStringList pointsOffer() const;
    bool offersRedeeming() const; // the field, "Use {most}" and "Redeem Points"
    QString useMostText() const;
    QString pointsText() const { return m_pointsText; }
    void setPointsText(const QString& text) { assign(m_pointsText, text); }
    bool redeem();
    bool useMost();
    void removePoints();

    // The reminder to ask about points, once for each time the sheet opens.
    bool showPointsReminder() const { return m_showPointsReminder; }
    QString pointsReminderTitle() const;
    QString pointsReminderText() const;
    // "Redeem Points": back to the sheet.
    void closePointsReminder();
    // "Complete Without Points".
    bool completeWithoutPoints();

    // Checks, then hands the tenders over; false with the reason in errorMessage, or while the
    // reminder is up.
    bool complete();
    void cancel();

Q_SIGNALS:
    void inputsChanged();
    void pointsReminderChanged();

private:
    SplitRow* row(const QUuid& id);
    const SplitRow* row(const QUuid& id) const;
    bool remindAboutPoints() const;
    std::optional<QList<PaymentInput>> tenders();
    QString money(double amount) const;
    QString customerName() const;

    PaymentSheetInputs m_inputs;
    Actions m_actions;
    Mode m_mode = Mode::cash;
    QString m_cashTenderedText;
    QString m_referenceText;
    QList<SplitRow> m_splitRows;
    QString m_pointsText;
    bool m_pointsReminderDismissed = false;
    bool m_showPointsReminder = false;
};
