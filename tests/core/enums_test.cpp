#include "records/enums.h"

#include <QStringList>

#include <gtest/gtest.h>

template <typename Names, typename Enum, size_t count>
static std::string rawTexts(const std::array<Enum, count>& values)
{
    QStringList texts;
    for (Enum value : values) {
        texts << Names::raw(value);
        EXPECT_EQ(Names::fromRaw(Names::raw(value)), value);
    }
    return texts.join(',').toStdString();
}

// Raw texts live in every store and backup: a change here orphans existing rows.
TEST(Enums, RawTextsArePinnedAndReadBack)
{
    EXPECT_EQ(rawTexts<SellingUnits>(SellingUnits::all), "each,kg,g,litre,ml,metre,hour");
    EXPECT_EQ(rawTexts<PaymentMethodTypes>(PaymentMethodTypes::all), "cash,card,mobileMoney,other,onAccount");
    EXPECT_EQ(rawTexts<ProductTypes>(
                  std::array{ProductType::inventory, ProductType::nonInventory, ProductType::service}),
              "inventory,nonInventory,service");
    EXPECT_EQ(rawTexts<SaleStatuses>(std::array{SaleStatus::completed, SaleStatus::partiallyRefunded,
                                                SaleStatus::refunded, SaleStatus::voided}),
              "completed,partiallyRefunded,refunded,voided");
    EXPECT_EQ(rawTexts<UserRoles>(std::array{UserRole::admin, UserRole::cashier}), "admin,cashier");
    EXPECT_EQ(
        rawTexts<InventoryMovementTypes>(InventoryMovementTypes::all),
        "stockIn,stockOut,adjustment,saleDeduction,returnRestock,supplierDelivery,voidRestock,costChange");
    EXPECT_EQ(rawTexts<CashMovementTypes>(CashMovementTypes::all), "payIn,payOut");
    EXPECT_EQ(rawTexts<AppointmentStatuses>(AppointmentStatuses::all), "booked,completed,cancelled,noShow");
}

TEST(Enums, UnknownRawTextFallsBackOrIsAbsent)
{
    // Raw texts are exact: a differently cased one is as unknown as a made-up one.
    for (const QString raw : {"", "widget", "Service", "KG"}) {
        EXPECT_EQ(ProductTypes::fromRaw(raw), ProductType::inventory);
        EXPECT_EQ(SellingUnits::fromRaw(raw), SellingUnit::each);
        EXPECT_EQ(PaymentMethodTypes::fromRaw(raw), PaymentMethodType::cash);
    }
    EXPECT_EQ(SaleStatuses::fromRaw("Voided"), std::nullopt);
    EXPECT_EQ(InventoryMovementTypes::fromRaw("StockIn"), InventoryMovementType::adjustment);
    // A booking whose status nobody can read still holds its time and can be rung up.
    EXPECT_EQ(AppointmentStatuses::fromRaw("No-Show"), AppointmentStatus::booked);
}

TEST(Enums, SellingUnitParseAcceptsCommonSpellings)
{
    const struct {
        const char* text;
        std::optional<SellingUnit> unit;
    } cases[] = {
        {"piece", SellingUnit::each}, {"pieces", std::nullopt},      {"units", SellingUnit::each},
        {"  KG ", SellingUnit::kg},   {"Liter", SellingUnit::litre}, {"L", SellingUnit::litre},
        {"ML", SellingUnit::ml},      {"m", SellingUnit::metre},     {"mm", std::nullopt},
        {"h", SellingUnit::hour},     {"grams", SellingUnit::g},     {"", std::nullopt},
        {" \t ", std::nullopt},       {"k g", std::nullopt},
    };
    for (const auto& c : cases)
        EXPECT_EQ(SellingUnits::parse(c.text), c.unit) << '"' << c.text << '"';
}

TEST(Enums, ProductTypeParseComparesLettersOnly)
{
    const struct {
        const char* text;
        std::optional<ProductType> type;
    } cases[] = {{"Inventory Item", ProductType::inventory}, {"Non-Inventory Item", ProductType::nonInventory},
                 {"non stocked", ProductType::nonInventory}, {" Services ", ProductType::service},
                 {"service 2", ProductType::service},       {"non", std::nullopt},
                 {"", std::nullopt}};
    for (const auto& c : cases)
        EXPECT_EQ(ProductTypes::parse(c.text), c.type) << '"' << c.text << '"';
}
