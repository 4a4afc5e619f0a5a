#include "reports/reportcalculator.h"

#include "records/category.h"
#include "records/user.h"
#include "reportbuilders.h"

#include <gtest/gtest.h>

namespace {
const QString refunded = QStringLiteral("refunded");
const QString voided = QStringLiteral("voided");

// The three taxes on a net of 10.
Line taxedSoap(const std::shared_ptr<const ReportProduct>& soap, double quantity = 1)
{
    return {.product = soap,
            .quantity = quantity,
            .unitPrice = 10,
            .unitCost = 6,
            .taxRate = 0.2,
            .taxComponentsRaw = ghanaTaxes()};
}

QStringList labels(const QList<TaxByTaxRow>& rows)
{
    QStringList result;
    for (const TaxByTaxRow& row : rows)
        result << row.label;
    return result;
}
} // namespace

TEST(ReportCalculator, AVoidedSaleCountsInNoFigureButTheVoidsOfTheDayItWasVoided)
{
    const auto ama = cashier(QStringLiteral("Ama"));
    const auto soap = product(QStringLiteral("Soap"));
    const QList<ReportSale> sales{
        sale({.when = at(9, 10), .lines = {{.product = soap, .unitPrice = 20}}, .cashier = ama}),
        // Rung up late on the 9th, voided the next morning.
        sale({.when = at(9, 20),
              .lines = {taxedSoap(soap)},
              .statusRaw = voided,
              .voidedAt = at(10, 8),
              .cashier = ama}),
        // An old row without voidedAt counts on the day it was rung up.
        sale({.when = at(9, 11), .lines = {{.unitPrice = 3}}, .statusRaw = voided, .cashier = ama}),
    };

    const VoidsSummary ninth = ReportCalculator::voids(sales, march(9));
    EXPECT_EQ(ninth.count, 1);
    EXPECT_DOUBLE_EQ(ninth.total, 3);
    const VoidsSummary tenth = ReportCalculator::voids(sales, march(10));
    EXPECT_EQ(tenth.count, 1);
    EXPECT_DOUBLE_EQ(tenth.total, 12);

    EXPECT_EQ(ReportCalculator::counted(sales).size(), 1);
    const DailySalesSummary day = ReportCalculator::dailySales(sales, march(9));
    EXPECT_EQ(day.transactionCount, 1);
    EXPECT_EQ(day.grossSales, 20);
    EXPECT_EQ(day.tax, 0);
    EXPECT_EQ(day.netTotal, 20);
    EXPECT_EQ(ReportCalculator::dailySales(sales, march(10)).transactionCount, 0);

    const QList<ProductSalesRow> products = ReportCalculator::salesByProduct(sales);
    ASSERT_EQ(products.size(), 1);
    EXPECT_EQ(products[0].quantitySold, 1);
    EXPECT_EQ(ReportCalculator::salesByCategory(sales).at(0).revenue, 20);
    EXPECT_EQ(ReportCalculator::salesByType(sales).at(0).revenue, 20);
    const QList<CashierSalesRow> cashiers = ReportCalculator::salesByCashier(sales);
    ASSERT_EQ(cashiers.size(), 1);
    EXPECT_EQ(cashiers[0].transactionCount, 1);
    EXPECT_EQ(cashiers[0].total, 20);
    const QList<PaymentMethodRow> payments = ReportCalculator::paymentMethodTotals(sales);
    ASSERT_EQ(payments.size(), 1);
    EXPECT_EQ(payments[0].count, 1);
    EXPECT_EQ(payments[0].total, 20);
    EXPECT_EQ(labels(ReportCalculator::taxByTax(sales)), QStringList{QStringLiteral("Not taxable")});
    EXPECT_EQ(ReportCalculator::taxReport(sales).taxCollected, 0);
    EXPECT_EQ(ReportCalculator::grossProfit(sales), 20);
}

