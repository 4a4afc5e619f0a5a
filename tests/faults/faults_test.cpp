// Every write a person can make, run through the fault loop of faultscene.h. The plans check what
// lives outside the store: the forms, the session, the markets list.

#include "faultscene.h"

#include "access/accountapprovals.h"
#include "access/firstrunsetupmodel.h"
#include "access/useraccountsviewmodel.h"
#include "customers/adjustpointsmodel.h"
#include "customers/customerdetailmodel.h"
#include "customers/customersviewmodel.h"
#include "customers/openingbalancemodel.h"
#include "customers/receiveaccountpaymentmodel.h"
#include "pos/posviewmodel.h"
#include "records/auditentry.h"
#include "receipts/receiptsettingsmodel.h"
#include "reports/accountmap.h"
#include "selling/salesservice.h"
#include "stock/categoriesviewmodel.h"
#include "stock/stockadjustmentmodel.h"
#include "stores/newmarketmodel.h"
#include "support/receiptdevices.h"
#include "support/testmarkets.h"
#include "till/tillviewmodel.h"

namespace {
using Entry = ProductsViewModel::Entry;

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

std::shared_ptr<ProductsViewModel> productForm(FaultScene& scene, const Ref<Product>& product = nullptr)
{
    auto model = std::make_shared<ProductsViewModel>(scene.context, scene.session);
    model->select(product);
    return model;
}

std::shared_ptr<SuppliersViewModel> supplierForm(FaultScene& scene, const Ref<Supplier>& supplier = nullptr)
{
    auto model = std::make_shared<SuppliersViewModel>(scene.context);
    model->select(supplier);
    return model;
}

std::shared_ptr<CustomerDetailModel> customerDetail(FaultScene& scene, const Ref<Customer>& customer)
{
    return std::make_shared<CustomerDetailModel>(scene.environment.accountsService(),
                                                 scene.environment.loyaltyService(), scene.context,
                                                 scene.session, customer);
}

FaultPlan checkout(FaultScene& scene)
{
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
    return {.attempt = refused([&scene, cart, payments, shift] {
                scene.environment.salesService().checkout(cart, payments, scene.cashier, shift, *scene.settings);
            }),
            .afterSuccess =
                [&scene] {
                    EXPECT_EQ(scene.settings->lastReceiptSequence(), 1);
                    EXPECT_EQ(scene.onDisk("Sale"), 1);
                    EXPECT_EQ(scene.soap->stockQuantity(), 18);
                    EXPECT_EQ(scene.kofi->loyaltyPoints(), 44);
                    EXPECT_EQ(scene.environment.accountsService().balance(scene.kofi), 5);
                }};
}

FaultPlan openAShift(FaultScene& scene)
{
    auto model = tillModel(scene);
    model->setOpeningFloatText(QStringLiteral("1,500.00"));
    return {through(*model, [model] { return model->openShift(); }),
            [&scene] { EXPECT_EQ(scene.session.currentTillShift(), nullptr); },
            [&scene] {
                ASSERT_NE(scene.session.currentTillShift(), nullptr);
                EXPECT_EQ(scene.session.currentTillShift()->openingFloat(), 1500);
                EXPECT_EQ(scene.onDisk("TillShift"), 1);
            }};
}

FaultPlan closeAShift(FaultScene& scene)
{
    const Ref<TillShift> shift = openShift(scene, 100);
    auto model = tillModel(scene);
    // The screen reads everything again after the rollback: that mustn't wipe the failure's message.
    TillViewModel* screen = model.get();
    QObject::connect(screen, &TillViewModel::tillChanged, screen, [screen, shift] {
        screen->openShiftShown();
        screen->figures(shift);
        screen->historyPage();
    });
    model->setCountedCashText(QStringLiteral("1,250.00"));
    model->setClosingNotes(QStringLiteral("end of day"));
    return {through(*model, [model, shift] { return model->closeShift(shift); }),
            [&scene, model, shift] {
                EXPECT_EQ(scene.session.currentTillShift(), shift);
                EXPECT_EQ(model->openShiftShown(), shift);
                EXPECT_EQ(model->countedCashText(), QStringLiteral("1,250.00"));
            },
            [&scene, shift] {
                EXPECT_EQ(shift->countedCash(), 1250);
                EXPECT_EQ(shift->variance(), 1150);
                EXPECT_EQ(scene.session.currentTillShift(), nullptr);
                EXPECT_EQ(scene.environment.tillService().currentOpenShift(), nullptr);
            }};
}

FaultPlan cashMovement(FaultScene& scene, CashMovementType type)
{
    const Ref<TillShift> shift = openShift(scene, 1500);
    auto model = tillModel(scene);
    model->setPayType(type);
    model->setPayAmountText(QStringLiteral("1,000"));
    model->setPayReason(QStringLiteral("Float top-up"));
    return {through(*model, [model, shift] { return model->recordCashMovement(shift); }),
            [model] { EXPECT_EQ(model->payAmountText(), QStringLiteral("1,000")); },
            [&scene, shift, type] {
                EXPECT_EQ(scene.onDisk("CashMovement"), 1);
                // A pay-out is in the audit log, written with it or not at all.
                EXPECT_EQ(scene.onDisk("AuditEntry"), type == CashMovementType::payOut ? 1 : 0);
                EXPECT_EQ(scene.environment.tillService().expectedCash(shift),
                          type == CashMovementType::payIn ? 2500 : 500);
            }};
}

FaultPlan accountPayment(FaultScene& scene)
{
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
    return {through(*model, [model] { return model->record(); }),
            [model] { EXPECT_EQ(model->amountText(), QStringLiteral("₵50.00")); },
            [&accounts, &scene, shift] {
                EXPECT_EQ(accounts.balance(scene.kofi), 30);
                EXPECT_EQ(accounts.cashReceived(shift), 50);
            }};
}

// A customer's account changes with its row in the audit log, or neither does.
std::shared_ptr<AccountApprovals> accountApprovals(FaultScene& scene)
{
    return std::make_shared<AccountApprovals>(scene.environment.approvalService(), scene.environment.accountsService(),
                                              scene.session);
}

// A cashier's adjustment, approved by the admin.
// No Sale at the counter: the drawer opens, then its row in the audit log is written.
FaultPlan noSale(FaultScene& scene)
{
    auto pos = std::make_shared<POSViewModel>(scene.environment, scene.session);
    pos->requestNoSale();
    std::optional<ApprovalRequest> request = pos->takeApprovalRequest();
    if (!request) {
        ADD_FAILURE() << "No Sale asked nothing";
        return {[]() -> std::optional<QString> { return std::nullopt; }};
    }
    return {refused([&scene, pos, perform = request->perform] { perform(scene.cashier, QStringLiteral("change")); }),
            {},
            [&scene] {
                const QList<Ref<AuditEntry>> rows =
                    scene.context.fetch<AuditEntry>(AuditEntry::Col::actionRaw == QStringLiteral("noSale"));
                ASSERT_EQ(rows.size(), 1);
                EXPECT_EQ(rows.first()->reason(), QStringLiteral("change"));
            }};
}

FaultPlan pointsAdjustment(FaultScene& scene)
{
    const Ref<User> cashier = scene.saved(FaultScene::named<User>("Yaw", [](User& user) {
        user.setUsername(QStringLiteral("yaw"));
        user.setRole(UserRole::cashier);
    }));
    scene.session.setCurrentUser(cashier);
    auto model = std::make_shared<AdjustPointsModel>(scene.environment.loyaltyService(), scene.session,
                                                     scene.kofi, nullptr);
    model->setDirection(AdjustPointsModel::Direction::remove);
    model->setPointsText(QStringLiteral("15"));
    model->setReason(QStringLiteral("correction"));
    auto approvals = accountApprovals(scene);
    const std::optional<ApprovalRequest> request = approvals->adjustPoints(*model);
    if (!request) {
        ADD_FAILURE() << "a cashier's adjustment went through without an admin";
        return {[]() -> std::optional<QString> { return std::nullopt; }};
    }
    return {[&scene, model, approvals, perform = request->perform]() -> std::optional<QString> {
                try {
                    perform(scene.cashier, QString());
                    return std::nullopt;
                } catch (const Refusal& refusal) {
                    return refusal.description();
                }
            },
            [&scene] { EXPECT_EQ(scene.kofi->loyaltyPoints(), 40); },
            [&scene] {
                EXPECT_EQ(scene.kofi->loyaltyPoints(), 25);
                EXPECT_EQ(scene.onDisk("LoyaltyEntry"), 1);
                EXPECT_EQ(scene.onDisk("AuditEntry"), 1);
            }};
}

FaultPlan stockAdjustment(FaultScene& scene, StockAdjustmentModel::Mode mode, const char* quantity,
                          double stockAfter, double costAfter)
{
    auto model = std::make_shared<StockAdjustmentModel>(scene.environment.inventoryService(), scene.context,
                                                        scene.session, scene.soap, nullptr);
    model->setMode(mode);
    model->setQuantityText(QString::fromUtf8(quantity));
    model->setUnitCostText(QStringLiteral("6.5"));
    return {.attempt = through(*model, [model] { return model->apply(); }),
            .afterSuccess = [&scene, stockAfter, costAfter] {
                EXPECT_EQ(scene.soap->stockQuantity(), stockAfter);
                EXPECT_EQ(scene.soap->costPrice(), costAfter);
                EXPECT_EQ(scene.onDisk("InventoryMovement"), 1);
            }};
}

std::shared_ptr<UserAccountsViewModel> userAccounts(FaultScene& scene)
{
    return std::make_shared<UserAccountsViewModel>(scene.context, scene.environment.authService(), scene.session);
}

FaultPlan addAUser(FaultScene& scene)
{
    auto model = userAccounts(scene);
    model->setNewUserName(QStringLiteral("Yaw"));
    model->setNewUsername(QStringLiteral("yaw"));
    model->setNewPassword(QStringLiteral("secret1"));
    model->setNewPin(QStringLiteral("4321"));
    return {through(*model, [model] { return model->createUser(); }),
            [model] { EXPECT_EQ(model->newUsername(), QStringLiteral("yaw")); },
            [&scene] { EXPECT_EQ(scene.onDisk("User"), 2); }};
}

FaultPlan setAPin(FaultScene& scene)
{
    auto model = userAccounts(scene);
    const Ref<User> cashier = scene.cashier;
    return {.attempt = [model, cashier] { return model->savePin(cashier, QStringLiteral("2468")); },
            .afterSuccess = [cashier] { EXPECT_EQ(cashier->pin(), QStringLiteral("2468")); }};
}

// A second admin, so that Ama may be demoted or switched off.
Ref<User> secondAdmin(FaultScene& scene)
{
    return scene.saved(FaultScene::named<User>("Kojo", [](User& user) {
        user.setUsername(QStringLiteral("kojo"));
        user.setRole(UserRole::admin);
    }));
}

FaultPlan editAUser(FaultScene& scene)
{
    scene.session.setCurrentUser(secondAdmin(scene));
    auto model = userAccounts(scene);
    const Ref<User> ama = scene.cashier;
    const UserEdit edit{QStringLiteral("Ama Kusi"), UserRole::cashier, QString(), QString()};
    return {.attempt = [model, ama, edit] { return model->saveEdit(ama, edit); },
            .afterFailure = [ama] { EXPECT_EQ(ama->role(), UserRole::admin); },
            .afterSuccess =
                [ama] {
                    EXPECT_EQ(ama->name(), QStringLiteral("Ama Kusi"));
                    EXPECT_EQ(ama->role(), UserRole::cashier);
                }};
}

FaultPlan resetAPassword(FaultScene& scene)
{
    auto model = userAccounts(scene);
    const Ref<User> ama = scene.cashier;
    const QString oldDigest = ama->passwordHash();
    const UserEdit edit{ama->name(), UserRole::admin, QStringLiteral("fresh start"), QStringLiteral("fresh start")};
    return {.attempt = [model, ama, edit] { return model->saveEdit(ama, edit); },
            .afterFailure = [ama, oldDigest] { EXPECT_EQ(ama->passwordHash(), oldDigest); },
            .afterSuccess = [&scene] {
                EXPECT_EQ(scene.environment.authService().login(QStringLiteral("ama"), QStringLiteral("fresh start")),
                          scene.cashier);
            }};
}

FaultPlan deactivateAUser(FaultScene& scene)
{
    scene.session.setCurrentUser(secondAdmin(scene));
    auto model = userAccounts(scene);
    const Ref<User> ama = scene.cashier;
    return {through(*model, [model, ama] { return model->setActive(ama, false); }),
            [ama] { EXPECT_TRUE(ama->isActive()); }, [ama] { EXPECT_FALSE(ama->isActive()); }};
}

// The admin's part of the first-run and New Store forms.
template <class Form> void fillAdmin(Form& form, const char* name, const char* username)
{
    form.setAdminName(QString::fromUtf8(name));
    form.setAdminUsername(QString::fromUtf8(username));
    form.setAdminPassword(QStringLiteral("secret1"));
    form.setConfirmPassword(QStringLiteral("secret1"));
}

// On a store without settings, the settings go in the same unit.
FaultPlan firstRunSetup(FaultScene& scene, bool withoutSettings)
{
    scene.session.setCurrentUser(nullptr);
    if (withoutSettings)
        performUnitOfWork(scene.context, [&] { scene.context.remove(scene.settings); });
    auto model = std::make_shared<FirstRunSetupModel>(
        scene.context, [&scene] { return scene.environment.loadOrCreateSettings(); }, scene.session);
    model->setBusinessName(QStringLiteral("Osu Provisions"));
    fillAdmin(*model, "Efua", "efua");
    return {through(*model, [model] { return model->create(); }),
            [&scene] { EXPECT_EQ(scene.session.currentUser(), nullptr); },
            [&scene] {
                EXPECT_EQ(scene.session.settings()->businessName(), QStringLiteral("Osu Provisions"));
                ASSERT_NE(scene.session.currentUser(), nullptr);
                EXPECT_EQ(scene.session.currentUser()->username(), QStringLiteral("efua"));
                EXPECT_EQ(scene.onDisk("User"), 2);
                EXPECT_EQ(scene.onDisk("AppSettings"), 1);
            }};
}

// What a failure must leave: no file in Markets, nothing listed, the running store untouched.
FaultPlan newStore(FaultScene&)
{
    auto markets = std::make_shared<TestMarkets>();
    const MarketInfo open = markets->registry.bootstrapIfNeeded();
    auto model = std::make_shared<NewMarketModel>(markets->registry);
    model->setMarketName(QStringLiteral("Osu"));
    fillAdmin(*model, "Ama Mensah", "ama");
    return {through(*model, [model] { return model->create(); }),
            [markets, open] {
                EXPECT_EQ(markets->filesInMarkets(), QStringList());
                EXPECT_EQ(markets->registry.allMarkets(), QList<MarketInfo>{open});
            },
            [markets] { EXPECT_EQ(markets->registry.allMarkets().size(), 2); }};
}

FaultPlan productCreate(FaultScene& scene)
{
    auto model = productForm(scene);
    EXPECT_NE(model->newProduct(ProductType::inventory), nullptr);
    model->editedProduct()->setName(QStringLiteral("Rice"));
    model->enter(Entry::sellingPrice, QStringLiteral("12.50"));
    return {[model] { return model->save(); },
            [model] {
                ASSERT_TRUE(model->isNewProduct());
                EXPECT_EQ(model->editedProduct()->name(), QStringLiteral("Rice"));
                EXPECT_EQ(model->editedProduct()->sellingPrice(), 12.5);
            },
            [&scene] { EXPECT_EQ(scene.context.count<Product>(Product::Col::name == "Rice"), 1); }};
}

FaultPlan productSave(FaultScene& scene)
{
    const Ref<Product> rice = scene.store.saved(FaultScene::named<Product>("Rice"));
    auto model = productForm(scene, rice);
    model->enter(Entry::costPrice, QStringLiteral("3.25"));
    model->editedProduct()->setSku(QStringLiteral("RC-1"));
    return {[model] { return model->save(); },
            [model] {
                EXPECT_TRUE(model->hasUnsavedEdits());
                EXPECT_EQ(model->editedProduct()->costPrice(), 3.25);
                EXPECT_EQ(model->editedProduct()->sku(), QStringLiteral("RC-1"));
            },
            [&scene, rice] {
                EXPECT_EQ(rice->costPrice(), 3.25);
                EXPECT_EQ(scene.context.count<InventoryMovement>(InventoryMovement::Col::product == rice), 1)
                    << "the cost line went with the cost, once";
            }};
}

FaultPlan productDelete(FaultScene& scene)
{
    const Ref<Product> rice = scene.store.saved(FaultScene::named<Product>("Rice"));
    auto model = productForm(scene, rice);
    return {through(*model, [model] { return model->deleteProduct(); }),
            [model, rice] {
                EXPECT_EQ(model->selectedProduct(), rice) << "still on the form";
                EXPECT_FALSE(rice->isDeleted());
            },
            [&scene] { EXPECT_EQ(scene.onDisk("Product"), 1); }};
}

FaultPlan categoryFromTheProductForm(FaultScene& scene)
{
    auto model = productForm(scene);
    return {.attempt = [model] { return model->createCategory("Grains", "#34C759").errorMessage; },
            .afterSuccess = [&scene] { EXPECT_EQ(scene.onDisk("Category"), 1); }};
}

FaultPlan categoryRename(FaultScene& scene)
{
    const Ref<Category> drinks = scene.saved(FaultScene::named<Category>("Drinks"));
    auto model = std::make_shared<CategoriesViewModel>(scene.context);
    return {.attempt = [model, drinks] { return model->rename(drinks->id(), QStringLiteral("Cold Drinks")); },
            .afterFailure = [drinks] { EXPECT_EQ(drinks->name(), QStringLiteral("Drinks")); },
            .afterSuccess = [drinks] { EXPECT_EQ(drinks->name(), QStringLiteral("Cold Drinks")); }};
}

FaultPlan categoryDelete(FaultScene& scene)
{
    const Ref<Category> drinks = scene.saved(FaultScene::named<Category>("Drinks"));
    performUnitOfWork(scene.context, [&] { scene.soap->setCategory(drinks); });
    auto model = std::make_shared<CategoriesViewModel>(scene.context);
    return {.attempt = [model, drinks] { return model->remove(drinks->id()); },
            .afterFailure =
                [&scene, drinks] {
                    EXPECT_FALSE(drinks->isDeleted());
                    EXPECT_EQ(scene.soap->category(), drinks);
                },
            .afterSuccess =
                [&scene] {
                    EXPECT_EQ(scene.onDisk("Category"), 0);
                    EXPECT_EQ(scene.onDisk("Product"), 1) << "its products stay";
                    EXPECT_EQ(scene.soap->category(), nullptr);
                }};
}

FaultPlan supplierFromTheProductForm(FaultScene& scene)
{
    auto model = productForm(scene);
    return {.attempt = [model] { return model->createSupplier(QStringLiteral("Osei")).errorMessage; },
            .afterSuccess = [&scene] { EXPECT_EQ(scene.onDisk("Supplier"), 2); }};
}

FaultPlan supplierCreate(FaultScene& scene)
{
    auto model = supplierForm(scene);
    model->addSupplier()->setName(QStringLiteral("Akosua"));
    return {[model] { return model->save(); },
            [model] {
                ASSERT_TRUE(model->isNewSupplier());
                EXPECT_EQ(model->editedSupplier()->name(), QStringLiteral("Akosua"));
            },
            [&scene] { EXPECT_EQ(scene.onDisk("Supplier"), 2); }};
}

FaultPlan supplierSave(FaultScene& scene)
{
    const Ref<Supplier> bolt = scene.store.saved(FaultScene::named<Supplier>("Bolt"));
    auto model = supplierForm(scene, bolt);
    model->editedSupplier()->setPhone(QStringLiteral("020 111"));
    return {[model] { return model->save(); },
            [model] { EXPECT_EQ(model->editedSupplier()->phone(), QStringLiteral("020 111")); },
            [bolt] { EXPECT_EQ(bolt->phone(), QStringLiteral("020 111")); }};
}

FaultPlan supplierDelete(FaultScene& scene)
{
    const Ref<Supplier> bolt = scene.store.saved(FaultScene::named<Supplier>("Bolt"));
    auto model = supplierForm(scene, bolt);
    return {through(*model, [model] { return model->deleteSupplier(); }),
            [model, bolt] { EXPECT_EQ(model->selectedSupplier(), bolt); },
            [&scene] { EXPECT_EQ(scene.onDisk("Supplier"), 1); }};
}

FaultPlan customerCreate(FaultScene& scene)
{
    auto detail = customerDetail(scene, CustomersViewModel::addCustomer());
    detail->setName(QStringLiteral("Ama"));
    detail->setAllowCredit(true);
    detail->setCreditLimitText(QStringLiteral("1,000"));
    return {through(*detail, [detail] { return detail->save(); }),
            [detail] {
                EXPECT_TRUE(detail->isNew());
                EXPECT_EQ(detail->name(), QStringLiteral("Ama"));
                EXPECT_EQ(detail->creditLimitText(), QStringLiteral("1,000"));
                EXPECT_TRUE(detail->hasUnsavedEdits());
            },
            [&scene, detail] {
                EXPECT_EQ(scene.context.count<Customer>(Customer::Col::name == "Ama"), 1);
                EXPECT_EQ(detail->customer()->creditLimit(), 1000);
            }};
}

FaultPlan customerSave(FaultScene& scene)
{
    auto detail = customerDetail(scene, scene.kofi);
    detail->setPhone(typedPhone);
    return {through(*detail, [detail] { return detail->save(); }),
            [detail] { EXPECT_EQ(detail->phone(), typedPhone); },
            [&scene] { EXPECT_EQ(scene.kofi->phone(), typedPhone); }};
}

// The admin's change of a customer's credit, which goes through at once.
FaultPlan customerCredit(FaultScene& scene)
{
    auto detail = customerDetail(scene, scene.kofi);
    detail->setCreditLimitText(QStringLiteral("1,250.00"));
    auto approvals = accountApprovals(scene);
    return {through(*detail,
                    [detail, approvals] {
                        EXPECT_FALSE(approvals->saveCustomer(*detail));
                        return !detail->errorMessage();
                    }),
            [&scene, detail] {
                EXPECT_EQ(scene.kofi->creditLimit(), 0);
                EXPECT_EQ(detail->creditLimitText(), QStringLiteral("1,250.00"));
            },
            [&scene] {
                EXPECT_EQ(scene.kofi->creditLimit(), 1250);
                EXPECT_EQ(scene.onDisk("AuditEntry"), 1);
            }};
}

// The admin's opening balance, which goes through at once with its row in the log.
FaultPlan openingBalance(FaultScene& scene)
{
    auto model = std::make_shared<OpeningBalanceModel>(scene.environment.accountsService(), scene.session,
                                                       scene.kofi, nullptr);
    model->setAmountText(QStringLiteral("1,250.00"));
    model->setOwedSince(OpeningBalanceModel::latestDay().addDays(-45));
    auto approvals = accountApprovals(scene);
    AccountsService& accounts = scene.environment.accountsService();
    return {through(*model,
                    [model, approvals] {
                        EXPECT_FALSE(approvals->enterOpeningBalance(*model));
                        return !model->errorMessage();
                    }),
            [&accounts, &scene, model] {
                EXPECT_EQ(accounts.balance(scene.kofi), 0);
                EXPECT_EQ(model->amountText(), QStringLiteral("1,250.00"));
            },
            [&accounts, &scene] {
                EXPECT_EQ(accounts.balance(scene.kofi), 1250);
                EXPECT_EQ(scene.onDisk("AccountOpeningBalance"), 1);
                EXPECT_EQ(scene.onDisk("AuditEntry"), 1);
            }};
}

FaultPlan customerDelete(FaultScene& scene)
{
    auto detail = customerDetail(scene, scene.kofi);
    auto approvals = accountApprovals(scene);
    return {through(*detail,
                    [detail, approvals] {
                        EXPECT_FALSE(approvals->deleteCustomer(*detail));
                        return !detail->errorMessage();
                    }),
            [&scene] { EXPECT_FALSE(scene.kofi->isDeleted()); },
            [&scene] {
                EXPECT_EQ(scene.onDisk("Customer"), 0);
                EXPECT_EQ(scene.onDisk("AuditEntry"), 1);
            }};
}

// Devices that stand still: only the store can fail.
struct QuietDevices {
    ListedPrinters directory;
    RecordedReceiptPrinter printer;
    RecordedDrawer drawer;
};

FaultPlan receiptSetting(FaultScene& scene, const std::function<void(ReceiptSettingsModel&)>& change,
                         const std::function<bool(const AppSettings&)>& isChanged)
{
    auto devices = std::make_shared<QuietDevices>();
    devices->directory.printers = {{QStringLiteral("Receipt"), QStringLiteral("Epson TM-T20")}};
    auto model = std::make_shared<ReceiptSettingsModel>(scene.context, scene.settings, devices->directory,
                                                        devices->printer, devices->drawer);
    const Ref<AppSettings> settings = scene.settings;
    return {[devices, model, change]() -> std::optional<QString> {
                change(*model);
                return model->errorMessage();
            },
            [settings, isChanged] { EXPECT_FALSE(isChanged(*settings)); },
            [settings, isChanged] { EXPECT_TRUE(isChanged(*settings)); }};
}

FaultPlan accountMap(FaultScene& scene)
{
    AccountMap accounts;
    accounts.names.insert(QStringLiteral("cash"), QStringLiteral("Till 1"));
    accounts.codes.insert(QStringLiteral("sales"), QStringLiteral("4100"));
    const Ref<AppSettings> settings = scene.settings;
    const QString before = settings->accountingAccountsJSON();
    return {refused([&scene, settings, accounts] {
                scene.environment.accountingExportService().saveAccountMap(*settings, accounts);
            }),
            [settings, before] { EXPECT_EQ(settings->accountingAccountsJSON(), before); },
            [settings, accounts] { EXPECT_EQ(AccountMap::decode(settings->accountingAccountsJSON()), accounts); }};
}

struct Write {
    const char* name;
    std::function<FaultPlan(FaultScene&)> prepare;
};

[[maybe_unused]] void PrintTo(const Write& write, std::ostream* out)
{
    *out << write.name;
}

using Mode = StockAdjustmentModel::Mode;
const Write writes[] = {
    {"Checkout", checkout},
    {"OpenAShift", openAShift},
    {"CloseAShift", closeAShift},
    {"PayIn", [](FaultScene& scene) { return cashMovement(scene, CashMovementType::payIn); }},
    {"PayOut", [](FaultScene& scene) { return cashMovement(scene, CashMovementType::payOut); }},
    {"AccountPayment", accountPayment},
    {"PointsAdjustment", pointsAdjustment},
    {"NoSale", noSale},
    {"StockIn", [](FaultScene& scene) { return stockAdjustment(scene, Mode::stockIn, "5", 25, 4.5); }},
    {"StockOut", [](FaultScene& scene) { return stockAdjustment(scene, Mode::stockOut, "3", 17, 4); }},
    {"StockCount", [](FaultScene& scene) { return stockAdjustment(scene, Mode::adjust, "0", 0, 4); }},
    {"AddAUser", addAUser},
    {"SetAPin", setAPin},
    {"EditAUser", editAUser},
    {"ResetAPassword", resetAPassword},
    {"DeactivateAUser", deactivateAUser},
    {"FirstRunSetup", [](FaultScene& scene) { return firstRunSetup(scene, false); }},
    {"FirstRunSetupOnANewStore", [](FaultScene& scene) { return firstRunSetup(scene, true); }},
    {"NewStore", newStore},
    {"ProductCreate", productCreate},
    {"ProductSave", productSave},
    {"ProductDelete", productDelete},
    {"CategoryFromTheProductForm", categoryFromTheProductForm},
    {"CategoryRename", categoryRename},
    {"CategoryDelete", categoryDelete},
    {"SupplierFromTheProductForm", supplierFromTheProductForm},
    {"SupplierCreate", supplierCreate},
    {"SupplierSave", supplierSave},
    {"SupplierDelete", supplierDelete},
    {"CustomerCreate", customerCreate},
    {"CustomerSave", customerSave},
    {"CustomerCredit", customerCredit},
    {"CustomerDelete", customerDelete},
    {"OpeningBalance", openingBalance},
    {"AccountMap", accountMap},
    {"ReceiptPrinter",
     [](FaultScene& scene) {
         return receiptSetting(
             scene, [](ReceiptSettingsModel& m) { m.choosePrinter(m.printerChoices().last().printer); },
             [](const AppSettings& s) { return s.receiptPrinterQueue() == "Receipt"; });
     }},
    {"ReceiptFooter",
     [](FaultScene& scene) {
         return receiptSetting(
             scene, [](ReceiptSettingsModel& m) { m.setReceiptFooter("Akwaaba!"); },
             [](const AppSettings& s) { return s.receiptFooter() == "Akwaaba!"; });
     }},
    {"DrawerConnection",
     [](FaultScene& scene) {
         return receiptSetting(
             scene, [](ReceiptSettingsModel& m) { m.setDrawerConnection(CashDrawerConnection::receiptPrinter); },
             [](const AppSettings& s) { return s.cashDrawerConnectionRaw() == "receiptPrinter"; });
     }},
};

class FaultLoop : public ::testing::TestWithParam<Write> {};
} // namespace

TEST_P(FaultLoop, EveryFailedCallLeavesAllAsItWasAndTheRetryGoesThroughOnce)
{
    runFaultLoops(GetParam().name, GetParam().prepare);
}

INSTANTIATE_TEST_SUITE_P(EveryWrite, FaultLoop, ::testing::ValuesIn(writes),
                         [](const auto& info) { return std::string(info.param.name); });
