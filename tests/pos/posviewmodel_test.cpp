#include "posscene.h"

#include "records/auditentry.h"
#include "records/category.h"
#include "records/heldsale.h"

namespace {
QList<QString> names(ProductGridModel& list)
{
    QList<QString> shown;
    for (int row = 0; row < list.rowCount(); ++row)
        shown.append(list.tile(row).name);
    return shown;
}
} // namespace

TEST_F(POSTest, ScanningFindsByCodeAndAnUnknownCodeDoesNothing)
{
    const Ref<Product> apple = coded("Apple", "A-1", "500");
    const Ref<Product> banana = coded("Banana", "500", "777");
    const Ref<Product> cherry = coded("Cherry", "chx", "DX9");
    const Ref<Product> old = coded("Old Stock", "old", "900");
    performUnitOfWork(context, [&] { old->setIsActive(false); });

    struct Case {
        const char* scanned;
        Ref<Product> added; // null: nothing
    };
    const Case cases[] = {
        {"500", apple},      // one's barcode, the other's SKU: the first in the list wins
        {" 777\n", banana},  // a scanner's return and stray blanks
        {"CHX", cherry},     // a SKU in any case
        {"dx9", nullptr},    // a barcode only as stored
        {"nope", nullptr},   // nothing, and no message: the grid shows what the text filters to
        {"", nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.scanned);
        pos->cancelSale();
        pos->setSearchText(QString::fromUtf8(c.scanned));
        EXPECT_EQ(pos->submitSearch(), c.added != nullptr);
        EXPECT_EQ(pos->errorMessage(), std::nullopt);
        if (c.added) {
            ASSERT_EQ(pos->cart().lines().size(), 1);
            EXPECT_EQ(pos->cart().lines()[0].product, c.added);
            EXPECT_EQ(pos->searchText(), QString());
        } else {
            EXPECT_TRUE(pos->cart().lines().isEmpty());
            EXPECT_EQ(pos->searchText(), QString::fromUtf8(c.scanned));
        }
    }

    pos->setSearchText(QStringLiteral("OLD"));
    EXPECT_TRUE(pos->submitSearch());
    EXPECT_EQ(pos->searchText(), QString());
    EXPECT_EQ(pos->errorMessage(), "Old Stock is inactive and cannot be sold.");
    EXPECT_TRUE(pos->cart().lines().isEmpty());
}

TEST_F(POSTest, MeasuredGoodsAskForTheAmountFirst)
{
    const Ref<Product> rice = scene.product({.name = "Rice", .price = 12, .unit = SellingUnit::kg});
    pos->addIfSellable(rice);
    EXPECT_EQ(pos->pendingMeasuredProduct(), rice);
    EXPECT_TRUE(pos->cart().lines().isEmpty());
    pos->cancelQuantityEntry();
    EXPECT_EQ(pos->pendingMeasuredProduct(), nullptr);
    EXPECT_TRUE(pos->cart().lines().isEmpty());

    pos->addIfSellable(rice);
    std::unique_ptr<QuantityEntry> sheet = pos->quantityEntry();
    ASSERT_NE(sheet, nullptr);
    sheet->setText(QStringLiteral("1,5"));
    pos->finishQuantityEntry(sheet->value());
    ASSERT_EQ(pos->cart().lines().size(), 1);
    EXPECT_EQ(pos->cart().lines()[0].quantity, 1.5);

    const QUuid line = pos->cart().lines()[0].id;
    pos->editQuantity(line);
    sheet = pos->quantityEntry();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->confirmText(), "Update");
    EXPECT_EQ(sheet->text(), "1.5");
    pos->finishQuantityEntry(2.25);
    EXPECT_EQ(pos->cart().lines()[0].quantity, 2.25);
    EXPECT_EQ(pos->editingQuantityLineID(), std::nullopt);
}

