#pragma once

#include "money/rounding.h"
#include "records/records.h"
#include "store/unitofwork.h"

#include <QDateTime>

#include <utility>

// Products, customers and sales written straight into a store, each sale with totals its own lines
// add up to, for screens that read what checkout leaves without going through it. Header only.
struct StoredSales {
    struct NewProduct {
        const char* name = "Soap";
        double stock = 100;
        double reorderLevel = 5;
        SellingUnit unit = SellingUnit::each;
        ProductType type = ProductType::inventory;
        bool isActive = true;
    };
    // Tax on top of the price; a negative quantity is a refund's line.
    struct Line {
        Ref<Product> product;
        double quantity = 1, price = 10, cost = 0, taxRate = 0;
    };
    struct NewSale {
        QDateTime when;
        QList<Line> lines;
        QList<std::pair<PaymentMethodType, double>> payments;
        Ref<Customer> customer = nullptr;
        Ref<Sale> refundOf = nullptr;
        bool voided = false;
    };

    Ref<Product> product(const NewProduct& fields)
    {
        auto made = std::make_shared<Product>();
        made->setName(QString::fromUtf8(fields.name));
        made->setStockQuantity(fields.stock);
        made->setReorderLevel(fields.reorderLevel);
        made->setSellingUnit(fields.unit);
        made->setProductType(fields.type);
        made->setIsActive(fields.isActive);
        return saved(made);
    }

    Ref<Customer> customer(const char* name)
    {
        auto made = std::make_shared<Customer>();
        made->setName(QString::fromUtf8(name));
        return saved(made);
    }

    Ref<Sale> sale(const NewSale& fields)
    {
        return performUnitOfWork(context, [&] {
            const Ref<Sale> made = Sale::make(QUuid::createUuid().toString(), nullptr, fields.customer, nullptr);
            made->setTimestamp(fields.when);
            context.insert(made);
            double subtotal = 0, tax = 0, total = 0;
            for (const Line& line : fields.lines) {
                const Ref<SaleItem> item =
                    SaleItem::make(line.product, line.quantity, line.price, line.cost, line.taxRate, 0, false);
                item->setSale(made);
                context.insert(item);
                subtotal += item->grossAmount();
                tax += item->taxAmount();
                total += item->lineTotal();
            }
            made->setSubtotal(Rounding::toCents(subtotal));
            made->setTaxTotal(Rounding::toCents(tax));
            made->setTotal(Rounding::toCents(total));
            for (const auto& [method, amount] : fields.payments) {
                const Ref<Payment> payment = Payment::make(method, amount, amount, 0, QString());
                payment->setSale(made);
                context.insert(payment);
            }
            if (fields.refundOf) {
                made->setRefundOfSaleID(fields.refundOf->id());
                made->setStatus(SaleStatus::refunded);
            }
            if (fields.voided) {
                made->setStatus(SaleStatus::voided);
                made->setVoidedAt(fields.when);
            }
            return made;
        });
    }

    template <class T> Ref<T> saved(Ref<T> record)
    {
        performUnitOfWork(context, [&] { context.insert(record); });
        return record;
    }

    ModelContext& context;
};
