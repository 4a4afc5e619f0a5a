#pragma once

#include "records/recordsfwd.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

// Everything a receipt shows, taken once from a sale and the store's settings. The printed page,
// the PDF, the preview and the message text all read this value; nothing after it touches a record.
struct ReceiptData {
    struct Line {
        QString name;
        double quantity = 0;
        double unitPrice = 0;
        double lineTotal = 0;
        QString unitSymbol;

        QString quantityText() const;
    };

    struct PaymentLine {
        QString method;
        double amount = 0;
        double tenderedAmount = 0;
        double changeGiven = 0;
    };

    struct TaxLine {
        QString label;
        double amount = 0;
    };

    struct TaxRow {
        QString label;
        double value = 0;
        bool isTotal = false;
    };

    struct LoyaltyRow {
        QString label;
        QString value;
    };

    QString businessName;
    QString addressLine;
    QString phoneNumber;
    QString invoiceNumber;
    QDateTime timestamp;
    QString cashierName;
    std::optional<QString> customerName;
    QList<Line> lines;
    double subtotal = 0;
    double discountTotal = 0;
    double taxTotal = 0;
    QList<TaxLine> taxLines;
    double total = 0;
    QList<PaymentLine> payments;
    QString footer;
    QString currencySymbol;
    bool isRefund = false;
    std::optional<QString> voidNote;
    std::optional<QByteArray> logoPNG;
    std::optional<double> accountBalance;
    qint64 pointsRedeemed = 0;
    double pointsDiscount = 0;
    qint64 pointsEarned = 0;
    std::optional<qint64> pointsBalance;

    // Without the two balances, which only the caller holding the services can add.
    static ReceiptData from(const Sale& sale, const AppSettings& settings);
    // The note of a voided sale, worked out again on every build so that a reprint carries it.
    ReceiptData withVoidNote(const Sale& sale) const;

    QList<TaxRow> taxRows() const;
    QList<LoyaltyRow> loyaltyRows() const;
};