TEST_F(POSTest, TheGridLeavesOutInactiveProductsAndFollowsChipsAndEveryKeystroke)
{
    auto drinks = std::make_shared<Category>();
    drinks->setName(QStringLiteral("Drinks"));
    scene.saved(drinks);
    const Ref<Product> cola = coded("Cola", "DRK-1", "5000112");
    coded("Colander", "KIT-9", "4001");
    const Ref<Product> gone = coded("Cola Zero", "DRK-2", "5000113");
    performUnitOfWork(context, [&] {
        cola->setCategory(drinks);
        gone->setIsActive(false);
    });
    ProductGridModel& list = pos->products();
    EXPECT_EQ(names(list), (QList<QString>{"Cola", "Colander"})) << "reloaded after the saves";

    struct Step {
        const char* typed;
        QList<QString> shown;
    };
    // Typing narrows what was found, backspace widens again: both must give the full answer.
    const Step steps[] = {{"c", {"Cola", "Colander"}}, {"cola", {"Cola", "Colander"}}, {"colan", {"Colander"}},
                          {"cola", {"Cola", "Colander"}}, {"drk", {"Cola"}},           {"0011", {"Cola"}},
                          {"KIT", {"Colander"}},          {"zz", {}},                    {"", {"Cola", "Colander"}}};
    for (const Step& step : steps) {
        pos->setSearchText(QString::fromUtf8(step.typed));
        EXPECT_EQ(names(list), step.shown) << step.typed;
    }
    pos->setSelectedCategoryID(drinks->id());
    EXPECT_EQ(names(list), QList<QString>{"Cola"});
    EXPECT_EQ(list.data(list.index(0), ProductGridModel::CategoryNameRole), "Drinks");
    EXPECT_EQ(list.data(list.index(0), ProductGridModel::StockTextRole), "50 left");
    pos->setSelectedCategoryID(std::nullopt);
    EXPECT_EQ(list.rowCount(), 2);
}

TEST_F(POSTest, TheDrawerIsToldBeforeThePrinterAndTheSaleStands)
{
    changeSettings([](AppSettings& s) {
        s.setPrintReceiptAutomatically(true);
        s.setReceiptPrinterQueue(QStringLiteral("Receipt"));
        s.setCashDrawerConnectionRaw(QStringLiteral("receiptPrinter"));
    });
    struct Case {
        const char* name;
        bool drawerFails;
        bool printerFails;
        const char* message; // null: none
    };
    const Case cases[] = {
        {"both fail", true, true,
         "Sale completed. The cash drawer didn't open: drawer stuck The receipt didn't print: out of paper"},
        {"printer fails", false, true, "Sale completed. The receipt didn't print: out of paper"},
        {"all well", false, false, nullptr},
    };
    const Ref<Product> soap = scene.product({});
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        transport->failure = c.drawerFails ? std::optional<Refusal>(Refusal("drawer stuck")) : std::nullopt;
        printer->failure = c.printerFails ? std::optional<Refusal>(Refusal("out of paper")) : std::nullopt;
        const qsizetype kicks = transport->sent.size();
        const qsizetype printed = printer->printed.size();
        pos->addIfSellable(soap);
        ASSERT_TRUE(pos->startCheckout());
        pos->paymentSheet()->setCashTenderedText(QStringLiteral("20"));
        ASSERT_TRUE(pos->paymentSheet()->complete());

        EXPECT_EQ(pos->paymentSheet(), nullptr);
        EXPECT_TRUE(pos->showReceiptSheet());
        EXPECT_TRUE(pos->cart().lines().isEmpty());
        ASSERT_NE(pos->lastCompletedSale(), nullptr);
        EXPECT_EQ(pos->lastCompletedSale()->payments()[0]->changeGiven(), 10);
        EXPECT_EQ(pos->errorMessage(), c.message ? std::optional<QString>(QString::fromUtf8(c.message)) : std::nullopt);
        EXPECT_EQ(transport->sent.size(), kicks + (c.drawerFails ? 0 : 1));
        EXPECT_EQ(printer->printed.size(), printed + (c.printerFails ? 0 : 1));
        pos->closeReceiptSheet();
    }
    EXPECT_EQ(settings->lastReceiptSequence(), 3);
    EXPECT_EQ(pos->products().data(pos->products().index(0), ProductGridModel::StockTextRole), "97 left")
        << "the grid follows the sales' stock";

    // No cash, no drawer; no printer chosen, no print and no complaint.
    changeSettings([](AppSettings& s) { s.setReceiptPrinterQueue(QString()); });
    const qsizetype kicks = transport->sent.size();
    pos->addIfSellable(soap);
    ASSERT_TRUE(pos->completeSale({{PaymentMethodType::card, 10, 0, {}}}));
    EXPECT_EQ(transport->sent.size(), kicks);
    EXPECT_EQ(pos->errorMessage(), std::nullopt);
}