TEST(ReportCalculator, ARefundNetsOutOfEveryFigureButRaisesNoTransactionCountEvenAlone)
{
    const auto kofi = cashier(QStringLiteral("Kofi"));
    const auto ama = cashier(QStringLiteral("Ama"));
    const auto soap = product(QStringLiteral("Soap"));
    const QList<ReportSale> sales{
        sale({.when = at(9, 10), .lines = {taxedSoap(soap, 2)}, .cashier = kofi}),
        // One of the two comes back, refunded by another cashier.
        sale({.when = at(9, 15), .lines = {taxedSoap(soap, -1)}, .statusRaw = refunded, .cashier = ama}),
    };

    const DailySalesSummary day = ReportCalculator::dailySales(sales, march(9));
    EXPECT_EQ(day.transactionCount, 1);
    EXPECT_EQ(day.grossSales, 10);
    EXPECT_EQ(day.tax, 2);
    EXPECT_EQ(day.netTotal, 12);
    EXPECT_EQ(day.averageBasket, 12);

    const QList<CashierSalesRow> cashiers = ReportCalculator::salesByCashier(sales);
    ASSERT_EQ(cashiers.size(), 2);
    EXPECT_EQ(cashiers[0].cashierName, QStringLiteral("Kofi"));
    EXPECT_EQ(cashiers[0].transactionCount, 1);
    EXPECT_EQ(cashiers[0].total, 24);
    EXPECT_EQ(cashiers[1].cashierName, QStringLiteral("Ama"));
    EXPECT_EQ(cashiers[1].transactionCount, 0);
    EXPECT_EQ(cashiers[1].total, -12);

    // The refund's negative payment counts as a payment and takes from the total.
    const QList<PaymentMethodRow> payments = ReportCalculator::paymentMethodTotals(sales);
    ASSERT_EQ(payments.size(), 1);
    EXPECT_EQ(payments[0].count, 2);
    EXPECT_EQ(payments[0].total, 12);

    const ProductSalesRow soapRow = ReportCalculator::salesByProduct(sales).at(0);
    EXPECT_EQ(soapRow.quantitySold, 1);
    EXPECT_DOUBLE_EQ(soapRow.revenue, 10);
    EXPECT_DOUBLE_EQ(soapRow.cost, 6);
    EXPECT_DOUBLE_EQ(soapRow.profit, 4);
    EXPECT_DOUBLE_EQ(ReportCalculator::salesByCategory(sales).at(0).revenue, 10);
    EXPECT_EQ(ReportCalculator::salesByType(sales).at(0).quantitySold, 1);
    EXPECT_EQ(ReportCalculator::grossProfit(sales), 4);
    const TaxSummary tax = ReportCalculator::taxReport(sales);
    EXPECT_EQ(tax.salesBeforeTax, 10);
    EXPECT_EQ(tax.taxCollected, 2);
    const QList<TaxByTaxRow> taxes = ReportCalculator::taxByTax(sales);
    ASSERT_EQ(taxes.size(), 3);
    EXPECT_EQ(taxes[2].taxable, 10);
    EXPECT_EQ(taxes[2].tax, 1.5);

    // A day of refunds only: no basket to divide by.
    const DailySalesSummary refundsOnly = ReportCalculator::dailySales(sales.mid(1), march(9));
    EXPECT_EQ(refundsOnly.transactionCount, 0);
    EXPECT_EQ(refundsOnly.averageBasket, 0);
    EXPECT_EQ(refundsOnly.grossSales, -10);
    EXPECT_EQ(refundsOnly.tax, -2);
    EXPECT_EQ(refundsOnly.netTotal, -12);
}

