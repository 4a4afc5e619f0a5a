#include "ui/refunds/refundviewmodel.h"

#include "environment/appenvironment.h"
#include "startup/sessionstore.h"
#include "support/printers.h"
#include "support/salesscene.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

namespace {
struct RefundViewModelTest : ::testing::Test {
    TestStore store;
    ModelContext& context = store.context();
    Clock::Override clock{QDateTime(QDate(2026, 3, 9), QTime(10, 30))};
    AppEnvironment environment{context};
    SessionStore session;
    SalesScene scene{context};
    Ref<AppSettings> settings = environment.loadOrCreateSettings();
    Ref<User> cashier = scene.user("Ama", UserRole::cashier);
    Ref<User> admin = scene.user("Esi", UserRole::admin);
    Ref<Product> soap = scene.product({.name = "Soap", .price = 10});
    Ref<Product> rice = scene.product({.name = "Rice", .price = 8, .unit = SellingUnit::kg});
    RefundViewModel model{environment, session};

    RefundViewModelTest()
    {
        session.setSettings(settings);
        session.setCurrentUser(cashier);
    }

    Ref<Sale> sellSoapAndRice(const Ref<Customer>& customer = nullptr)
    {
        Cart cart;
        cart.addOrIncrement(soap, 3);
        cart.addOrIncrement(rice, 0.25);
        cart.setCustomer(customer);
        return environment.salesService().checkout(cart, SalesScene::paidBy(cart, *settings), cashier, nullptr,
                                                   *settings);
    }
    void find(const QString& invoice)
    {
        model.setReceiptQuery(invoice);
        model.search();
    }
    const SaleItem& line(const Ref<Product>& product) const
    {
        for (const Ref<SaleItem>& item : model.lines())
            if (item->product() == product)
                return *item;
        throw std::logic_error("no such line");
    }
};
} // namespace

TEST_F(RefundViewModelTest, TheSearchTakesOnlyAnOriginalSaleByItsExactNumber)
{
    const Ref<Sale> sale = sellSoapAndRice();
    const Ref<Sale> voided = sellSoapAndRice();
    performUnitOfWork(context, [&] { voided->setStatus(SaleStatus::voided); });
    const Ref<Sale> refund = environment.salesService().writeRefund(
        sale, {{sale->items().first(), 1}}, QStringLiteral("x"), cashier, nullptr, PaymentMethodType::cash, *settings);

    const auto notFound = [](const char* query) {
        return QStringLiteral("No original sale found for receipt \"%1\".").arg(QString::fromUtf8(query));
    };
    const struct {
        const char* name;
        QString query;
        Ref<Sale> found;
        std::optional<QString> message;
    } cases[] = {
        {"blank says nothing", QStringLiteral(" \n"), nullptr, std::nullopt},
        {"trimmed", QStringLiteral("  INV-20260309-0001\n"), sale, std::nullopt},
        {"exact case", QStringLiteral("inv-20260309-0001"), nullptr, notFound("inv-20260309-0001")},
        {"no part of a number", QStringLiteral("INV-20260309"), nullptr, notFound("INV-20260309")},
        {"a refund isn't refunded", refund->invoiceNumber(), nullptr, notFound("INV-20260309-0003")},
        {"voided", voided->invoiceNumber(), nullptr,
         QStringLiteral("Receipt INV-20260309-0002 was voided, so there's nothing to refund.")},
    };
    for (const auto& c : cases) {
        model.setReturnQuantity(*sale->items().first(), 1);
        find(c.query);
        EXPECT_EQ(model.foundSale(), c.found) << c.name;
        EXPECT_EQ(model.errorMessage(), c.message) << c.name;
        EXPECT_TRUE(model.selectedEntries().isEmpty()) << c.name << ": a search starts the entries again";
    }
}

TEST_F(RefundViewModelTest, QuantitiesStayWithinWhatIsLeftAndMeasuredOnesAreTyped)
{
    const Ref<Sale> sale = sellSoapAndRice();
    find(sale->invoiceNumber());
    performUnitOfWork(context, [&] { sale->items()[1]->setReturnedQuantity(0.1); });
    const SaleItem& riceLine = line(rice);
    EXPECT_DOUBLE_EQ(RefundViewModel::remaining(riceLine), 0.15);
    EXPECT_FALSE(RefundViewModel::takesTypedQuantity(SellingUnit::g));

    const struct {
        const char* typed;
        double held;
    } typing[] = {
        {"0.16", 0.15}, // cut back to what is eligible
        {"0,12", 0.12}, {"abc", 0.12}, {"-1", 0.12}, {"inf", 0.12}, {"0", 0.12}, {"0.1234", 0.123}, {" ", 0},
    };
    for (const auto& t : typing) {
        model.setReturnQuantityText(riceLine, QString::fromUtf8(t.typed));
        EXPECT_DOUBLE_EQ(model.returnQuantity(riceLine), t.held) << "typed " << t.typed;
    }

    const SaleItem& soapLine = line(soap);
    model.setReturnQuantity(soapLine, 5);
    EXPECT_DOUBLE_EQ(model.returnQuantity(soapLine), 3);
    model.setReturnQuantityText(soapLine, QStringLiteral("1.5"));
    EXPECT_DOUBLE_EQ(model.returnQuantity(soapLine), 3) << "counted units come back whole";
}