TEST_F(POSTest, AFailedCheckoutKeepsTheCartAndThePaymentSheet)
{
    const Ref<Product> soap = scene.product({.stock = 1});
    pos->addIfSellable(soap);
    pos->addIfSellable(soap);
    ASSERT_TRUE(pos->startCheckout());
    const Cart before = pos->cart();
    EXPECT_FALSE(pos->completeSale({{PaymentMethodType::cash, 20, 20, {}}}));
    EXPECT_EQ(pos->errorMessage(), "Only 1 of Soap in stock (requested 2).");
    EXPECT_EQ(pos->cart(), before);
    EXPECT_NE(pos->paymentSheet(), nullptr);
    EXPECT_FALSE(pos->showReceiptSheet());
    EXPECT_EQ(context.count<Sale>(), 0);

    session.setCurrentTillShift(nullptr);
    EXPECT_TRUE(pos->isTillClosed());
    pos->closePaymentSheet();
    EXPECT_FALSE(pos->startCheckout());
    EXPECT_EQ(pos->paymentSheet(), nullptr);
}

TEST_F(POSTest, HoldRecallAndReplaceTheCart)
{
    const Ref<Product> soap = scene.product({});
    const Ref<Product> bread = scene.product({.name = "Bread", .price = 4});
    EXPECT_FALSE(pos->holdCurrentSale());
    EXPECT_EQ(pos->errorMessage(), "Cannot complete a sale with an empty cart.");

    pos->addIfSellable(soap);
    pos->addIfSellable(soap);
    ASSERT_TRUE(pos->holdCurrentSale());
    EXPECT_TRUE(pos->cart().lines().isEmpty());
    EXPECT_EQ(pos->heldSalesButtonText(), "Held Sales (1)");
    const Ref<HeldSale> held = pos->heldSales().activeHeldSales().value(0);
    ASSERT_NE(held, nullptr);

    // With lines in the cart the recall waits for "Replace Cart".
    pos->addIfSellable(bread);
    pos->pickHeldSale(held);
    EXPECT_EQ(pos->pendingRecall(), held);
    EXPECT_EQ(pos->replaceCartMessage(), "Recalling \"Hold #1\" will discard the 1 item(s) in the cart now. Hold "
                                         "the current sale first if you want to keep it.");
    pos->cancelReplaceCart();
    EXPECT_EQ(pos->pendingRecall(), nullptr);
    EXPECT_EQ(pos->cart().lines()[0].product, bread);
    EXPECT_EQ(held->statusRaw(), "active");

    pos->pickHeldSale(held);
    ASSERT_TRUE(pos->confirmReplaceCart());
    ASSERT_EQ(pos->cart().lines().size(), 1);
    EXPECT_EQ(pos->cart().lines()[0].product, soap);
    EXPECT_EQ(pos->cart().lines()[0].quantity, 2);
    EXPECT_EQ(held->statusRaw(), "recalled");
    EXPECT_EQ(pos->heldSaleCount(), 0);

    // Into an empty cart a hold comes back at once.
    ASSERT_TRUE(pos->holdCurrentSale());
    pos->pickHeldSale(pos->heldSales().activeHeldSales().value(0));
    EXPECT_EQ(pos->pendingRecall(), nullptr);
    EXPECT_EQ(pos->cart().lines().size(), 1);
}

TEST_F(POSTest, DiscountsAndPricesOverTheLimitWaitForAnAdmin)
{
    changeSettings([](AppSettings& s) {
        s.setDiscountLimitIsPercent(false);
        s.setDiscountLimit(5);
    });
    const Ref<Product> soap = scene.product({.price = 50});
    pos->addIfSellable(soap);

    pos->setSaleDiscountText(QStringLiteral("10"));
    pos->applySaleDiscount();
    EXPECT_EQ(pos->cart().saleDiscount(), 0) << "not before the approval";
    std::optional<ApprovalRequest> request = pos->takeApprovalRequest();
    ASSERT_TRUE(request);
    EXPECT_EQ(request->summary, "₵10.00 off a ₵50.00 sale (20%). The limit without approval is ₵5.00 (₵5.00).");
    request->onCancel();
    EXPECT_EQ(pos->saleDiscountText(), QString()) << "back to what the cart holds";

    pos->setSaleDiscountText(QStringLiteral("10"));
    pos->applySaleDiscount();
    approve(QStringLiteral("loyal customer"));
    EXPECT_EQ(pos->cart().saleDiscount(), 10);
    EXPECT_EQ(pos->cart().discountApprovedBy(), "Kwame");
    EXPECT_EQ(pos->saleDiscountText(), "10.00");

    // Within the tolerance of what the cart holds nothing happens; beyond it, asked again.
    pos->setSaleDiscountText(QStringLiteral("10.003"));
    pos->applySaleDiscount();
    EXPECT_FALSE(pos->hasApprovalRequest());
    pos->setSaleDiscountText(QStringLiteral("10.005"));
    pos->applySaleDiscount();
    ASSERT_TRUE(pos->hasApprovalRequest() || pos->cart().saleDiscount() == 10.005) << "ignored";
    if (pos->hasApprovalRequest())
        pos->takeApprovalRequest()->onCancel();

    const Cart before = pos->cart();
    pos->setSaleDiscountText(QStringLiteral("ten"));
    pos->applySaleDiscount();
    EXPECT_EQ(pos->errorMessage(), "Enter an amount such as 1,250.00.");
    EXPECT_EQ(pos->cart(), before);

    const QUuid line = pos->cart().lines()[0].id;
    ASSERT_TRUE(pos->changePrice(line, QStringLiteral("45")));
    request = pos->takeApprovalRequest();
    ASSERT_TRUE(request);
    EXPECT_EQ(request->summary, "Soap: ₵50.00 → ₵45.00 each.");
    request->perform(admin, QStringLiteral("damaged box"));
    EXPECT_EQ(pos->cart().lines()[0].priceOverride, 45);
    EXPECT_EQ(pos->cart().lines()[0].priceApprovedBy, "Kwame");
    // Back to the usual price needs nobody.
    ASSERT_TRUE(pos->changePrice(line, QStringLiteral("50.004")));
    EXPECT_FALSE(pos->hasApprovalRequest());
    EXPECT_EQ(pos->cart().lines()[0].priceOverride, std::nullopt);
}

