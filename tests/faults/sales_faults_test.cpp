// The sale at the counter and the writes after it (refund, void, hold, recall, cancelling a hold),
// run through the fault loop of faultscene.h.

#include "faultscene.h"

#include "pos/posviewmodel.h"
#include "selling/heldsalesmodel.h"
#include "selling/salesservice.h"
#include "ui/history/voidsalesheetmodel.h"
#include "ui/refunds/refundviewmodel.h"

namespace {

// Two bars of soap to Kofi, half on his account, in the open till.
Ref<Sale> ringUpSoap(FaultScene& scene)
{
    const Ref<TillShift> shift = scene.environment.tillService().openShift(scene.cashier, 50);
    scene.session.setCurrentTillShift(shift);
    Cart cart;
    cart.addOrIncrement(scene.soap, 2);
    cart.setCustomer(scene.kofi);
    return scene.environment.salesService().checkout(
        cart, {{PaymentMethodType::cash, 15, 20, {}}, {PaymentMethodType::onAccount, 5, 0, {}}},
        scene.cashier, shift, *scene.settings);
}

Ref<HeldSale> holdSoap(FaultScene& scene, std::optional<qint64> sequence = std::nullopt)
{
    Cart cart;
    cart.addOrIncrement(scene.soap, 2);
    return scene.environment.salesService().hold(cart, scene.cashier, QString(), sequence);
}

// What neither a failed refund nor a failed void may leave behind.
void expectSaleUntouched(FaultScene& scene, const Ref<Sale>& sale)
{
    EXPECT_EQ(scene.settings->lastReceiptSequence(), 1);
    EXPECT_EQ(sale->status(), SaleStatus::completed);
    EXPECT_EQ(sale->items().first()->returnedQuantity(), 0);
    EXPECT_EQ(scene.soap->stockQuantity(), 18);
    EXPECT_EQ(scene.kofi->loyaltyPoints(), 42);
    EXPECT_EQ(scene.environment.accountsService().balance(scene.kofi), 5);
    EXPECT_EQ(scene.onDisk("Sale"), 1);
    EXPECT_EQ(scene.onDisk("AuditEntry"), 0);
}

} // namespace

TEST(Faults, Refund)
{
    runFaultLoops("refund", [](FaultScene& scene) {
        const Ref<Sale> sale = ringUpSoap(scene);
        auto model = std::make_shared<RefundViewModel>(scene.environment, scene.session);
        model->setReceiptQuery(sale->invoiceNumber());
        model->search();
        model->setReturnQuantity(*model->lines().first(), 1);
        model->setRefundMethod(PaymentMethodType::onAccount);
        return FaultPlan{through(*model, [model] { return model->processRefund(nullptr); }),
                         [&scene, model, sale] {
                             expectSaleUntouched(scene, sale);
                             EXPECT_EQ(model->foundSale(), sale) << "kept for the button to work again";
                             EXPECT_EQ(model->selectedEntries().size(), 1);
                             EXPECT_EQ(model->completedRefund(), nullptr);
                         },
                         [&scene, sale] {
                             EXPECT_EQ(scene.settings->lastReceiptSequence(), 2);
                             EXPECT_EQ(scene.onDisk("Sale"), 2);
                             EXPECT_EQ(scene.onDisk("AuditEntry"), 1);
                             EXPECT_EQ(sale->status(), SaleStatus::partiallyRefunded);
                             EXPECT_EQ(scene.soap->stockQuantity(), 19);
                             EXPECT_EQ(scene.environment.accountsService().balance(scene.kofi), -5);
                         }};
    });
}

TEST(Faults, Void)
{
    runFaultLoops("void", [](FaultScene& scene) {
        const Ref<Sale> sale = ringUpSoap(scene);
        auto done = std::make_shared<int>(0);
        auto model =
            std::make_shared<VoidSaleSheetModel>(sale, scene.environment, scene.session, [done] { ++*done; });
        model->setReason(QStringLiteral("rung up twice"));
        return FaultPlan{through(*model, [model] { return model->performVoid(nullptr); }),
                         [&scene, model, sale, done] {
                             expectSaleUntouched(scene, sale);
                             EXPECT_EQ(*done, 0);
                             EXPECT_EQ(model->reason(), "rung up twice");
                         },
                         [&scene, sale, done] {
                             EXPECT_EQ(sale->status(), SaleStatus::voided);
                             EXPECT_EQ(scene.soap->stockQuantity(), 20);
                             EXPECT_EQ(scene.kofi->loyaltyPoints(), 40);
                             EXPECT_EQ(scene.environment.accountsService().balance(scene.kofi), 0);
                             EXPECT_EQ(scene.onDisk("AuditEntry"), 1);
                             EXPECT_EQ(*done, 1);
                         }};
    });
}

