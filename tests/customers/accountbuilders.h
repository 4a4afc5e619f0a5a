#pragma once

#include "clock/clock.h"
#include "records/customer.h"
#include "records/payment.h"
#include "records/sale.h"
#include "records/tillshift.h"
#include "store/modelcontext.h"
#include "support/refusalof.h"

#include <QDateTime>

#include <optional>
#include <vector>

// A fixed local moment, so day counts and "today" never depend on when the suite runs.
inline QDateTime localAt(int year, int month, int day, int hour = 12, int minute = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute));
}

struct NewCustomer {
    QString name = QStringLiteral("Kofi");
    bool allowCredit = true;
    double creditLimit = 0;
    qint64 points = 0;
};

inline Ref<Customer> addCustomer(ModelContext& context, const NewCustomer& fields = {})
{
    auto customer = std::make_shared<Customer>();
    customer->setName(fields.name);
    customer->setAllowCredit(fields.allowCredit);
    customer->setCreditLimit(fields.creditLimit);
    customer->setLoyaltyPoints(fields.points);
    context.insert(customer);
    context.save();
    return customer;
}

struct Tender {
    PaymentMethodType method = PaymentMethodType::cash;
    double amount = 0;
    double tendered = 0; // 0: the amount itself
};

struct NewSale {
    QString invoice = {}; // empty: a number of its own, as invoice numbers are unique
    Ref<Customer> customer = nullptr;
    Ref<TillShift> shift = nullptr;
    std::optional<QDateTime> at = std::nullopt; // absent: now
    std::vector<Tender> tenders = {};
    QString method = {}; // raw text that bypasses the enumeration, for the first tender
};

// Saved, with one Payment per tender.
inline Ref<Sale> addSale(ModelContext& context, const NewSale& fields)
{
    const QString invoice = fields.invoice.isEmpty()
                                ? QStringLiteral("INV-") + QUuid::createUuid().toString(QUuid::Id128).left(12)
                                : fields.invoice;
    const Ref<Sale> sale = Sale::make(invoice, nullptr, fields.customer, fields.shift);
    sale->setTimestamp(fields.at.value_or(Clock::now()));
    context.insert(sale);
    double total = 0;
    for (const Tender& tender : fields.tenders) {
        const double tendered = tender.tendered != 0 ? tender.tendered : tender.amount;
        const Ref<Payment> payment =
            Payment::make(tender.method, tender.amount, tendered, tendered - tender.amount, QString());
        if (&tender == &fields.tenders.front() && !fields.method.isEmpty())
            payment->setMethodRaw(fields.method);
        payment->setSale(sale);
        context.insert(payment);
        total += tender.amount;
    }
    sale->setTotal(total);
    context.save();
    return sale;
}

inline Ref<TillShift> addShift(ModelContext& context, double openingFloat = 0)
{
    auto shift = std::make_shared<TillShift>();
    shift->setOpeningFloat(openingFloat);
    context.insert(shift);
    context.save();
    return shift;
}
