// Every record list pages by key through the one KeyPagedModel: rows of one name (or one start
// time) straddle each page's end without being repeated or lost, and a reload reads in one go as
// far down as was shown.

#include "ui/appointments/appointmentlistmodel.h"
#include "ui/controls/recordrowmodel.h"
#include "ui/products/productlistmodel.h"

#include "clock/clock.h"
#include "customers/customersviewmodel.h"
#include "records/records.h"
#include "staff/staffviewmodel.h"
#include "startup/sessionstore.h"
#include "stock/categoriesviewmodel.h"
#include "stock/suppliersviewmodel.h"
#include "store/unitofwork.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

#include <QSet>

namespace {
// 3 to a page; names repeat round the ends of the first two pages, and the last page is full.
const QStringList names{"Ama", "Bread", "Bread", "Bread", "Bread", "Cola", "Cola", "Cola", "Dates"};
constexpr int smallPage = 3;

// A paged model over a reader that counts its reads, with ids in the order a key would give.
struct CountingRows : KeyPagedModel<QAbstractListModel, RecordListRow> {
    explicit CountingRows(std::function<QList<RecordListRow>(const RecordListRow*, int)> read)
        : KeyPagedModel(smallPage)
        , m_read(std::move(read))
    {
    }
    QVariant data(const QModelIndex&, int) const override { return {}; }
    QList<RecordListRow> readPage(const RecordListRow* after, int limit) override
    {
        ++reads;
        return m_read(after, limit);
    }
    int reads = 0;
    std::function<QList<RecordListRow>(const RecordListRow*, int)> m_read;
};

QStringList idsOf(const QList<RecordListRow>& rows)
{
    QStringList ids;
    for (const RecordListRow& row : rows)
        ids << row.id.toString();
    return ids;
}

class ListPagingTest : public ::testing::Test {
protected:
    template <class T> void add(const std::function<void(T&)>& fill)
    {
        auto record = std::make_shared<T>();
        fill(*record);
        performUnitOfWork(context, [&] { context.insert(record); });
    }

    // Pages to the end through fetchMore, as a view scrolling down does.
    template <class Model> static void scrollToEnd(Model& model)
    {
        model.restart();
        while (model.canFetchMore({}))
            model.fetchMore({});
    }

    TestStore store;
    ModelContext& context = store.context();
    SessionStore session;
};
} // namespace

TEST_F(ListPagingTest, NamesakesStraddlingPageEndsComeOnceInKeyOrderOnEveryList)
{
    ProductsViewModel products(context, session);
    SuppliersViewModel suppliers(context);
    StaffViewModel staff(context);
    CategoriesViewModel categories(context);
    AccountsService accounts(context);
    CustomersViewModel customers(accounts, context, session);
    const struct {
        const char* what;
        std::function<void(const QString&)> add;
        std::function<QList<RecordListRow>(const RecordListRow*, int)> page;
    } lists[] = {
        {"products", [&](const QString& name) { add<Product>([&](Product& p) { p.setName(name); }); },
         [&](const RecordListRow* after, int limit) {
             // Products have rows of their own; their key is the same (name, id).
             std::optional<ProductListRow> key;
             if (after)
                 key = ProductListRow{after->id, after->name, {}, {}, {}, false, {}, {}};
             QList<RecordListRow> rows;
             for (const ProductListRow& row : products.page(key ? &*key : nullptr, limit))
                 rows << RecordListRow{row.id, row.name, {}, false};
             return rows;
         }},
        {"customers", [&](const QString& name) { add<Customer>([&](Customer& c) { c.setName(name); }); },
         [&](const RecordListRow* after, int limit) {
             QList<RecordListRow> rows;
             for (const CustomerRow& row :
                  customers.page(after ? context.find<Customer>(after->id) : nullptr, limit))
                 rows << RecordListRow{row.customer->id(), row.name, {}, false};
             return rows;
         }},
        {"suppliers", [&](const QString& name) { add<Supplier>([&](Supplier& s) { s.setName(name); }); },
         [&](const RecordListRow* after, int limit) { return suppliers.page(after, limit); }},
        {"staff", [&](const QString& name) { add<StaffMember>([&](StaffMember& m) { m.setName(name); }); },
         [&](const RecordListRow* after, int limit) { return staff.page(after, limit); }},
        {"categories", [&](const QString& name) { add<Category>([&](Category& c) { c.setName(name); }); },
         [&](const RecordListRow* after, int limit) { return categories.page(after, limit); }},
    };
    for (const auto& list : lists) {
        SCOPED_TRACE(list.what);
        // Inserted out of order, so that neither insertion nor rowid order passes for the key.
        for (qsizetype i = names.size() - 1; i >= 0; --i)
            list.add(names[i]);
        CountingRows model(list.page);
        scrollToEnd(model);
        const QList<RecordListRow> whole = list.page(nullptr, 100);
        ASSERT_EQ(whole.size(), names.size());
        EXPECT_EQ(idsOf(model.rows()), idsOf(whole)) << "paged as read at once";
        const QStringList ids = idsOf(whole);
        EXPECT_EQ(QSet<QString>(ids.begin(), ids.end()).size(), names.size());
        QStringList listed;
        for (const RecordListRow& row : model.rows())
            listed << row.name;
        EXPECT_EQ(listed, names);
        EXPECT_EQ(model.reads, 3) << "no empty read at the end";

        model.reload();
        EXPECT_EQ(model.reads, 4) << "a reload reads all that was shown in one go";
        EXPECT_EQ(idsOf(model.rows()), idsOf(whole));
        EXPECT_FALSE(model.canFetchMore({}));
    }
}

