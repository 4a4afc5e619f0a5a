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
    return {.product = soap, .quantity = quantity, .unitPrice = 10, .unitCost = 6, .taxRate = 0.2,
            .taxComponentsRaw = ghanaTaxes()};
}

template <class Row> QStringList column(const QList<Row>& rows, QString Row::*field)
{
    QStringList result;
    for (const Row& row : rows)
        result << row.*field;
    return result;
}

// Shortest text that reads back as the same double, so comparing texts is comparing values.
QString exact(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

// Every figure of every sales report, in one list, so that one report forgetting a rule shows.
std::vector<double> everyFigure(const QList<ReportSale>& sales, QDate day)
{
    const DailySalesSummary daily = ReportCalculator::dailySales(sales, day);
    const ProductSalesRow product = ReportCalculator::salesByProduct(sales).value(0);
    const TaxSummary tax = ReportCalculator::taxReport(sales);
    std::vector<double> figures{double(daily.transactionCount), daily.grossSales, daily.tax, daily.netTotal,
                                daily.averageBasket, product.quantitySold, product.revenue, product.cost,
                                ReportCalculator::salesByCategory(sales).value(0).revenue,
                                ReportCalculator::salesByType(sales).value(0).quantitySold,
                                ReportCalculator::grossProfit(sales), tax.salesBeforeTax, tax.taxCollected};
    for (const CashierSalesRow& row : ReportCalculator::salesByCashier(sales))
        figures.insert(figures.end(), {double(row.transactionCount), row.total});
    for (const PaymentMethodRow& row : ReportCalculator::paymentMethodTotals(sales))
        figures.insert(figures.end(), {double(row.count), row.total});
    return figures;
}
} // namespace

TEST(ReportCalculator, AVoidedSaleCountsInNoFigureButTheVoidsOfTheDayItWasVoided)
{
    const auto ama = cashier(QStringLiteral("Ama"));
    const auto soap = product(QStringLiteral("Soap"));
    const QList<ReportSale> sales{
        sale({.when = at(9, 10), .lines = {{.product = soap, .unitPrice = 20}}, .cashier = ama}),
        // Rung up late on the 9th, voided the next morning.
        sale({.when = at(9, 20), .lines = {taxedSoap(soap)}, .statusRaw = voided, .voidedAt = at(10, 8),
              .cashier = ama}),
        // An old row without voidedAt counts on the day it was rung up.
        sale({.when = at(9, 11), .lines = {{.unitPrice = 3}}, .statusRaw = voided, .cashier = ama}),
    };
    EXPECT_EQ(ReportCalculator::voids(sales, march(9)).count, 1);
    EXPECT_DOUBLE_EQ(ReportCalculator::voids(sales, march(9)).total, 3);
    EXPECT_EQ(ReportCalculator::voids(sales, march(10)).count, 1);
    EXPECT_DOUBLE_EQ(ReportCalculator::voids(sales, march(10)).total, 12);

    EXPECT_EQ(ReportCalculator::counted(sales).size(), 1);
    EXPECT_EQ(everyFigure(sales, march(9)),
              (std::vector<double>{1, 20, 0, 20, 20, 1, 20, 0, 20, 1, 20, 20, 0, 1, 20, 1, 20}));
    EXPECT_EQ(ReportCalculator::dailySales(sales, march(10)).transactionCount, 0);
    EXPECT_EQ(column(ReportCalculator::taxByTax(sales), &TaxByTaxRow::label), QStringList{"Not taxable"});
}

