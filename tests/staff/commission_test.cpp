#include "staffscene.h"

#include "staff/stafferror.h"

namespace {

struct Line {
    std::optional<QUuid> staffID;
    QString staffName;
    double quantity = 1;
    double unitPrice = 100;
    double lineDiscount = 0;
    double taxRate = 0;
    double rate = 0.1;
    bool taxInclusive = false;
};

struct CommissionTest : StaffScene {
    QDateTime monthStart{QDate(2026, 3, 1), QTime(0, 0)};

    Ref<Sale> sale(const QDateTime& when, const QList<Line>& lines, SaleStatus status = SaleStatus::completed)
    {
        const Ref<Sale> made = Sale::make(QStringLiteral("INV-%1").arg(++m_sales), nullptr, nullptr, nullptr);
        made->setTimestamp(when);
        made->setStatus(status);
        change([&] {
            context.insert(made);
            for (const Line& line : lines) {
                const Ref<SaleItem> item = SaleItem::make(nullptr, line.quantity, line.unitPrice, 0,
                                                          line.taxRate, line.lineDiscount, line.taxInclusive);
                item->setStaffID(line.staffID);
                item->setStaffName(line.staffName);
                item->setCommissionRate(line.rate);
                item->setSale(made);
                context.insert(item);
            }
        });
        return made;
    }

    QList<Ref<Sale>> allSales() { return context.fetch<Sale>(); }

private:
    int m_sales = 0;
};

QString describe(const CommissionRow& row)
{
    return QStringLiteral("%1: %2 services, %3 revenue, %4 commission")
        .arg(row.staffName)
        .arg(row.services)
        .arg(row.revenue, 0, 'f', 4)
        .arg(row.commission, 0, 'f', 4);
}

QStringList describe(const QList<CommissionRow>& rows)
{
    QStringList lines;
    for (const CommissionRow& row : rows)
        lines << describe(row);
    return lines;
}

} // namespace

TEST_F(CommissionTest, RowsPerPersonByIdOrNameHighestFirstVoidsOut)
{
    const Ref<StaffMember> efua = member("Efua", 0.1);
    const Ref<StaffMember> abena = member("Abena", 0.1);
    const Ref<StaffMember> kwame = member("Kwame", 0.1);
    const QDateTime day = monthStart.addDays(5);
    // 100.00 less 10% with 20.00 of tax inside earns on 70.00; tax on top is no part of it either.
    sale(day, {{efua->id(), "Efua", 1, 100, 10, 2.0 / 7, 0.1, true},
               {efua->id(), "Efua", 1, 30, 0, 0.15, 0.1},
               {std::nullopt, "Walk-in barber", 2, 25},
               {std::nullopt, QString()}});
    sale(day.addDays(1), {{kwame->id(), "Kwame", 1, 70}, {abena->id(), "Abena", 1, 70}});
    sale(day.addDays(2), {{efua->id(), "Efua", 3, 100}}, SaleStatus::voided);
    sale(monthStart.addSecs(-1), {{efua->id(), "Efua", 1, 100}});
    // Renamed since: the row keeps the name the first line of the period had.
    sale(day.addDays(3), {{abena->id(), "Abena M.", 1, 0}});
    // Gone since: the lines keep who did them.
    change([&] { context.remove(kwame); });

    const QList<CommissionRow> rows = StaffService::commission(allSales(), monthStart, now);
    EXPECT_EQ(describe(rows), (QStringList{
                                  "Efua: 2 services, 100.0000 revenue, 10.0000 commission",
                                  "Abena: 2 services, 70.0000 revenue, 7.0000 commission",
                                  "Kwame: 1 services, 70.0000 revenue, 7.0000 commission",
                                  // A line without an id earns nothing, but its work is counted.
                                  "Walk-in barber: 2 services, 50.0000 revenue, 0.0000 commission",
                              }));
    EXPECT_EQ(rows[2].staffID, kwame->id());
    EXPECT_EQ(rows[3].staffID, std::nullopt);

    // The detail's own reading of one member agrees with the report's.
    for (const Ref<StaffMember>& someone : {efua, abena}) {
        const auto same = std::find_if(
            rows.begin(), rows.end(), [&](const CommissionRow& row) { return row.staffID == someone->id(); });
        ASSERT_NE(same, rows.end());
        EXPECT_EQ(describe(staff.commissionOf(*someone, monthStart, now)), describe(*same));
    }
    EXPECT_EQ(describe(staff.commissionOf(*member("Yaw", 0.2), monthStart, now)),
              "Yaw: 0 services, 0.0000 revenue, 0.0000 commission");
}

