// Every write made at the counter, failed at each of its calls into SQLite in turn: each failure
// must show a plain sentence and leave file, memory and the other screen's draft as they were, and
// the write must then go through when tried again.

#include "faultscene.h"

#include "customers/adjustpointsmodel.h"
#include "customers/receiveaccountpaymentmodel.h"
#include "selling/salesservice.h"
#include "stock/stockadjustmentmodel.h"
#include "till/tillviewmodel.h"

namespace {

std::shared_ptr<TillViewModel> tillModel(FaultScene& scene)
{
    return std::make_shared<TillViewModel>(scene.environment.tillService(), scene.environment.accountsService(),
                                           scene.environment.approvalService(), scene.context, scene.session);
}

Ref<TillShift> openShift(FaultScene& scene, double openingFloat)
{
    const Ref<TillShift> shift = scene.environment.tillService().openShift(scene.cashier, openingFloat);
    scene.session.setCurrentTillShift(shift);
    return shift;
}

} // namespace

TEST(Faults, Checkout)
{
    runFaultLoops("checkout", [](FaultScene& scene) {
        const Ref<TillShift> shift = openShift(scene, 50);
        performUnitOfWork(scene.context, [&] {
            scene.settings->setLoyaltyEnabled(true);
            scene.settings->setLoyaltySpendPerPoint(5);
        });
        Cart cart;
        cart.addOrIncrement(scene.soap, 2);
        cart.setCustomer(scene.kofi);
        const QList<PaymentInput> payments{{PaymentMethodType::cash, 15, 20, {}},
                                           {PaymentMethodType::onAccount, 5, 0, {}}};
        const auto checkout = [&scene, cart, payments, shift]() -> std::optional<QString> {
            try {
                scene.environment.salesService().checkout(cart, payments, scene.cashier, shift,
                                                          *scene.settings);
                return std::nullopt;
            } catch (const Refusal& refusal) {
                return refusal.description();
            }
        };
        return FaultPlan{checkout,
                         [&scene] {
                             // The receipt number a failure took is given back, and so is the stock.
                             EXPECT_EQ(scene.settings->lastReceiptSequence(), 0);
                             EXPECT_EQ(scene.soap->stockQuantity(), 20);
                             EXPECT_EQ(scene.kofi->loyaltyPoints(), 40);
                         },
                         [&scene] {
                             EXPECT_EQ(scene.settings->lastReceiptSequence(), 1);
                             EXPECT_EQ(countRowsOnDisk(scene.store.path(), QStringLiteral("Sale")), 1);
                             EXPECT_EQ(scene.soap->stockQuantity(), 18);
                             EXPECT_EQ(scene.kofi->loyaltyPoints(), 44);
                             EXPECT_EQ(scene.environment.accountsService().balance(scene.kofi), 5);
                         }};
    });
}

TEST(Faults, OpenShift)
{
    runFaultLoops("open a shift", [](FaultScene& scene) {
        auto model = tillModel(scene);
        model->setOpeningFloatText(QStringLiteral("1,500.00"));
        return FaultPlan{through(*model, [model] { return model->openShift(); }),
                         [&scene] { EXPECT_EQ(scene.session.currentTillShift(), nullptr); },
                         [&scene] {
                             ASSERT_NE(scene.session.currentTillShift(), nullptr);
                             EXPECT_EQ(scene.session.currentTillShift()->openingFloat(), 1500);
                             EXPECT_EQ(countRowsOnDisk(scene.store.path(), QStringLiteral("TillShift")), 1);
                         }};
    });
}

TEST(Faults, CloseShift)
{
    runFaultLoops("close a shift", [](FaultScene& scene) {
        const Ref<TillShift> shift = openShift(scene, 100);
        auto model = tillModel(scene);
        model->setCountedCashText(QStringLiteral("1,250.00"));
        model->setClosingNotes(QStringLiteral("end of day"));
        return FaultPlan{through(*model, [model, shift] { return model->closeShift(shift); }),
                         [&scene, model, shift] {
                             // Still open everywhere, so Close works again.
                             EXPECT_EQ(shift->statusRaw(), TillService::openStatus());
                             EXPECT_EQ(shift->closedAt(), std::nullopt);
                             EXPECT_EQ(scene.environment.tillService().currentOpenShift(), shift);
                             EXPECT_EQ(scene.session.currentTillShift(), shift);
                             EXPECT_EQ(model->countedCashText(), QStringLiteral("1,250.00"));
                         },
                         [&scene, shift] {
                             EXPECT_EQ(shift->countedCash(), 1250);
                             EXPECT_EQ(shift->variance(), 1150);
                             EXPECT_EQ(scene.session.currentTillShift(), nullptr);
                             EXPECT_EQ(scene.environment.tillService().currentOpenShift(), nullptr);
                         }};
    });
}