TEST(ReportCalculator, DailyFiguresAreRoundedOnceOnTheSumAndTheDayEndsAtMidnight)
{
    QList<ReportSale> sales;
    for (const QDateTime& when :
         {at(9, 0), at(9, 12), QDateTime(march(9), QTime(23, 59, 59, 999)), at(10, 0)}) {
        ReportSale third = sale({.when = when});
        third.subtotal = 0.333;
        third.lineDiscountTotal = 0.111;
        third.taxTotal = 0.002;
        third.total = 10.0 / 3;
        sales << third;
    }
    const DailySalesSummary day = ReportCalculator::dailySales(sales, march(9));
    EXPECT_EQ(day.date, march(9).startOfDay());
    EXPECT_EQ(day.transactionCount, 3);
    // Rounded sale by sale these would be 0.99, 0.33, 0.00 and 9.99.
    EXPECT_EQ(day.grossSales, 1.0);
    EXPECT_EQ(day.discounts, 0.33);
    EXPECT_EQ(day.tax, 0.01);
    EXPECT_EQ(day.netTotal, 10);
    EXPECT_EQ(day.averageBasket, 3.33);
}

TEST(ReportCalculator, DiscountsAddTheLineTheSaleAndThePointsDiscounts)
{
    ReportSale discounted = sale({.lines = {{.unitPrice = 50, .lineDiscount = 1.5}}});
    discounted.saleDiscount = 2;
    discounted.pointsDiscount = 5;
    EXPECT_EQ(ReportCalculator::dailySales({discounted}, march(9)).discounts, 8.5);
    EXPECT_EQ(ReportCalculator::taxReport({discounted}).salesBeforeTax, 41.5);
}

TEST(ReportCalculator, ALineWhoseProductWasDeletedCountsByCategoryAndTypeButNotByProduct)
{
    const auto loose = product(QStringLiteral("Loose Rice"), std::nullopt);
    const QList<ReportSale> sales{
        sale({.lines = {
                  {.product = nullptr, .unitPrice = 7, .typeRaw = QStringLiteral("service")},
                  {.product = loose, .unitPrice = 4},
              }})};

    const QList<ProductSalesRow> products = ReportCalculator::salesByProduct(sales);
    ASSERT_EQ(products.size(), 1);
    EXPECT_EQ(products[0].productName, QStringLiteral("Loose Rice"));

    // Without a product, and with a product without a category, both land under one name.
    const QList<CategorySalesRow> categories = ReportCalculator::salesByCategory(sales);
    ASSERT_EQ(categories.size(), 1);
    EXPECT_EQ(categories[0].categoryName, QStringLiteral("Uncategorized"));
    EXPECT_EQ(categories[0].quantitySold, 2);
    EXPECT_EQ(categories[0].revenue, 11);

    const QList<TypeSalesRow> types = ReportCalculator::salesByType(sales);
    ASSERT_EQ(types.size(), 2);
    EXPECT_EQ(types[0].productType, ProductType::inventory);
    EXPECT_EQ(types[1].productType, ProductType::service);
    EXPECT_EQ(types[1].revenue, 7);
}

TEST(ReportCalculator, CategoryRevenueTakesTheTaxOutOfTheNetOfEachLine)
{
    const auto drinks = product(QStringLiteral("Malta"), QStringLiteral("Drinks"));
    const auto rice = product(QStringLiteral("Rice"), QStringLiteral("Grains"));
    const QList<ReportSale> sales{
        // 115 with the tax in it, 11.50 off: a net of 103.50 holding 13.50 tax.
        sale({.lines = {{.product = drinks,
                         .unitPrice = 115,
                         .taxRate = 0.15,
                         .lineDiscount = 11.5,
                         .pricesIncludeTax = true}}}),
        // 100 before tax, 10 off: 90 and 13.50 tax on top.
        sale({.lines =
                  {{.product = rice, .quantity = 2, .unitPrice = 50, .taxRate = 0.15, .lineDiscount = 10}}}),
    };
    const QList<CategorySalesRow> categories = ReportCalculator::salesByCategory(sales);
    ASSERT_EQ(categories.size(), 2);
    EXPECT_DOUBLE_EQ(categories[0].revenue, 90);
    EXPECT_DOUBLE_EQ(categories[1].revenue, 90);
    EXPECT_EQ(categories[1].quantitySold, 2);
}