TEST_F(RefundViewModelTest, ARefusedRefundWritesNothingAndKeepsTheForm)
{
    const Ref<Sale> walkIn = sellSoapAndRice();
    find(walkIn->invoiceNumber());
    const qint64 sequence = settings->lastReceiptSequence();
    const auto refusal = [&] {
        EXPECT_FALSE(model.processRefund(nullptr));
        EXPECT_EQ(context.count<Sale>(), 1);
        EXPECT_EQ(context.count<AuditEntry>(), 0);
        EXPECT_EQ(settings->lastReceiptSequence(), sequence);
        return model.errorMessage().value_or(QString());
    };

    EXPECT_EQ(refusal(), "Select at least one item and quantity to refund.");
    model.setReturnQuantity(line(soap), 2);
    model.setRefundMethod(PaymentMethodType::onAccount);
    EXPECT_EQ(refusal(), "Add a customer to the sale to put it On Account.");
    EXPECT_DOUBLE_EQ(model.returnQuantity(line(soap)), 2) << "the entries stay";

    // Another screen refunds two meanwhile.
    model.setRefundMethod(PaymentMethodType::cash);
    environment.salesService().writeRefund(walkIn, {{walkIn->items().first(), 2}}, QStringLiteral("x"), admin,
                                           nullptr, PaymentMethodType::cash, *settings);
    const qint64 afterOther = settings->lastReceiptSequence();
    EXPECT_FALSE(model.processRefund(nullptr));
    EXPECT_EQ(model.errorMessage(), "Cannot return more of Soap than the 1 still eligible.");
    EXPECT_EQ(settings->lastReceiptSequence(), afterOther);

    performUnitOfWork(context, [&] { walkIn->setStatus(SaleStatus::voided); });
    EXPECT_FALSE(model.processRefund(nullptr));
    EXPECT_EQ(model.errorMessage(), "This sale was voided, so there's nothing to refund.");
}

TEST_F(RefundViewModelTest, ARefundIsLoggedWithItsApproverAndTheFormStartsAgain)
{
    const Ref<Customer> kofi = scene.customer("Kofi");
    const Ref<Sale> sale = sellSoapAndRice(kofi);
    find(sale->invoiceNumber());
    model.setReturnQuantity(line(soap), 1);
    model.setReturnQuantityText(line(rice), QStringLiteral("0.25"));
    model.setRefundMethod(PaymentMethodType::onAccount);
    EXPECT_DOUBLE_EQ(model.refundAmount(), 12);
    EXPECT_FALSE(model.needsApproval()) << "refunds ask no PIN unless switched on";
    performUnitOfWork(context, [&] { settings->setApproveRefunds(true); });
    EXPECT_TRUE(model.needsApproval());
    EXPECT_EQ(model.approvalSummary(), "Refund ₵12.00 on INV-20260309-0001 (On Account).");

    ASSERT_TRUE(model.processRefund(admin));
    const Ref<Sale> refund = model.completedRefund();
    ASSERT_NE(refund, nullptr);
    EXPECT_DOUBLE_EQ(refund->total(), -12);
    EXPECT_EQ(refund->refundReason(), "Not specified");
    EXPECT_DOUBLE_EQ(environment.accountsService().balance(kofi), -12) << "a credit on the account";
    const QList<Ref<AuditEntry>> log = context.fetch<AuditEntry>();
    ASSERT_EQ(log.size(), 1);
    EXPECT_EQ(log[0]->actionRaw(), "refund");
    EXPECT_EQ(log[0]->cashierName(), "Ama");
    EXPECT_EQ(log[0]->approverName(), "Esi");
    EXPECT_EQ(log[0]->amount(), 12);
    EXPECT_EQ(log[0]->reference(), "INV-20260309-0002 (refund of INV-20260309-0001)");
    EXPECT_EQ(log[0]->reason(), "Not specified");
    EXPECT_EQ(log[0]->details(), "2 line(s), On Account");
    EXPECT_FALSE(context.hasChanges());

    EXPECT_EQ(model.foundSale(), nullptr) << "the form starts again";
    EXPECT_EQ(model.refundMethod(), PaymentMethodType::onAccount) << "kept for the next refund";

    // The rest, by someone who typed a reason: the log keeps it trimmed.
    find(sale->invoiceNumber());
    model.setReturnQuantity(line(soap), 2);
    model.setReason(QStringLiteral("  wrong size \n"));
    model.setRefundMethod(PaymentMethodType::cash);
    ASSERT_TRUE(model.processRefund(nullptr));
    EXPECT_EQ(sale->status(), SaleStatus::refunded);
    const Ref<AuditEntry> second =
        context.fetchFirst<AuditEntry>(FetchDescriptor().sortedBy(descending(AuditEntry::Col::reference)));
    EXPECT_EQ(second->reason(), "wrong size");
    EXPECT_EQ(second->approverName(), "");
}
