#include "records/sale.h"

#include "records/records.h"

TALLY_RECORD_IMPL(Sale, TALLY_SALE_FIELDS)

Ref<Sale> Sale::make(const QString& invoiceNumber, const Ref<User>& cashier, const Ref<Customer>& customer,
                     const Ref<TillShift>& tillShift)
{
    auto sale = std::make_shared<Sale>();
    sale->setInvoiceNumber(invoiceNumber);
    sale->setCashier(cashier);
    sale->setCustomer(customer);
    sale->setTillShift(tillShift);
    return sale;
}