TEST(ReportCalculator, RowsComeHighestFirstAndTypesInTheirOwnOrder)
{
    const auto soap = product(QStringLiteral("Soap"), QStringLiteral("Toiletries"));
    const auto milk = product(QStringLiteral("Milk"), QStringLiteral("Dairy"), QStringLiteral("inventory"),
                              QStringLiteral("litre"));
    const auto copy =
        product(QStringLiteral("Photocopy"), QStringLiteral("Services"), QStringLiteral("service"));
    const auto ama = cashier(QStringLiteral("Ama"));
    const auto kofi = cashier(QStringLiteral("Kofi"));
    const QList<ReportSale> sales{
        sale({.lines = {{.product = copy, .unitPrice = 1, .typeRaw = QStringLiteral("service")}},
              .cashier = ama,
              .payments = {{QStringLiteral("card"), 1}}}),
        sale({.lines = {{.product = soap, .unitPrice = 5}},
              .cashier = ama,
              .payments = {{QStringLiteral("voucher"), 2}, {QStringLiteral("mobileMoney"), 3}}}),
        sale({.lines = {{.product = milk, .quantity = 1.5, .unitPrice = 12}}, .cashier = kofi}),
        // No cashier: counted everywhere but by cashier.
        sale({.lines = {{.product = soap, .unitPrice = 5, .typeRaw = QStringLiteral("someday")}}}),
    };

    const QList<ProductSalesRow> products = ReportCalculator::salesByProduct(sales);
    ASSERT_EQ(products.size(), 3);
    EXPECT_EQ(products[0].productName, QStringLiteral("Milk"));
    EXPECT_EQ(products[0].sellingUnit, SellingUnit::litre);
    EXPECT_EQ(products[1].productName, QStringLiteral("Soap"));
    EXPECT_EQ(products[1].revenue, 10);
    EXPECT_EQ(products[2].productType, ProductType::service);

    const QList<CategorySalesRow> categories = ReportCalculator::salesByCategory(sales);
    ASSERT_EQ(categories.size(), 3);
    EXPECT_EQ(categories[0].categoryName, QStringLiteral("Dairy"));
    EXPECT_EQ(categories[2].categoryName, QStringLiteral("Services"));

    // An unknown type raw counts as the first type; non-inventory sold nothing and is left out.
    const QList<TypeSalesRow> types = ReportCalculator::salesByType(sales);
    ASSERT_EQ(types.size(), 2);
    EXPECT_EQ(types[0].productType, ProductType::inventory);
    EXPECT_EQ(types[0].revenue, 28);
    EXPECT_EQ(types[1].productType, ProductType::service);

    const QList<CashierSalesRow> cashiers = ReportCalculator::salesByCashier(sales);
    ASSERT_EQ(cashiers.size(), 2);
    EXPECT_EQ(cashiers[0].cashierName, QStringLiteral("Kofi"));
    EXPECT_EQ(cashiers[1].total, 6);

    // An unknown method reads as cash, as on the receipt.
    const QList<PaymentMethodRow> payments = ReportCalculator::paymentMethodTotals(sales);
    ASSERT_EQ(payments.size(), 3);
    EXPECT_EQ(payments[0].method, QStringLiteral("Cash"));
    EXPECT_EQ(payments[0].count, 3);
    EXPECT_EQ(payments[0].total, 25);
    EXPECT_EQ(payments[1].method, QStringLiteral("Mobile Money"));
    EXPECT_EQ(payments[2].method, QStringLiteral("Card"));
}