TEST_F(CommissionTest, ARefundLowersTheMonthItIsDatedIn)
{
    const Ref<StaffMember> efua = member("Efua", 0.1);
    sale(now.addDays(-2), {{efua->id(), "Efua", 2, 50}});
    const QDateTime nextMonth(QDate(2026, 4, 2), QTime(11, 0));
    const Ref<Sale> refund = sale(nextMonth, {{efua->id(), "Efua", -1, 50}});
    refund->setRefundOfSaleID(QUuid::createUuid());

    const QDateTime aprilStart(QDate(2026, 4, 1), QTime(0, 0));
    EXPECT_EQ(describe(StaffService::commission(allSales(), monthStart, aprilStart.addSecs(-1))),
              QStringList{"Efua: 2 services, 100.0000 revenue, 10.0000 commission"});
    EXPECT_EQ(describe(StaffService::commission(allSales(), aprilStart, nextMonth)),
              QStringList{"Efua: -1 services, -50.0000 revenue, -5.0000 commission"});
}

TEST_F(CommissionTest, TableRoundsOnlyForDisplayAndEndsWithTotal)
{
    const Ref<StaffMember> efua = member("Efua", 0.1);
    const Ref<StaffMember> abena = member("Abena", 0.1);
    sale(now.addDays(-1),
         {{efua->id(), "Efua", 1, 10.004}, {efua->id(), "Efua", 1, 10.004}, {abena->id(), "Abena", 1, 5}});
    const CommissionTable table = StaffService::commissionTable(allSales(), monthStart, now);
    EXPECT_EQ(table.headers, (QStringList{"Staff", "Services", "Revenue (ex tax)", "Commission"}));
    ASSERT_EQ(table.rows.size(), 3);
    // 20.008 shows as 20.01: lines are added before anything is rounded.
    EXPECT_EQ(table.rows[0], (QStringList{"Efua", "2", "₵20.01", "₵2.00"}));
    EXPECT_EQ(table.rows[1], (QStringList{"Abena", "1", "₵5.00", "₵0.50"}));
    EXPECT_EQ(table.rows[2], (QStringList{"Total", "3", "₵25.01", "₵2.50"}));
    EXPECT_TRUE(StaffService::commissionTable(allSales(), now, now).rows.isEmpty())
        << "no total without rows";
}

// Which rate a line is sold at is settled when it is paid, and stays.
TEST_F(CommissionTest, TheRateIsFrozenOnTheLineAtCheckout)
{
    const struct {
        const char* name;
        std::optional<double> productRate;
        double memberRateWhenChosen;
        double memberRateWhenPaid;
        double soldAt;
        bool chosenAgain;
    } cases[] = {
        {"the member's rate as chosen on the line", std::nullopt, 0.1, 0.3, 0.1, false},
        {"choosing the member again takes their new rate", std::nullopt, 0.1, 0.25, 0.25, true},
        {"a product rate of 0 is a rate", 0.0, 0.2, 0.2, 0, false},
        {"the product's rate first", 0.15, 0.1, 0.1, 0.15, false},
    };
    for (const auto& c : cases) {
        const Ref<Product> braids = service("Braids", 200, true, c.productRate);
        const Ref<StaffMember> efua = member("Efua", c.memberRateWhenChosen);
        Cart cart;
        cart.addOrIncrement(braids, 1);
        cart.setStaff(cart.lines()[0].id, efua);
        change([&] { efua->setCommissionRate(c.memberRateWhenPaid); });
        if (c.chosenAgain)
            cart.setStaff(cart.lines()[0].id, efua);
        const Ref<Sale> sold = payCard(cart);
        const Ref<SaleItem> item = sold->items().value(0);
        ASSERT_NE(item, nullptr) << c.name;
        EXPECT_EQ(item->commissionRate(), c.soldAt) << c.name;
        EXPECT_EQ(item->commission(), 200 * c.soldAt) << c.name;

        change([&] { efua->setCommissionRate(0.5); });
        EXPECT_EQ(item->commissionRate(), c.soldAt) << c.name << ": a later change of rate reaches no sale";
    }
}

TEST_F(CommissionTest, CheckoutStopsServicesWithoutTheirMemberAndWritesNothing)
{
    const Ref<Product> braids = service("Braids", 200);
    const Ref<Product> wash = service("Wash", 30);
    const Ref<Product> gel = service("Gel", 15, false);
    const Ref<StaffMember> efua = member("Efua", 0.1);
    Cart cart;
    for (const Ref<Product>& product : {braids, gel, wash})
        cart.addOrIncrement(product, 1);

    EXPECT_EQ(refusalOf([&] { payCard(cart); }), "Choose who did Braids, Wash — click Who? on the line.");
    EXPECT_EQ(refusalOf([&] { sales.checkout(cart, {}, nullptr, nullptr, *settings); }),
              "Choose who did Braids, Wash — click Who? on the line.")
        << "asked before the tender, as at the till";
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Sale")), 0);
    EXPECT_EQ(settings->lastReceiptSequence(), 0);

    cart.setStaff(cart.lines()[0].id, efua);
    EXPECT_EQ(refusalOf([&] { payCard(cart); }), "Choose who did Wash — click Who? on the line.");

    // With nobody active there is nobody to choose: the sale goes through.
    change([&] { efua->setIsActive(false); });
    EXPECT_EQ(refusalOf([&] { payCard(cart); }), QString());
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Sale")), 1);
}
