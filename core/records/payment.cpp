#include "records/payment.h"

#include "records/records.h"

TALLY_RECORD_IMPL(Payment, TALLY_PAYMENT_FIELDS)

Ref<Payment> Payment::make(PaymentMethodType method, double amount, double tenderedAmount, double changeGiven,
                           const QString& reference)
{
    auto payment = std::make_shared<Payment>();
    payment->setMethodRaw(PaymentMethodTypes::raw(method));
    payment->setAmount(amount);
    payment->setTenderedAmount(tenderedAmount);
    payment->setChangeGiven(changeGiven);
    payment->setReference(reference);
    return payment;
}