TEST(ReportCalculator, ARefundNetsOutOfEveryFigureButRaisesNoTransactionCountEvenAlone)
{
    const auto soap = product(QStringLiteral("Soap"));
    const QList<ReportSale> sales{
        sale({.when = at(9, 10), .lines = {taxedSoap(soap, 2)}, .cashier = cashier(QStringLiteral("Kofi"))}),
        // One of the two comes back, refunded by another cashier.
        sale({.when = at(9, 15), .lines = {taxedSoap(soap, -1)}, .statusRaw = refunded,
              .cashier = cashier(QStringLiteral("Ama"))}),
    };
    // Kofi 1 sale of 24, Ama none and -12; the refund's negative payment counts as a payment.
    EXPECT_EQ(everyFigure(sales, march(9)),
              (std::vector<double>{1, 10, 2, 12, 12, 1, 10, 6, 10, 1, 4, 10, 2, 1, 24, 0, -12, 2, 12}));
    EXPECT_EQ(column(ReportCalculator::salesByCashier(sales), &CashierSalesRow::cashierName),
              (QStringList{"Kofi", "Ama"}));
    const QList<TaxByTaxRow> taxes = ReportCalculator::taxByTax(sales);
    ASSERT_EQ(taxes.size(), 3);
    EXPECT_EQ(taxes[2].taxable, 10);
    EXPECT_EQ(taxes[2].tax, 1.5);

    // A day of refunds only: no basket to divide by.
    const DailySalesSummary refundsOnly = ReportCalculator::dailySales(sales.mid(1), march(9));
    EXPECT_EQ((std::vector<double>{double(refundsOnly.transactionCount), refundsOnly.averageBasket,
                                   refundsOnly.grossSales, refundsOnly.tax, refundsOnly.netTotal}),
              (std::vector<double>{0, 0, -10, -2, -12}));
}

TEST(ReportCalculator, DailyFiguresAreRoundedOnceOnTheSumAndTheDayEndsAtMidnight)
{
    QList<ReportSale> sales;
    for (const QDateTime& when : {at(9, 0), at(9, 12), QDateTime(march(9), QTime(23, 59, 59, 999)), at(10, 0)}) {
        ReportSale third = sale({.when = when});
        third.subtotal = 0.333;
        third.lineDiscountTotal = 0.111;
        third.taxTotal = 0.002;
        third.total = 10.0 / 3;
        sales << third;
    }
    const DailySalesSummary day = ReportCalculator::dailySales(sales, march(9));
    EXPECT_EQ(day.date, march(9).startOfDay());
    // Rounded sale by sale these would be 0.99, 0.33, 0.00 and 9.99.
    EXPECT_EQ((std::vector<double>{double(day.transactionCount), day.grossSales, day.discounts, day.tax,
                                   day.netTotal, day.averageBasket}),
              (std::vector<double>{3, 1.0, 0.33, 0.01, 10, 3.33}));
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
    const QList<ReportSale> sales{sale({.lines = {
                                            {.product = nullptr, .unitPrice = 7, .typeRaw = "service"},
                                            {.product = product("Loose Rice", std::nullopt), .unitPrice = 4},
                                        }})};
    EXPECT_EQ(column(ReportCalculator::salesByProduct(sales), &ProductSalesRow::productName),
              QStringList{"Loose Rice"});
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
    const QList<ReportSale> sales{
        // 115 with the tax in it, 11.50 off: a net of 103.50 holding 13.50 tax.
        sale({.lines = {{.product = product("Malta", "Drinks"), .unitPrice = 115, .taxRate = 0.15,
                         .lineDiscount = 11.5, .pricesIncludeTax = true}}}),
        // 100 before tax, 10 off: 90 and 13.50 tax on top.
        sale({.lines = {{.product = product("Rice", "Grains"), .quantity = 2, .unitPrice = 50, .taxRate = 0.15,
                         .lineDiscount = 10}}}),
    };
    const QList<CategorySalesRow> categories = ReportCalculator::salesByCategory(sales);
    ASSERT_EQ(categories.size(), 2);
    EXPECT_DOUBLE_EQ(categories[0].revenue, 90);
    EXPECT_DOUBLE_EQ(categories[1].revenue, 90);
    EXPECT_EQ(categories[1].quantitySold, 2);
}

