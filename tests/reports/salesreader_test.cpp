#include "reports/salesreader.h"

#include "records/records.h"
#include "reportbuilders.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

namespace {

class SalesReaderTest : public ::testing::Test {
protected:
    TestStore store;
    ModelContext& context = store.context();
    SalesReader reader{context};

    Ref<Category> drinks = store.saved(std::make_shared<Category>());
    Ref<Product> malta = newProduct(QStringLiteral("Malta"), drinks);
    Ref<Product> rice = newProduct(QStringLiteral("Rice"), nullptr);
    Ref<User> ama = store.saved(std::make_shared<User>());

    SalesReaderTest()
    {
        drinks->setName(QStringLiteral("Drinks"));
        ama->setName(QStringLiteral("Ama"));
        context.save();
    }

    Ref<Product> newProduct(const QString& name, const Ref<Category>& category)
    {
        auto product = std::make_shared<Product>();
        product->setName(name);
        product->setSku(name.toUpper());
        product->setCategory(category);
        product->setSellingUnit(SellingUnit::kg);
        product->setTaxRate(0.2);
        product->setCostPrice(3.3333);
        return store.saved(product);
    }

    Ref<Sale> newSale(const QDateTime& when, const QList<std::pair<Ref<Product>, double>>& lines,
                      const QList<std::pair<PaymentMethodType, double>>& payments = {})
    {
        const Ref<Sale> sale = store.saved(Sale::make(QUuid::createUuid().toString(), ama, nullptr, nullptr));
        sale->setTimestamp(when);
        double total = 0;
        for (const auto& [product, quantity] : lines) {
            // Prices and discounts whose sums are not exact in binary, so any change of arithmetic shows.
            const Ref<SaleItem> item = SaleItem::make(
                product, quantity, 10.01, product ? product->costPrice() : 0.7, 0.2, 0.333, false);
            item->setSale(sale);
            context.insert(item);
            total += item->lineTotal();
        }
        sale->setTotal(Rounding::toCents(total));
        for (const auto& [method, amount] : payments) {
            const Ref<Payment> payment = Payment::make(method, amount, amount, 0, QString());
            payment->setSale(sale);
            context.insert(payment);
        }
        return sale;
    }
};

} // namespace

TEST_F(SalesReaderTest, ReadsTheDaysSalesWithTheFiguresTheRecordsGive)
{
    const Ref<Sale> first = newSale(at(9, 8), {{malta, 2}, {rice, 0.75}, {malta, 1}},
                                    {{PaymentMethodType::mobileMoney, 20}, {PaymentMethodType::cash, 18.5}});
    first->setSaleDiscount(1.25);
    first->setPointsDiscount(0.5);
    first->setLineDiscountTotal(0.99);
    first->setSubtotal(37.54);
    first->setTaxTotal(7.31);
    const Ref<Sale> refund = newSale(at(9, 18), {{malta, -1}}, {{PaymentMethodType::cash, -12.01}});
    refund->setRefundOfSaleID(first->id());
    refund->setStatus(SaleStatus::refunded);
    refund->setCashier(nullptr);
    newSale(at(8, 23, 59), {{malta, 1}});
    newSale(at(10, 0), {{malta, 1}});
    context.save();

    const QList<ReportSale> sales = reader.sales(DayRange(march(9)));
    ASSERT_EQ(sales.size(), 2);
    const ReportSale& sale = sales[0];
    EXPECT_EQ(sale.timestamp, first->timestamp());
    EXPECT_EQ((std::vector<double>{sale.subtotal, sale.lineDiscountTotal, sale.saleDiscount, sale.pointsDiscount,
                                   sale.taxTotal, sale.total}),
              (std::vector<double>{37.54, 0.99, 1.25, 0.5, 7.31, first->total()}));
    EXPECT_FALSE(sale.isRefund || sale.voidedAt);
    ASSERT_NE(sale.cashier, nullptr);
    EXPECT_EQ(sale.cashier->name, QStringLiteral("Ama"));

    // Lines and payments in the order they were stored, each line to the last bit as the record has it.
    const QList<Ref<SaleItem>> items = first->items();
    ASSERT_EQ(sale.items.size(), items.size());
    for (qsizetype i = 0; i < items.size(); ++i) {
        SCOPED_TRACE(i);
        const ReportItem& read = sale.items[i];
        EXPECT_EQ((std::vector<double>{read.quantity, read.unitCostSnapshot, read.lineTotal(), read.taxAmount(),
                                       read.grossAmount(), read.taxBreakdown().at(0).amount}),
                  (std::vector<double>{items[i]->quantity(), items[i]->unitCostSnapshot(), items[i]->lineTotal(),
                                       items[i]->taxAmount(), items[i]->grossAmount(),
                                       items[i]->taxBreakdown().at(0).amount}));
        ASSERT_NE(read.product, nullptr);
        EXPECT_EQ(read.product->id, items[i]->product()->id());
    }
    EXPECT_EQ(sale.items[0].product->categoryName, QStringLiteral("Drinks"));
    const ReportProduct& read = *sale.items[1].product;
    EXPECT_EQ(read.name + u'|' + read.sku + u'|' + read.sellingUnitRaw, QStringLiteral("Rice|RICE|kg"));
    EXPECT_EQ(read.categoryName, std::nullopt);
    ASSERT_EQ(sale.payments.size(), 2);
    EXPECT_EQ(sale.payments[0].methodRaw, QStringLiteral("mobileMoney"));
    EXPECT_EQ(sale.payments[1].amount, 18.5);

    EXPECT_TRUE(sales[1].isRefund);
    EXPECT_EQ(sales[1].statusRaw, QStringLiteral("refunded"));
    EXPECT_EQ(sales[1].cashier, nullptr);
    EXPECT_EQ(sales[1].payments.at(0).amount, -12.01);
}

TEST_F(SalesReaderTest, ASaleVoidedInTheDaysLeadsTheListThoughRungUpBefore)
{
    const Ref<Sale> lateNight = newSale(at(8, 23), {{malta, 1}});
    lateNight->setStatus(SaleStatus::voided);
    lateNight->setVoidedAt(at(9, 0, 5));
    const Ref<Sale> sameDay = newSale(at(9, 10), {{rice, 1}});
    sameDay->setStatus(SaleStatus::voided);
    sameDay->setVoidedAt(at(9, 10, 5));
    const Ref<Sale> voidedBefore = newSale(at(7, 10), {{rice, 1}});
    voidedBefore->setStatus(SaleStatus::voided);
    voidedBefore->setVoidedAt(at(8, 10));
    context.save();

    const QList<ReportSale> sales = reader.sales(DayRange(march(9)));
    ASSERT_EQ(sales.size(), 2);
    EXPECT_EQ(sales[0].voidedAt, lateNight->voidedAt());
    EXPECT_EQ(sales[1].timestamp, sameDay->timestamp());
}