TEST(Faults, Hold)
{
    runFaultLoops("hold", [](FaultScene& scene) {
        // Numbered by the caller: a count that fails only costs the label its number, so failing
        // it would end the loop before any write was failed.
        return FaultPlan{refused([&scene] { holdSoap(scene, 1); }), [&scene] { EXPECT_EQ(scene.context.count<HeldSale>(), 0); },
                         [&scene] {
                             const QList<Ref<HeldSale>> held = scene.context.fetch<HeldSale>();
                             ASSERT_EQ(held.size(), 1);
                             EXPECT_EQ(held[0]->label(), "Hold #1");
                             EXPECT_EQ(scene.onDisk("HeldSaleItem"), 1);
                         }};
    });
}

TEST(Faults, RecallAndCancelAHold)
{
    for (const bool recall : {true, false}) {
        runFaultLoops(recall ? "recall a hold" : "cancel a hold", [recall](FaultScene& scene) {
            const Ref<HeldSale> held = holdSoap(scene);
            auto model = std::make_shared<HeldSalesModel>(scene.context);
            auto cart = std::make_shared<std::optional<Cart>>();
            const auto attempt = [model, held, recall, cart] {
                if (!recall)
                    return model->cancel(held);
                *cart = model->recall(held);
                return cart->has_value();
            };
            return FaultPlan{through(*model, attempt), [held] { EXPECT_EQ(held->statusRaw(), "active"); },
                             [held, recall, cart, model] {
                                 EXPECT_EQ(held->statusRaw(), recall ? "recalled" : "cancelled");
                                 EXPECT_TRUE(model->activeHeldSales().isEmpty());
                                 EXPECT_TRUE(!recall || cart->value().lines().size() == 1);
                             }};
        });
    }
}

// The counter's Complete Sale: a failure leaves the cart and the open payment sheet as they were, for
// the cashier to press it again.
TEST(Faults, CompleteSale)
{
    runFaultLoops("complete a sale", [](FaultScene& scene) {
        scene.session.setCurrentTillShift(scene.environment.tillService().openShift(scene.cashier, 50));
        auto pos = std::make_shared<POSViewModel>(scene.environment, scene.session);
        pos->addIfSellable(scene.soap);
        pos->addIfSellable(scene.soap);
        pos->setCustomer(scene.kofi);
        EXPECT_TRUE(pos->startCheckout());
        const Cart before = pos->cart();
        const QList<PaymentInput> payments{{PaymentMethodType::cash, 20, 50, {}}};
        return FaultPlan{through(*pos, [pos, payments] { return pos->completeSale(payments); }),
                         [&scene, pos, before] {
                             EXPECT_EQ(pos->cart(), before);
                             EXPECT_NE(pos->paymentSheet(), nullptr);
                             EXPECT_FALSE(pos->showReceiptSheet());
                             EXPECT_EQ(pos->lastCompletedSale(), nullptr);
                             EXPECT_EQ(scene.settings->lastReceiptSequence(), 0);
                             EXPECT_EQ(scene.soap->stockQuantity(), 20);
                             EXPECT_EQ(scene.onDisk("Sale"), 0);
                         },
                         [&scene, pos] {
                             EXPECT_TRUE(pos->cart().lines().isEmpty());
                             EXPECT_TRUE(pos->showReceiptSheet());
                             ASSERT_NE(pos->lastCompletedSale(), nullptr);
                             EXPECT_EQ(pos->lastCompletedSale()->invoiceNumber().right(4), "0001");
                             EXPECT_EQ(scene.settings->lastReceiptSequence(), 1);
                             EXPECT_EQ(scene.onDisk("Sale"), 1);
                             EXPECT_EQ(scene.onDisk("Payment"), 1);
                             EXPECT_EQ(scene.soap->stockQuantity(), 18);
                         }};
    });
}