TEST(ReportCalculator, TaxesComeInOrderOfFirstAppearanceEachCountingTheWholeNet)
{
    const QList<ReportSale> sales{
        sale({.lines = {{.unitPrice = 10, .taxRate = 0.15}}}), // kept before taxes were itemised
        sale({.lines = {taxedSoap(product(QStringLiteral("Soap"))), {.unitPrice = 4}}}),
    };
    const QList<TaxByTaxRow> rows = ReportCalculator::taxByTax(sales);
    EXPECT_EQ(labels(rows), (QStringList{QStringLiteral("Tax (15%)"), QStringLiteral("NHIL"),
                                         QStringLiteral("GETFund Levy"), QStringLiteral("VAT"),
                                         QStringLiteral("Not taxable")}));
    EXPECT_EQ(rows[0].tax, 1.5);
    for (int i = 1; i <= 3; ++i)
        EXPECT_EQ(rows[i].taxable, 10) << qPrintable(rows[i].label);
    EXPECT_EQ(rows[1].tax, 0.25);
    EXPECT_EQ(rows[3].tax, 1.5);
    EXPECT_EQ(rows[4].taxable, 4);
    EXPECT_EQ(rows[4].tax, 0);
}

TEST(ReportCalculator, UntaxedSalesOfHalfACentOrLessMakeNoRow)
{
    const struct {
        const char* name;
        double untaxed;
        std::optional<double> row;
    } cases[] = {
        {"exactly half a cent", 0.005, std::nullopt},
        {"just over half a cent", 0.0051, 0.01},
        {"a refund's negative half cent and more", -0.006, -0.01},
        {"nothing", 0, std::nullopt},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        const QList<TaxByTaxRow> rows =
            ReportCalculator::taxByTax({sale({.lines = {{.unitPrice = test.untaxed}}})});
        if (!test.row) {
            EXPECT_TRUE(rows.isEmpty());
            continue;
        }
        ASSERT_EQ(rows.size(), 1);
        EXPECT_EQ(rows[0].label, QStringLiteral("Not taxable"));
        EXPECT_EQ(rows[0].taxable, *test.row);
    }
}

TEST(ReportCalculator, StockRowsCountTrackedProductsAndLowStockIncludesTheReorderLevel)
{
    const auto make = [](const char* name, const char* type, double stock, double reorder,
                         bool active = true) {
        auto made = std::make_shared<Product>();
        made->setName(QString::fromUtf8(name));
        made->setProductTypeRaw(QString::fromUtf8(type));
        made->setStockQuantity(stock);
        made->setReorderLevel(reorder);
        made->setCostPrice(2);
        made->setIsActive(active);
        return made;
    };
    const QList<Ref<Product>> products{
        make("At the level", "inventory", 5, 5),
        make("Above", "inventory", 6, 5),
        make("Unknown type", "gadget", 1, 5),
        make("Inactive", "inventory", 0, 5, false),
        make("Service", "service", 0, 5),
        make("Short", "inventory", -2, 5),
        make("Non-inventory", "nonInventory", 0, 5),
    };

    QStringList low;
    for (const LowStockRow& row : ReportCalculator::lowStock(products))
        low << row.productName;
    EXPECT_EQ(low, (QStringList{QStringLiteral("Short"), QStringLiteral("Unknown type"),
                                QStringLiteral("At the level")}));

    QStringList valued;
    for (const StockValuationRow& row : ReportCalculator::stockValuation(products))
        valued << row.productName + u' ' + QString::number(row.value);
    EXPECT_EQ(valued, (QStringList{QStringLiteral("Above 12"), QStringLiteral("At the level 10"),
                                   QStringLiteral("Unknown type 2"), QStringLiteral("Inactive 0"),
                                   QStringLiteral("Short -4")}));
}

TEST(ReportCalculator, ShiftsComeNewestFirstWithADashForAMissingCashier)
{
    auto ama = std::make_shared<User>();
    ama->setName(QStringLiteral("Ama"));
    auto older = std::make_shared<TillShift>();
    older->setCashier(ama);
    older->setOpenedAt(at(8, 7));
    older->setClosedAt(at(8, 21));
    older->setExpectedCash(310);
    older->setCountedCash(305);
    older->setVariance(-5);
    auto open = std::make_shared<TillShift>();
    open->setOpenedAt(at(9, 7));
    open->setOpeningFloat(300);

    const QList<ShiftReportRow> rows = ReportCalculator::shiftReport({older, open});
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0].id, open->id());
    EXPECT_EQ(rows[0].cashierName, QStringLiteral("—"));
    EXPECT_EQ(rows[0].closedAt, std::nullopt);
    EXPECT_EQ(rows[0].variance, std::nullopt);
    EXPECT_EQ(rows[0].openingFloat, 300);
    EXPECT_EQ(rows[1].cashierName, QStringLiteral("Ama"));
    EXPECT_EQ(rows[1].variance, -5);
}