// Products search and filter in SQL; their pages are keyed the same within what the filter keeps.
TEST_F(ListPagingTest, ProductRowsOfOneNameThroughTheModelWithAFilterAndTheEditedRow)
{
    ProductsViewModel products(context, session);
    const int count = ProductsViewModel::pageSize + 5;
    for (int i = 0; i < count; ++i)
        add<Product>([&](Product& p) {
            // A search for "soap" keeps every other one, and both halves cross a page's end.
            p.setName(i % 2 ? QStringLiteral("Soap") : QStringLiteral("Sugar"));
            p.setSku(QStringLiteral("S-%1").arg(i));
        });
    ProductListModel model(products);
    scrollToEnd(model);
    ASSERT_EQ(model.rowCount(), count);
    const QUuid last = model.productID(count - 1);

    products.setSearchText(QStringLiteral("SOAP"));
    scrollToEnd(model);
    EXPECT_EQ(model.rowCount(), count / 2);
    QSet<QUuid> seen;
    for (const ProductListRow& row : model.rows())
        seen.insert(row.id);
    EXPECT_EQ(seen.size(), count / 2);

    products.setSearchText(QString());
    model.restart();
    ASSERT_EQ(model.rowCount(), ProductsViewModel::pageSize);
    EXPECT_EQ(model.rowOf(last), count - 1) << "found by loading the page it is on";

    ProductListRow edited = model.rows()[0];
    edited.name = QStringLiteral("Soap (typed)");
    model.showEdited(edited);
    EXPECT_EQ(model.index(0).data().toString(), "Soap (typed)");
    model.reload();
    EXPECT_EQ(model.index(0).data().toString(), "Soap (typed)") << "the form's row outlives a reload";
    model.showEdited(std::nullopt);
    EXPECT_EQ(model.index(0).data().toString(), "Soap");
}

// The day's bookings page by (start, id): several at one time are listed once each.
TEST_F(ListPagingTest, BookingsAtOneTimeStraddlePageEndsOnce)
{
    const QDate day(2026, 3, 10);
    Clock::Override clock([&] { return QDateTime(day, QTime(8, 0)); });
    StaffService staff(context);
    AppointmentsViewModel book(staff, context);
    const int count = AppointmentsViewModel::pageSize + 3;
    for (int i = 0; i < count; ++i)
        add<Appointment>([&](Appointment& a) {
            a.setStart(QDateTime(day, QTime(9 + i / 40, 0)));
            a.setDurationMinutes(30);
            a.setServiceName(QStringLiteral("Haircut"));
        });
    add<Appointment>([&](Appointment& a) {
        a.setStart(QDateTime(day.addDays(1), QTime(0, 0)));
        a.setDurationMinutes(30);
    });
    AppointmentListModel model(book);
    scrollToEnd(model);
    ASSERT_EQ(model.rowCount(), count) << "the next day's midnight booking isn't this day's";
    QSet<Ref<Appointment>> seen;
    for (int row = 0; row < model.rowCount(); ++row) {
        seen.insert(model.appointment(row));
        if (row > 0) {
            EXPECT_LE(model.appointment(row - 1)->start(), model.appointment(row)->start());
        }
    }
    EXPECT_EQ(seen.size(), count);
}
