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

// The rules of amounts are the model's; the sheet shows its hint, line total and whether it may add.
TEST(QuantityEntrySheetTest, TheHintLineTotalAndButtonFollowWhatIsTyped)
{
    QuantityEntry entry(sold(SellingUnit::each), 4, std::nullopt, QStringLiteral("₵"));
    QuantityEntrySheet sheet(
        entry, [](double) {}, [] {});
    EXPECT_FALSE(sheet.confirmButton()->isEnabled()) << "nothing typed yet";
    EXPECT_TRUE(sheet.hintLabel()->isHidden());
    QTest::keyClicks(sheet.amountField(), QStringLiteral("1.5"));
    EXPECT_FALSE(sheet.confirmButton()->isEnabled());
    EXPECT_EQ(sheet.hintLabel()->text(), QStringLiteral("Enter a whole number above zero."));
    sheet.amountField()->selectAll();
    QTest::keyClicks(sheet.amountField(), QStringLiteral("3"));
    EXPECT_TRUE(sheet.confirmButton()->isEnabled());
    EXPECT_TRUE(sheet.hintLabel()->isHidden());
    EXPECT_EQ(sheet.lineTotalLabel()->text(), QStringLiteral("₵12.00"));
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