TEST(ReportCalculator, CostChangesListDeliveriesAndEditsOfTheDaysNewestFirst)
{
    auto kofi = std::make_shared<User>();
    kofi->setName(QStringLiteral("Kofi"));
    auto rice = std::make_shared<Product>();
    rice->setName(QStringLiteral("Rice"));
    rice->setSku(QStringLiteral("RIC-1"));
    rice->setSellingUnit(SellingUnit::kg);
    const auto movement = [&](InventoryMovementType type, const QDateTime& when, double quantity,
                              std::optional<double> costAfter) {
        auto made = std::make_shared<InventoryMovement>();
        made->setProduct(rice);
        made->setType(type);
        made->setTimestamp(when);
        made->setQuantityChange(quantity);
        made->setCostAfter(costAfter);
        made->setPerformedBy(kofi);
        return made;
    };
    auto delivery = movement(InventoryMovementType::supplierDelivery, at(9, 7), 25, 4.25);
    delivery->setSupplier(QStringLiteral("Olam, Tema"));
    delivery->setUnitCost(4.5);
    delivery->setCostBefore(4);
    auto edit = movement(InventoryMovementType::costChange, at(10, 9), 0, 4.4);
    edit->setCostBefore(4.25);
    auto opening =
        movement(InventoryMovementType::stockIn, QDateTime(march(10), QTime(23, 59, 59, 999)), 10, 4);
    opening->setProduct(nullptr);
    opening->setPerformedBy(nullptr);
    const QList<Ref<InventoryMovement>> movements{
        delivery,
        edit,
        opening,
        movement(InventoryMovementType::saleDeduction, at(9, 12), -1, std::nullopt), // no cost: not listed
        movement(InventoryMovementType::costChange, at(11, 0), 0, 5),                // the day after
        movement(InventoryMovementType::costChange, QDateTime(march(8), QTime(23, 59)), 0, 5),
    };

    const QList<QStringList> rows = ReportCalculator::costChanges(movements, march(9), march(10));
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0], (QStringList{QStringLiteral("Mar 10, 2026 11:59 PM"), QStringLiteral("—"), QString(),
                                    QStringLiteral("Delivery"), QStringLiteral("10"), QStringLiteral("—"),
                                    QStringLiteral("—"), QStringLiteral("₵4.00"), QStringLiteral("—")}));
    EXPECT_EQ(rows[1], (QStringList{QStringLiteral("Mar 10, 2026 9:00 AM"), QStringLiteral("Rice"),
                                    QStringLiteral("RIC-1"), QStringLiteral("Cost edited"), QString(),
                                    QStringLiteral("—"), QStringLiteral("₵4.25"), QStringLiteral("₵4.40"),
                                    QStringLiteral("Kofi")}));
    EXPECT_EQ(rows[2], (QStringList{QStringLiteral("Mar 9, 2026 7:00 AM"), QStringLiteral("Rice"),
                                    QStringLiteral("RIC-1"), QStringLiteral("Delivery — Olam, Tema"),
                                    QStringLiteral("25 kg"), QStringLiteral("₵4.50"), QStringLiteral("₵4.00"),
                                    QStringLiteral("₵4.25"), QStringLiteral("Kofi")}));

    edit->setReason(QStringLiteral("Imported from CSV"));
    EXPECT_EQ(ReportCalculator::costChanges({edit}, march(10), march(10)).at(0).at(3),
              QStringLiteral("Imported from CSV"));
}
