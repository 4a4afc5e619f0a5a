#include "selling/saleshistory.h"

#include "support/salesscene.h"

#include <algorithm>

namespace {

struct SalesHistoryTest : ::testing::Test {
    TestStore store;
    ModelContext& context = store.context();
    SalesScene scene{context};
    SalesHistory history{context};
    Ref<User> admin = scene.user("Akosua Mensah", UserRole::admin);
    Ref<User> kofi = scene.user("Kofi Boateng", UserRole::cashier);
    Ref<User> ama = scene.user("Ama Owusu", UserRole::cashier);
    Ref<Customer> efua = scene.customer("Efua Asante");
    Ref<Customer> yaw = scene.customer("Yaw Mensah");
    QDate firstDay{2026, 3, 1};

    // What the rule reads of a sale, kept apart from the records so that checking it is cheap.
    struct Listed {
        double seconds;
        QString id, invoice, cashierName, customerName;
        QUuid cashierID;
    };
    QList<Listed> sales;

    // Sales straight into the store, as a five-year store holds them: many to a day and some of
    // them in the same second.
    void addSales(int count, int perDay)
    {
        const QList<Ref<User>> cashiers{kofi, ama, nullptr};
        const QList<Ref<Customer>> customers{efua, nullptr, yaw, nullptr};
        performUnitOfWork(context, [&] {
            for (int i = 0; i < count; ++i) {
                const QDateTime when(firstDay.addDays(i / perDay),
                                     QTime(9, 0).addSecs((i % perDay) / 2 * 60));
                const Ref<User>& cashier = cashiers[i % 3];
                const Ref<Customer>& customer = customers[i % 4];
                const Ref<Sale> sale = Sale::make(QStringLiteral("INV-%1-%2")
                                                      .arg(when.toString(QStringLiteral("yyyyMMdd")))
                                                      .arg(i + 1, 4, 10, QLatin1Char('0')),
                                                  cashier, customer, nullptr);
                sale->setTimestamp(when);
                sale->setTotal(i);
                context.insert(sale);
                sales.append({Record::secondsFromDate(when), sale->idText(), sale->invoiceNumber(),
                              cashier ? cashier->name() : QString(), customer ? customer->name() : QString(),
                              cashier ? cashier->id() : QUuid()});
            }
        });
    }

    // The rule as it reads: the viewer's sales, the days whole, then the text in any of the three.
    QStringList expected(const SalesHistory::Filter& filter) const
    {
        const double from = Record::secondsFromDate(filter.startDate.startOfDay());
        const double to = Record::secondsFromDate(filter.endDate.addDays(1).startOfDay());
        const QString text = filter.searchText.toLower();
        QList<Listed> kept;
        for (const Listed& sale : sales) {
            if (!filter.everyone && sale.cashierID != filter.cashierID)
                continue;
            if (sale.seconds < from || sale.seconds >= to)
                continue;
            if (!text.isEmpty() && !sale.invoice.toLower().contains(text) &&
                !sale.customerName.toLower().contains(text) && !sale.cashierName.toLower().contains(text))
                continue;
            kept.append(sale);
        }
        std::sort(kept.begin(), kept.end(), [](const Listed& a, const Listed& b) {
            return a.seconds != b.seconds ? a.seconds > b.seconds : a.id > b.id;
        });
        QStringList invoices;
        for (const Listed& sale : kept)
            invoices << sale.invoice;
        return invoices;
    }

    // Every page to the end, each after the last row of the one before.
    QStringList listed(const SalesHistory::Filter& filter, int pageSize)
    {
        QStringList invoices;
        std::optional<SalesHistory::Key> after;
        for (;;) {
            const QList<SalesHistory::Row> page = history.page(filter, after, pageSize);
            for (const SalesHistory::Row& row : page)
                invoices << row.invoiceNumber;
            if (page.size() < pageSize)
                return invoices;
            after = page.last().key;
        }
    }

    SalesHistory::Filter filter(const QString& search, const User* viewer, QDate from = {}, QDate to = {})
    {
        SalesHistory::Filter made;
        made.startDate = from.isValid() ? from : firstDay.addDays(-1);
        made.endDate = to.isValid() ? to : firstDay.addYears(1);
        made.searchText = search;
        made.showSalesOf(viewer);
        return made;
    }
};

} // namespace

TEST_F(SalesHistoryTest, EveryFilterListsWhatTheRuleKeepsPageByPageWithoutRepeatsOrGaps)
{
    // Enough matches for both ways of reading: gathered through an index, and read in date order.
    addSales(2600, 40);
    const struct {
        const char* name;
        QString search;
        const User* viewer;
        QDate from, to;
    } cases[] = {
        {"everything for an admin", {}, admin.get(), {}, {}},
        {"a cashier sees their own", {}, kofi.get(), {}, {}},
        {"nobody signed in sees the sales of nobody", {}, nullptr, {}, {}},
        {"a week, its last day whole", {}, admin.get(), firstDay.addDays(3), firstDay.addDays(9)},
        {"one exact invoice", QStringLiteral("INV-20260302-0045"), admin.get(), {}, {}},
        {"a few letters of the invoice's head", QStringLiteral("nv-2026031"), admin.get(), {}, {}},
        {"a customer", QStringLiteral("efua"), admin.get(), {}, {}},
        {"a name of a customer and a cashier", QStringLiteral("mensah"), admin.get(), {}, {}},
        {"a cashier searching a customer", QStringLiteral("Yaw"), kofi.get(), {}, {}},
        {"the text isn't trimmed", QStringLiteral(" yaw"), admin.get(), {}, {}},
        {"wildcards are letters", QStringLiteral("%"), admin.get(), {}, {}},
        {"nothing matches", QStringLiteral("zzz"), admin.get(), {}, {}},
        {"a search within a week", QStringLiteral("ama"), admin.get(), firstDay.addDays(10),
         firstDay.addDays(12)},
    };
    for (const auto& c : cases) {
        const SalesHistory::Filter chosen = filter(c.search, c.viewer, c.from, c.to);
        // An odd page size, so that pages end between two sales of the same instant.
        EXPECT_EQ(listed(chosen, 37), expected(chosen)) << c.name;
    }
}