TEST_F(POSTest, NoSaleOpensTheDrawerWithAReasonAndLogsIt)
{
    changeSettings([](AppSettings& s) { s.setCashDrawerEnabled(false); });
    pos->requestNoSale();
    std::optional<ApprovalRequest> request = pos->takeApprovalRequest();
    ASSERT_TRUE(request);
    EXPECT_TRUE(request->needsPIN);
    EXPECT_TRUE(request->reasonRequired);
    try {
        request->perform(admin, QStringLiteral("change for a 50"));
        ADD_FAILURE() << "opened a drawer that is switched off";
    } catch (const Refusal& refusal) {
        EXPECT_EQ(refusal.description(), "No cash drawer is configured. Check Settings.");
    }
    EXPECT_EQ(context.count<AuditEntry>(), 0);

    changeSettings([](AppSettings& s) { s.setCashDrawerEnabled(true); });
    pos->requestNoSale();
    approve(QStringLiteral("change for a 50"));
    const QList<Ref<AuditEntry>> logged = context.fetch<AuditEntry>();
    ASSERT_EQ(logged.size(), 1);
    EXPECT_EQ(logged[0]->actionRaw(), "noSale");
    EXPECT_EQ(logged[0]->cashierName(), "Ama");
    EXPECT_EQ(logged[0]->approverName(), "Kwame");
    EXPECT_EQ(logged[0]->reason(), "change for a 50");
}

TEST_F(POSTest, RedeemedPointsFollowIntoThePaymentSheet)
{
    changeSettings([](AppSettings& s) { s.setApproveRedeemPoints(true); });
    const Ref<Customer> kofi = scene.customer("Kofi", 300);
    pos->addIfSellable(scene.product({.price = 40}));
    pos->setCustomer(kofi);
    EXPECT_EQ(pos->customerHeader(), "Kofi · 300 pts");
    ASSERT_TRUE(pos->startCheckout());
    PaymentSheetModel& sheet = *pos->paymentSheet();
    sheet.setCashTenderedText(QStringLiteral("40"));

    sheet.setPointsText(QStringLiteral("200"));
    ASSERT_TRUE(sheet.redeem());
    std::optional<ApprovalRequest> request = pos->takeApprovalRequest();
    ASSERT_TRUE(request);
    EXPECT_EQ(request->summary, "200 points (₵10.00 off) for Kofi.");
    request->perform(admin, QString());
    EXPECT_EQ(sheet.inputs().total, 30);
    EXPECT_EQ(sheet.inputs().pointsRedeemed, 200);
    EXPECT_EQ(sheet.redeemingText(), "Redeeming 200 points: ₵10.00 before tax");
    EXPECT_EQ(sheet.cashTenderedText(), "40") << "what was typed stays";

    sheet.removePoints();
    EXPECT_FALSE(pos->hasApprovalRequest()) << "giving points back asks nobody";
    EXPECT_EQ(sheet.inputs().total, 40);
    EXPECT_EQ(pos->cart().redemptionApprovedBy(), QString());
}
