#pragma once

#include "customers/accountsservice.h"
#include "customers/loyaltyservice.h"
#include "money/tolerances.h"
#include "records/appsettings.h"
#include "records/heldsale.h"
#include "records/sale.h"
#include "records/saleitem.h"
#include "records/tillshift.h"
#include "records/user.h"
#include "selling/cart.h"
#include "selling/paymentinput.h"
#include "selling/refundentry.h"
#include "selling/saleserror.h"
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

    // Refunds. The discount per unit carries the line's share of the sale discount and of the
    // points, as checkout stored it; none of these round.
    static double unitDiscount(const SaleItem& item);
    static RefundParts refundParts(const SaleItem& item, double quantity);
    // The one price of a refund, rounded once over the whole: the screen's amount and the
    // approval's text alike.
    static double refundAmount(const QList<RefundEntry>& entries);
    // Writes the refund row with its lines, stock and payment, and updates the original's returned
    // quantities, status and points, as one unit of work (or part of the caller's). Checks
    // nothing: the refund screen has. Throws InventoryError or StoreError, with everything undone.
    Ref<Sale> writeRefund(const Ref<Sale>& originalSale, const QList<RefundEntry>& itemsToReturn,
                          const QString& reason, const Ref<User>& cashier, const Ref<TillShift>& tillShift,
                          PaymentMethodType refundMethod, AppSettings& settings);

    // Why the sale can't be voided, first problem first; nothing when it can. Reads only.
    static std::optional<SalesError> voidProblem(const Sale& sale, const User* by, const User* approvedBy,
                                                 bool cashiersMayVoid, const TillShift* openShift);
    // Puts every line back in stock, unwinds the points and marks the sale voided, as one unit of
    // work (or part of the caller's): a failure leaves no trace. Throws SalesError, InventoryError
    // or StoreError.
    void voidSale(const Ref<Sale>& sale, const QString& reason, const Ref<User>& by,
                  const Ref<User>& approvedBy, bool cashiersMayVoid, const Ref<TillShift>& openShift);

    // Parks the cart as one unit of work. Without a sequence the hold is numbered one past every
    // hold ever made, so numbers aren't reused. Throws SalesError::emptyCart or StoreError.
    Ref<HeldSale> hold(const Cart& cart, const Ref<User>& cashier, const QString& note,
                       std::optional<qint64> sequence = std::nullopt);
    // The cart again, with today's prices where no price was agreed; lines whose product has since
    // been deleted are dropped. Reads only: the caller marks the hold recalled.
    static Cart recall(const HeldSale& held);

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