TEST(Faults, PayInAndPayOut)
{
    for (const CashMovementType type : {CashMovementType::payIn, CashMovementType::payOut}) {
        runFaultLoops(type == CashMovementType::payIn ? "pay-in" : "pay-out", [type](FaultScene& scene) {
            const Ref<TillShift> shift = openShift(scene, 100);
            auto model = tillModel(scene);
            model->setPayType(type);
            model->setPayAmountText(QStringLiteral("1,000"));
            model->setPayReason(QStringLiteral("Float top-up"));
            return FaultPlan{through(*model, [model, shift] { return model->recordCashMovement(shift); }),
                             [model] { EXPECT_EQ(model->payAmountText(), QStringLiteral("1,000")); },
                             [&scene, shift, type] {
                                 EXPECT_EQ(
                                     countRowsOnDisk(scene.store.path(), QStringLiteral("CashMovement")), 1);
                                 EXPECT_EQ(scene.environment.tillService().expectedCash(shift),
                                           type == CashMovementType::payIn ? 1100 : -900);
                             }};
        });
    }
}

TEST(Faults, AccountPayment)
{
    runFaultLoops("account payment", [](FaultScene& scene) {
        const Ref<TillShift> shift = openShift(scene, 0);
        performUnitOfWork(scene.context, [&] {
            const Ref<Sale> sale = Sale::make(QStringLiteral("INV-1"), scene.cashier, scene.kofi, shift);
            scene.context.insert(sale);
            const Ref<Payment> payment = Payment::make(PaymentMethodType::onAccount, 80, 80, 0, {});
            payment->setSale(sale);
            scene.context.insert(payment);
        });
        auto model = std::make_shared<ReceiveAccountPaymentModel>(scene.environment.accountsService(),
                                                                  scene.session, scene.kofi, 80, nullptr);
        model->setAmountText(QStringLiteral("₵50.00"));
        AccountsService& accounts = scene.environment.accountsService();
        return FaultPlan{through(*model, [model] { return model->record(); }),
                         [&accounts, &scene] { EXPECT_EQ(accounts.balance(scene.kofi), 80); },
                         [&accounts, &scene, shift] {
                             EXPECT_EQ(accounts.balance(scene.kofi), 30);
                             EXPECT_EQ(accounts.cashReceived(shift), 50);
                         }};
    });
}

TEST(Faults, PointsAdjustment)
{
    runFaultLoops("points adjustment", [](FaultScene& scene) {
        auto model = std::make_shared<AdjustPointsModel>(scene.environment.loyaltyService(), scene.session,
                                                         scene.kofi, nullptr);
        model->setDirection(AdjustPointsModel::Direction::remove);
        model->setPointsText(QStringLiteral("15"));
        model->setReason(QStringLiteral("correction"));
        return FaultPlan{through(*model, [model] { return model->save(); }),
                         [&scene] { EXPECT_EQ(scene.kofi->loyaltyPoints(), 40); },
                         [&scene] {
                             EXPECT_EQ(scene.kofi->loyaltyPoints(), 25);
                             EXPECT_EQ(countRowsOnDisk(scene.store.path(), QStringLiteral("LoyaltyEntry")),
                                       1);
                         }};
    });
}

TEST(Faults, StockInOutAndCount)
{
    const struct {
        const char* write;
        StockAdjustmentModel::Mode mode;
        const char* quantity;
        double stockAfter;
        double costAfter;
    } cases[] = {
        {"stock in", StockAdjustmentModel::Mode::stockIn, "5", 25, 4.5},
        {"stock out", StockAdjustmentModel::Mode::stockOut, "3", 17, 4},
        {"stock count", StockAdjustmentModel::Mode::adjust, "0", 0, 4},
    };
    for (const auto& c : cases) {
        runFaultLoops(c.write, [&c](FaultScene& scene) {
            auto model = std::make_shared<StockAdjustmentModel>(
                scene.environment.inventoryService(), scene.context, scene.session, scene.soap, nullptr);
            model->setMode(c.mode);
            model->setQuantityText(QString::fromUtf8(c.quantity));
            model->setUnitCostText(QStringLiteral("6.5"));
            return FaultPlan{
                through(*model, [model] { return model->apply(); }),
                [&scene] {
                    EXPECT_EQ(scene.soap->stockQuantity(), 20);
                    EXPECT_EQ(scene.soap->costPrice(), 4);
                },
                [&scene, &c] {
                    EXPECT_EQ(scene.soap->stockQuantity(), c.stockAfter);
                    EXPECT_EQ(scene.soap->costPrice(), c.costAfter);
                    EXPECT_EQ(countRowsOnDisk(scene.store.path(), QStringLiteral("InventoryMovement")), 1);
                }};
        });
    }
}
