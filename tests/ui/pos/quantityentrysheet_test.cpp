#include "ui/pos/quantityentrysheet.h"

#include "ui/controls/screentest.h"

#include <QLineEdit>
#include <QPushButton>

namespace {

Ref<Product> sold(SellingUnit unit, double price = 4)
{
    auto made = std::make_shared<Product>();
    made->setName(QStringLiteral("Rice"));
    made->setSellingUnit(unit);
    made->setSellingPrice(price);
    return made;
}

} // namespace

// What is typed decides the hint and whether the amount can be taken; "," is the scale's point.
TEST(QuantityEntrySheetTest, HintAndConfirmFollowWhatTheUnitAllows)
{
    struct Case {
        const char* name;
        SellingUnit unit;
        const char* typed;
        bool allowed;
        const char* hint; // empty when none
        const char* lineTotal;
    };
    const Case cases[] = {
        {"kg takes a comma as the point", SellingUnit::kg, "1,5", true, "", "₵6.00"},
        {"kg refuses nothing", SellingUnit::kg, "0", false, "Enter an amount above zero, e.g. 1.5.", "₵0.00"},
        {"each refuses a part", SellingUnit::each, "1.5", false, "Enter a whole number above zero.", "₵0.00"},
        {"ml is counted whole", SellingUnit::ml, "250", true, "", "₵1,000.00"},
        {"hours take fractions", SellingUnit::hour, "0.25", true, "", "₵1.00"},
        {"letters are no amount", SellingUnit::litre, "abc", false, "Enter an amount above zero, e.g. 1.5.",
         "₵0.00"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        QuantityEntry entry(sold(c.unit), 4, std::nullopt, QStringLiteral("₵"));
        QuantityEntrySheet sheet(
            entry, [](double) {}, [] {});
        EXPECT_FALSE(sheet.confirmButton()->isEnabled()) << "nothing typed yet";
        EXPECT_TRUE(sheet.hintLabel()->isHidden());
        QTest::keyClicks(sheet.amountField(), QString::fromUtf8(c.typed));
        EXPECT_EQ(sheet.confirmButton()->isEnabled(), c.allowed);
        EXPECT_EQ(sheet.hintLabel()->isHidden(), QString::fromUtf8(c.hint).isEmpty());
        if (*c.hint) {
            EXPECT_EQ(sheet.hintLabel()->text(), QString::fromUtf8(c.hint));
        }
        EXPECT_EQ(sheet.lineTotalLabel()->text(), QString::fromUtf8(c.lineTotal));
    }
}

TEST(QuantityEntrySheetTest, ReturnAddsTheAmountTypedStraightAwayAndEscapeCancels)
{
    QWidget host;
    host.show();
    QuantityEntry adding(sold(SellingUnit::kg), 4, std::nullopt, QStringLiteral("₵"));
    QList<double> done;
    int cancelled = 0;
    auto* sheet = new QuantityEntrySheet(
        adding, [&](double quantity) { done << quantity; }, [&] { ++cancelled; }, &host);
    sheet->open();
    sheet->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(sheet));
    EXPECT_EQ(sheet->confirmButton()->text(), "Add to Sale");
    EXPECT_EQ(sheet->unitLabel()->text(), "kg");
    EXPECT_TRUE(visibleTexts(sheet).contains("Weight / amount"));

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(done.isEmpty()) << "Return does nothing at 0";
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("1,5"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(done, QList<double>{1.5});
    EXPECT_EQ(cancelled, 0);
    EXPECT_FALSE(sheet->isVisible());

    QuantityEntry editing(sold(SellingUnit::hour), 4, 2.0, QStringLiteral("₵"));
    QuantityEntrySheet again(
        editing, [&](double quantity) { done << quantity; }, [&] { ++cancelled; }, &host);
    again.open();
    again.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&again));
    EXPECT_EQ(again.confirmButton()->text(), "Update");
    EXPECT_EQ(again.amountField()->selectedText(), "2") << "a new amount replaces the old as typed";
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(cancelled, 1);
    EXPECT_EQ(done.size(), 1);
}
