#pragma once

#include "records/enums.h"
#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_SALE_FIELDS(X, C) \
    X(C, Text, invoiceNumber, setInvoiceNumber, "") \
    X(C, Date, timestamp, setTimestamp, ) \
    X(C, Text, statusRaw, setStatusRaw, "completed") \
    X(C, Number, subtotal, setSubtotal, 0) \
    X(C, Number, lineDiscountTotal, setLineDiscountTotal, 0) \
    X(C, Number, saleDiscount, setSaleDiscount, 0) \
    X(C, Number, taxTotal, setTaxTotal, 0) \
    X(C, Number, total, setTotal, 0) \
    X(C, Integer, pointsEarned, setPointsEarned, 0) \
    X(C, Integer, pointsRedeemed, setPointsRedeemed, 0) \
    X(C, Number, pointsDiscount, setPointsDiscount, 0) \
    X(C, Integer, pointsReversed, setPointsReversed, 0) \
    X(C, Integer, pointsReturned, setPointsReturned, 0) \
    X(C, OptUuid, refundOfSaleID, setRefundOfSaleID, ) \
    X(C, OptText, refundReason, setRefundReason, ) \
    X(C, Text, notes, setNotes, "") \
    X(C, OptDate, voidedAt, setVoidedAt, ) \
    X(C, OptText, voidReason, setVoidReason, ) \
    X(C, OptText, voidedByName, setVoidedByName, ) \
    X(C, ToOne, cashier, setCashier, User) \
    X(C, ToOne, customer, setCustomer, Customer) \
    X(C, ToOne, tillShift, setTillShift, TillShift) \
    X(C, ToMany, items, _, SaleItem, sale, Cascade) \
    X(C, ToMany, payments, _, Payment, sale, Cascade)
// clang-format on

class Sale final : public Record {
    TALLY_RECORD(Sale, TALLY_SALE_FIELDS)

public:
    static Ref<Sale> make(const QString& invoiceNumber, const Ref<User>& cashier,
                          const Ref<Customer>& customer, const Ref<TillShift>& tillShift);

    std::optional<SaleStatus> status() const { return SaleStatuses::fromRaw(statusRaw()); }
    void setStatus(SaleStatus status) { setStatusRaw(SaleStatuses::raw(status)); }
    bool isRefund() const { return refundOfSaleID().has_value(); }
    // An unknown status is not voided, so the till still counts the sale.
    bool isVoided() const { return status() == SaleStatus::voided; }
    double discountTotal() const { return lineDiscountTotal() + saleDiscount() + pointsDiscount(); }
};
