#pragma once

#include "customers/accountsservice.h"
#include "customers/loyaltyservice.h"
#include "money/tolerances.h"
#include "records/appsettings.h"
#include "records/sale.h"
#include "records/tillshift.h"
#include "records/user.h"
#include "selling/cart.h"
#include "selling/paymentinput.h"
#include "selling/staffchecking.h"
#include "stock/inventoryservicing.h"
#include "store/modelcontext.h"

#include <QList>

// The one place where a sale comes into being: everything that can be checked is checked before
// anything is written, and the writing is one unit of work, saved once or undone whole.
class SalesService {
public:
    // Without a staff check, no line is ever stopped for want of who did it.
    SalesService(ModelContext& context, InventoryServicing& inventoryService,
                 StaffChecking* staffCheck = nullptr);

    double paymentTolerance() const { return m_paymentTolerance; }

    // Throws SalesError, StaffError, InventoryError, LoyaltyError or AccountError before anything is
    // written, or whatever writing the sale threw (InventoryError, StoreError): the sale is one unit of
    // work, so a failure leaves the store and the records in memory as they were, the receipt
    // sequence included. The cart is never touched, so a failed checkout can be tried again as it
    // stands. Cashier and shift may be null; settings must be the store's live record, as its
    // receipt sequence moves on.
    Ref<Sale> checkout(const Cart& cart, const QList<PaymentInput>& payments, const Ref<User>& cashier,
                       const Ref<TillShift>& tillShift, AppSettings& settings);

private:
    Ref<Sale> writeSale(const Cart& cart, const CartCalculation& calculation,
                        const QList<PaymentInput>& payments, const Ref<User>& cashier,
                        const Ref<TillShift>& tillShift, AppSettings& settings);
    void completeAppointment(const QUuid& appointmentID, const QString& invoiceNumber);

    ModelContext& m_context;
    InventoryServicing& m_inventoryService;
    StaffChecking* m_staffCheck;
    const double m_paymentTolerance = Tolerance::payment;
    AccountsService m_accounts;
    LoyaltyService m_loyalty;
};