TEST(ReportCalculator, RowsComeHighestFirstAndTypesInTheirOwnOrder)
{
    const auto soap = product("Soap", "Toiletries");
    const auto ama = cashier("Ama");
    const QList<ReportSale> sales{
        sale({.lines = {{.product = product("Photocopy", "Services", "service"), .unitPrice = 1,
                         .typeRaw = "service"}},
              .cashier = ama, .payments = {{"card", 1}}}),
        sale({.lines = {{.product = soap, .unitPrice = 5}}, .cashier = ama,
              .payments = {{"voucher", 2}, {"mobileMoney", 3}}}),
        sale({.lines = {{.product = product("Milk", "Dairy", "inventory", "litre"), .quantity = 1.5,
                         .unitPrice = 12}},
              .cashier = cashier("Kofi")}),
        // No cashier: counted everywhere but by cashier.
        sale({.lines = {{.product = soap, .unitPrice = 5, .typeRaw = "someday"}}}),
    };
    const QList<ProductSalesRow> products = ReportCalculator::salesByProduct(sales);
    EXPECT_EQ(column(products, &ProductSalesRow::productName), (QStringList{"Milk", "Soap", "Photocopy"}));
    EXPECT_EQ(products[0].sellingUnit, SellingUnit::litre);
    EXPECT_EQ(products[1].revenue, 10);
    EXPECT_EQ(products[2].productType, ProductType::service);
    EXPECT_EQ(column(ReportCalculator::salesByCategory(sales), &CategorySalesRow::categoryName),
              (QStringList{"Dairy", "Toiletries", "Services"}));
    // An unknown type raw counts as the first type; non-inventory sold nothing and is left out.
    const QList<TypeSalesRow> types = ReportCalculator::salesByType(sales);
    ASSERT_EQ(types.size(), 2);
    EXPECT_EQ(types[0].productType, ProductType::inventory);
    EXPECT_EQ(types[0].revenue, 28);
    EXPECT_EQ(types[1].productType, ProductType::service);
    const QList<CashierSalesRow> cashiers = ReportCalculator::salesByCashier(sales);
    EXPECT_EQ(column(cashiers, &CashierSalesRow::cashierName), (QStringList{"Kofi", "Ama"}));
    EXPECT_EQ(cashiers[1].total, 6);
    // An unknown method reads as cash, as on the receipt.
    const QList<PaymentMethodRow> payments = ReportCalculator::paymentMethodTotals(sales);
    EXPECT_EQ(column(payments, &PaymentMethodRow::method), (QStringList{"Cash", "Mobile Money", "Card"}));
    EXPECT_EQ(payments[0].count, 3);
    EXPECT_EQ(payments[0].total, 25);
}

TEST(ReportCalculator, TaxesComeInOrderOfFirstAppearanceEachCountingTheWholeNet)
{
    const QList<ReportSale> sales{
        sale({.lines = {{.unitPrice = 10, .taxRate = 0.15}}}), // kept before taxes were itemised
        sale({.lines = {taxedSoap(product("Soap")), {.unitPrice = 4}}}),
    };
    QStringList rows;
    for (const TaxByTaxRow& row : ReportCalculator::taxByTax(sales))
        rows << row.label + u' ' + exact(row.taxable) + u' ' + exact(row.tax);
    EXPECT_EQ(rows, (QStringList{"Tax (15%) 10 1.5", "NHIL 10 0.25", "GETFund Levy 10 0.25", "VAT 10 1.5",
                                 "Not taxable 4 0"}));
}

TEST(ReportCalculator, UntaxedSalesOfHalfACentOrLessMakeNoRow)
{
    const struct {
        const char* name;
        double untaxed;
        QStringList rows;
    } cases[] = {
        {"exactly half a cent", 0.005, {}},
        {"just over half a cent", 0.0051, {"Not taxable 0.01"}},
        {"a refund's negative half cent and more", -0.006, {"Not taxable -0.01"}},
        {"nothing", 0, {}},
    };
    for (const auto& test : cases) {
        QStringList rows;
        for (const TaxByTaxRow& row : ReportCalculator::taxByTax({sale({.lines = {{.unitPrice = test.untaxed}}})}))
            rows << row.label + u' ' + exact(row.taxable);
        EXPECT_EQ(rows, test.rows) << test.name;
    }
}

