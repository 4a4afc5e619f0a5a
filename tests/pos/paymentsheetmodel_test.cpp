#include "pos/paymentsheetmodel.h"

#include "money/numberentry.h"

#include <gtest/gtest.h>

namespace {

struct Sheet {
    QList<QList<PaymentInput>> completed;
    QList<qint64> redeemed;
    PaymentSheetModel model;

    explicit Sheet(PaymentSheetInputs inputs)
        : model(std::move(inputs), {[this](qint64 points) { redeemed.append(points); },
                                    [this](const QList<PaymentInput>& payments) { completed.append(payments); },
                                    [] {}})
    {
    }
};

PaymentSheetInputs due(double total, Ref<Customer> customer = nullptr)
{
    PaymentSheetInputs inputs;
    inputs.total = total;
    inputs.customer = std::move(customer);
    return inputs;
}

Ref<Customer> customer(const char* name, bool allowCredit = true, double creditLimit = 0, qint64 points = 0)
{
    auto made = std::make_shared<Customer>();
    made->setName(QString::fromUtf8(name));
    made->setAllowCredit(allowCredit);
    made->setCreditLimit(creditLimit);
    made->setLoyaltyPoints(points);
    return made;
}

} // namespace

// A single cash tender may be a cent short, that cent included; a split must come strictly within
// a cent of the total, and its cash rows may be a cent short. Amounts are en_US money.
TEST(PaymentSheet, TolerancesOfCashAndSplitSideBySide)
{
    struct Row {
        PaymentMethodType method;
        const char* amount;
        const char* tendered;
    };
    struct Case {
        const char* name;
        double total;
        const char* cash; // a single cash tender when set, else the split rows
        QList<Row> split;
        const char* refusal; // null when taken
    };
    const Case cases[] = {
        {"cash a cent short is taken", 100, "99.99", {}, nullptr},
        {"cash two cents short is refused", 100, "99.98", {}, "Cash tendered is less than the amount due."},
        {"cash a cent short of a large sum is taken", 1250, "1,249.99", {}, nullptr},
        {"cash in grouped thousands", 1250, "1,250.00", {}, nullptr},
        {"cash over the total", 100, "200", {}, nullptr},
        {"cash left blank is nothing tendered", 5, "", {}, "Cash tendered is less than the amount due."},
        {"cash that isn't a number is refused at the field", 100, "12,50", {}, "Enter an amount such as 1,250.00."},
        {"split half a cent off is taken", 100, nullptr,
         {{PaymentMethodType::card, "50.00", ""}, {PaymentMethodType::mobileMoney, "49.995", ""}}, nullptr},
        {"split a whole cent short is refused", 100, nullptr,
         {{PaymentMethodType::card, "50.00", ""}, {PaymentMethodType::mobileMoney, "49.99", ""}},
         "Split payments must add up to the total due."},
        {"split a whole cent over is refused", 100, nullptr,
         {{PaymentMethodType::card, "50.00", ""}, {PaymentMethodType::other, "50.01", ""}},
         "Split payments must add up to the total due."},
        {"split cash row a cent short is taken", 100, nullptr,
         {{PaymentMethodType::cash, "50", "49.99"}, {PaymentMethodType::card, "50", ""}}, nullptr},
        {"split cash row two cents short is refused", 100, nullptr,
         {{PaymentMethodType::cash, "50", "49.98"}, {PaymentMethodType::card, "50", ""}},
         "Cash tendered in the split is less than the cash amount applied."},
        {"split row that isn't a number is refused at the field", 100, nullptr,
         {{PaymentMethodType::cash, "1,5", ""}, {PaymentMethodType::card, "100", ""}},
         "Enter an amount such as 1,250.00."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Sheet sheet(due(c.total));
        if (c.cash) {
            sheet.model.setCashTenderedText(QString::fromUtf8(c.cash));
        } else {
            sheet.model.setMode(PaymentSheetModel::Mode::split);
            for (const Row& row : c.split) {
                sheet.model.addSplitRow(row.method);
                const QUuid id = sheet.model.splitRows().last().id;
                sheet.model.setSplitAmountText(id, QString::fromUtf8(row.amount));
                sheet.model.setSplitTenderedText(id, QString::fromUtf8(row.tendered));
            }
        }
        const bool taken = sheet.model.complete();
        EXPECT_EQ(taken, c.refusal == nullptr);
        EXPECT_EQ(sheet.completed.size(), taken ? 1 : 0);
        if (c.refusal) {
            EXPECT_EQ(sheet.model.errorMessage(), QString::fromUtf8(c.refusal));
        }
    }
}

TEST(PaymentSheet, WhatEachModeHandsOver)
{
    Sheet cash(due(12.5));
    cash.model.setCashTenderedText(QStringLiteral("20"));
    EXPECT_EQ(cash.model.changeDueText(), "₵7.50");
    ASSERT_TRUE(cash.model.complete());
    // The amount kept is the total; what was handed over goes as typed.
    EXPECT_EQ(cash.completed[0], (QList<PaymentInput>{{PaymentMethodType::cash, 12.5, 20, {}}}));

    Sheet card(due(12.5));
    card.model.setMode(PaymentSheetModel::Mode::card);
    card.model.setCashTenderedText(QStringLiteral("50"));
    card.model.setReferenceText(QStringLiteral("A1B2"));
    ASSERT_TRUE(card.model.complete());
    EXPECT_EQ(card.completed[0], (QList<PaymentInput>{{PaymentMethodType::card, 12.5, 0, "A1B2"}}));

    // A cash row left without a tender counts as tendered in full; other rows tender nothing.
    Sheet split(due(30));
    split.model.setMode(PaymentSheetModel::Mode::split);
    split.model.addSplitRow(PaymentMethodType::cash);
    split.model.setSplitAmountText(split.model.splitRows()[0].id, QStringLiteral("10"));
    split.model.addSplitRow(PaymentMethodType::onAccount);
    split.model.setSplitAmountText(split.model.splitRows()[1].id, QStringLiteral("20"));
    split.model.setSplitTenderedText(split.model.splitRows()[1].id, QStringLiteral("99"));
    EXPECT_EQ(split.model.remaining(), 0);
    ASSERT_TRUE(split.model.complete());
    EXPECT_EQ(split.completed[0], (QList<PaymentInput>{{PaymentMethodType::cash, 10, 10, {}},
                                                       {PaymentMethodType::onAccount, 20, 0, {}}}));
}

TEST(PaymentSheet, QuickCashOptions)
{
    struct Case {
        double total;
        QList<double> options;
    };
    const Case cases[] = {
        {3.5, {3.5, 5, 10, 20}},   // at most four
        {5, {5, 10, 20, 50}},      // the total itself isn't offered twice
        {12.3, {12.3, 20, 50}},    // notes below the total are left out
        {10.001, {10, 20, 50}},    // rounded up to 11 first, so 10 isn't a note that covers it
        {49.99, {49.99, 50}},
        {73.2, {73.2}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.total);
        Sheet sheet(due(c.total));
        EXPECT_EQ(sheet.model.quickCashOptions(), c.options);
    }
    Sheet sheet(due(3.5));
    sheet.model.chooseQuickCash(5);
    EXPECT_EQ(sheet.model.cashTenderedText(), "5.00");
}

TEST(PaymentSheet, OnAccountRefusals)
{
    struct Case {
        const char* name;
        Ref<Customer> customer;
        std::optional<double> availableCredit;
        const char* problem;
    };
    const Case cases[] = {
        {"no customer", nullptr, std::nullopt,
         "Add a customer to the sale first (Add Customer at the top of the cart)."},
        {"credit not allowed", customer("Kofi", false), std::nullopt,
         "Kofi isn't set up to buy on credit. Turn on Allow Credit for them in Customers."},
        {"no limit", customer("Kofi"), std::nullopt, nullptr},
        {"within half a cent of the limit", customer("Kofi", true, 500), 99.996, nullptr},
        {"a cent over the limit", customer("Kofi", true, 500), 99.99,
         "This would take Kofi over their credit limit — they can have up to ₵99.99 more."},
        {"already over the limit", customer("Kofi", true, 500), -20,
         "This would take Kofi over their credit limit — they can have up to ₵0.00 more."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        PaymentSheetInputs inputs = due(100, c.customer);
        inputs.availableCredit = c.availableCredit;
        Sheet sheet(inputs);
        sheet.model.setMode(PaymentSheetModel::Mode::onAccount);
        const std::optional<QString> expected =
            c.problem ? std::optional<QString>(QString::fromUtf8(c.problem)) : std::nullopt;
        EXPECT_EQ(sheet.model.onAccountProblem(), expected);
        // The button stays enabled: Complete Sale repeats the problem.
        EXPECT_EQ(sheet.model.complete(), !c.problem);
        EXPECT_EQ(sheet.model.errorMessage(), expected);
    }

    PaymentSheetInputs inputs = due(100, customer("Kofi"));
    inputs.accountBalance = 40;
    Sheet sheet(inputs);
    EXPECT_EQ(sheet.model.creditLimitText(), "No limit");
    EXPECT_EQ(sheet.model.onAccountNote(), "₵100.00 will be added to Kofi's account.");
    EXPECT_EQ(sheet.model.willOweText(), "₵140.00");
}

TEST(PaymentSheet, PointsReminderShowsOnceAndRedeemingChecksThePoints)
{
    auto settings = std::make_shared<AppSettings>(); // 100 points are worth 5.00, from 100 points
    PaymentSheetInputs inputs = due(40, customer("Kofi", true, 0, 250));
    inputs.settings = settings;
    inputs.discountable = 40;
    Sheet sheet(inputs);
    sheet.model.setCashTenderedText(QStringLiteral("40"));

    EXPECT_EQ(sheet.model.pointsOffer(),
              (QStringList{"Ask Kofi if they'd like to use their points.",
                           "100 points = ₵5.00, taken off before tax. Up to 250 on this sale."}));
    EXPECT_FALSE(sheet.model.complete());
    EXPECT_TRUE(sheet.model.showPointsReminder());
    EXPECT_EQ(sheet.model.pointsReminderTitle(), "Kofi has 250 points");
    EXPECT_EQ(sheet.model.pointsReminderText(),
              "They can take up to ₵12.50 off this sale. Ask if they'd like to use their points.");
    sheet.model.closePointsReminder();

    for (const char* typed : {"", "12.5", "-3", "ten"}) {
        sheet.model.setPointsText(QString::fromUtf8(typed));
        EXPECT_FALSE(sheet.model.redeem()) << typed;
        EXPECT_EQ(sheet.model.errorMessage(), "Enter how many points to redeem.");
    }
    sheet.model.setPointsText(QStringLiteral("99"));
    EXPECT_FALSE(sheet.model.redeem()) << "below the minimum";
    EXPECT_TRUE(sheet.model.useMost());
    EXPECT_EQ(sheet.redeemed, QList<qint64>{250});
    EXPECT_EQ(sheet.model.pointsText(), QString());

    // Once asked, Complete Sale goes through without asking again.
    EXPECT_TRUE(sheet.model.complete());
    EXPECT_EQ(sheet.completed.size(), 1);
}