TEST(ReportCalculator, StockRowsCountTrackedProductsAndLowStockIncludesTheReorderLevel)
{
    const auto make = [](const char* name, const char* type, double stock, bool active = true) {
        auto made = std::make_shared<Product>();
        made->setName(QString::fromUtf8(name));
        made->setProductTypeRaw(QString::fromUtf8(type));
        made->setStockQuantity(stock);
        made->setReorderLevel(5);
        made->setCostPrice(2);
        made->setIsActive(active);
        return made;
    };
    const QList<Ref<Product>> products{
        make("At the level", "inventory", 5), make("Above", "inventory", 6), make("Unknown type", "gadget", 1),
        make("Inactive", "inventory", 0, false), make("Service", "service", 0), make("Short", "inventory", -2),
        make("Non-inventory", "nonInventory", 0),
    };
    EXPECT_EQ(column(ReportCalculator::lowStock(products), &LowStockRow::productName),
              (QStringList{"Short", "Unknown type", "At the level"}));
    QStringList valued;
    for (const StockValuationRow& row : ReportCalculator::stockValuation(products))
        valued << row.productName + u' ' + QString::number(row.value);
    EXPECT_EQ(valued, (QStringList{"Above 12", "At the level 10", "Unknown type 2", "Inactive 0", "Short -4"}));
}

TEST(ReportCalculator, ShiftsComeNewestFirstWithADashForAMissingCashier)
{
    auto ama = std::make_shared<User>();
    ama->setName(QStringLiteral("Ama"));
    auto older = std::make_shared<TillShift>();
    older->setCashier(ama);
    older->setOpenedAt(at(8, 7));
    older->setVariance(-5);
    auto open = std::make_shared<TillShift>();
    open->setOpenedAt(at(9, 7));
    const QList<ShiftReportRow> rows = ReportCalculator::shiftReport({older, open});
    EXPECT_EQ(column(rows, &ShiftReportRow::cashierName), (QStringList{"—", "Ama"}));
    EXPECT_EQ(rows[0].variance, std::nullopt);
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
                              std::optional<double> costBefore, std::optional<double> costAfter) {
        auto made = std::make_shared<InventoryMovement>();
        made->setProduct(rice);
        made->setType(type);
        made->setTimestamp(when);
        made->setQuantityChange(quantity);
        made->setCostBefore(costBefore);
        made->setCostAfter(costAfter);
        made->setPerformedBy(kofi);
        return made;
    };
    auto delivery = movement(InventoryMovementType::supplierDelivery, at(9, 7), 25, 4, 4.25);
    delivery->setSupplier(QStringLiteral("Olam, Tema"));
    delivery->setUnitCost(4.5);
    auto edit = movement(InventoryMovementType::costChange, at(10, 9), 0, 4.25, 4.4);
    auto opening = movement(InventoryMovementType::stockIn, QDateTime(march(10), QTime(23, 59, 59, 999)), 10,
                            std::nullopt, 4);
    opening->setProduct(nullptr);
    opening->setPerformedBy(nullptr);
    const QList<Ref<InventoryMovement>> movements{
        delivery, edit, opening,
        movement(InventoryMovementType::saleDeduction, at(9, 12), -1, std::nullopt, std::nullopt), // no cost
        movement(InventoryMovementType::costChange, at(11, 0), 0, std::nullopt, 5), // the day after
        movement(InventoryMovementType::costChange, QDateTime(march(8), QTime(23, 59)), 0, std::nullopt, 5),
    };
    QStringList rows;
    for (const QStringList& row : ReportCalculator::costChanges(movements, march(9), march(10)))
        rows << row.join(u'|');
    EXPECT_EQ(rows, (QStringList{
                        "Mar 10, 2026 11:59 PM|—||Delivery|10|—|—|₵4.00|—",
                        "Mar 10, 2026 9:00 AM|Rice|RIC-1|Cost edited||—|₵4.25|₵4.40|Kofi",
                        "Mar 9, 2026 7:00 AM|Rice|RIC-1|Delivery — Olam, Tema|25 kg|₵4.50|₵4.00|₵4.25|Kofi",
                    }));
    edit->setReason(QStringLiteral("Imported from CSV"));
    EXPECT_EQ(ReportCalculator::costChanges({edit}, march(10), march(10)).at(0).at(3),
              QStringLiteral("Imported from CSV"));
}
