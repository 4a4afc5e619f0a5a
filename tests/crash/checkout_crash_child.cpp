// Works the counter of the store named on the command line until it is killed: rings up sales (half
// of them through the workspace's view model, as a cashier would), refunds parts of them (again and
// again), voids some, holds carts and recalls or cancels them. The crash test kills it at random
// moments and checks that each of these is in the store whole or not at all.

#include "access/approvalservice.h"
#include "environment/appenvironment.h"
#include "money/rounding.h"
#include "pos/posviewmodel.h"
#include "records/posschema.h"
#include "records/records.h"
#include "selling/heldsalesmodel.h"
#include "selling/salesservice.h"
#include "startup/sessionstore.h"
#include "store/unitofwork.h"
#include "store/modelcontainer.h"

#include <QRandomGenerator>

#include <cmath>
#include <cstdio>
#include <exception>
#include <stdexcept>

namespace {

Cart randomCart(QRandomGenerator& random, const QList<Ref<Product>>& products,
                const QList<Ref<Customer>>& customers, const AppSettings& settings)
{
    Cart cart;
    const int lines = 1 + int(random.bounded(5));
    for (int i = 0; i < lines; ++i) {
        const Ref<Product>& product = products[random.bounded(products.size())];
        const double quantity = product->sellingUnit() == SellingUnit::each ? 1 + random.bounded(3)
                                                                            : 0.25 * (1 + random.bounded(8));
        cart.addOrIncrement(product, quantity);
    }
    if (random.bounded(3) == 0)
        cart.setLineDiscount(cart.lines().first().id, 0.5);
    if (random.bounded(2) == 0)
        cart.setCustomer(customers[random.bounded(customers.size())]);
    if (cart.customer() && random.bounded(3) == 0) {
        const qint64 most = LoyaltyService::maxRedeemable(cart.customer()->loyaltyPoints(),
                                                          cart.discountableAmount(), settings);
        const qint64 least = std::max<qint64>(settings.loyaltyMinimumRedeem(), 1);
        if (most >= least) {
            cart.setValuePerPoint(settings.loyaltyValuePerPoint());
            cart.setPointsToRedeem(least + qint64(random.bounded(quint64(most - least + 1))));
        }
    }
    return cart;
}

QList<PaymentInput> randomPayments(QRandomGenerator& random, const Cart& cart, double total)
{
    const bool credit = cart.customer() && cart.customer()->allowCredit();
    switch (random.bounded(4)) {
    case 0:
        return {{PaymentMethodType::cash, total, std::ceil(total) + random.bounded(20), {}}};
    case 1:
        return {{PaymentMethodType::card, total, 0, QStringLiteral("AUTH")}};
    case 2:
        if (credit)
            return {{PaymentMethodType::onAccount, total, 0, {}}};
        [[fallthrough]];
    default: {
        const double cash = Rounding::toCents(total / 2);
        return {{PaymentMethodType::cash, cash, cash, {}},
                {PaymentMethodType::mobileMoney, total - cash, 0, {}}};
    }
    }
}

class Counter {
public:
    Counter(ModelContext& context, AppEnvironment& environment, quint32 seed)
        : m_context(context)
        , m_environment(environment)
        , m_sales(environment.salesService())
        , m_settings(context.fetchFirst<AppSettings>())
        , m_cashier(context.fetchFirst<User>())
        , m_shift(environment.tillService().currentOpenShift())
        , m_products(context.fetch<Product>())
        , m_customers(context.fetch<Customer>())
        , m_holds(context)
        , m_random(seed)
    {
        m_session.setSettings(m_settings);
        m_session.setCurrentUser(m_cashier);
        m_session.setCurrentTillShift(m_shift);
    }

    void next()
    {
        const quint32 pick = m_random.bounded(20);
        if (pick < 3)
            refundSome();
        else if (pick < 5)
            voidOne();
        else if (pick < 7)
            hold();
        else if (pick < 8)
            recallOrCancel();
        else
            ringUp(randomCart(m_random, m_products, m_customers, *m_settings));
    }

private:
    void ringUp(const Cart& cart)
    {
        if (m_random.bounded(2))
            ringUpAtTheCounter(cart);
        else
            ringUpDirectly(cart);
    }

    // The workspace's way: each piece scanned, each measured line weighed in, then Complete Sale.
    void ringUpAtTheCounter(const Cart& cart)
    {
        m_pos.cancelSale();
        for (const CartLine& line : cart.lines()) {
            if (line.product->sellingUnit() == SellingUnit::each) {
                for (int piece = 0; piece < int(line.quantity); ++piece)
                    m_pos.addToCart(line.product);
            } else {
                m_pos.addToCart(line.product);
                m_pos.finishQuantityEntry(line.quantity);
            }
        }
        m_pos.setCustomer(cart.customer());
        const double total = m_pos.cart().calculation(m_settings->taxInclusivePricing()).total;
        if (!m_pos.completeSale(randomPayments(m_random, m_pos.cart(), total)))
            throw std::runtime_error(m_pos.errorMessage().value_or(QString()).toStdString());
    }

    void ringUpDirectly(const Cart& cart)
    {
        const double total = cart.calculation(m_settings->taxInclusivePricing()).total;
        m_sales.checkout(cart, randomPayments(m_random, cart, total), m_cashier, m_shift, *m_settings);
    }

    Ref<Sale> randomSale(const QString& condition, const QVariantList& bindings = {})
    {
        const QList<QString> ids = m_context.rows<QString>(
            QStringLiteral("SELECT id FROM Sale WHERE refundOfSaleID IS NULL AND ") + condition +
                QStringLiteral(" ORDER BY random() LIMIT 1"),
            bindings, [](const SqliteStatement& statement) { return statement.text(0); });
        return ids.isEmpty() ? nullptr : m_context.find<Sale>(QUuid(ids.first()));
    }

    // Part of some lines, or the rest of them: sales already partly refunded come back often.
    void refundSome()
    {
        const Ref<Sale> original = randomSale(m_random.bounded(2) ? QStringLiteral("statusRaw = 'partiallyRefunded'")
                                                                  : QStringLiteral("statusRaw = 'completed'"));
        if (!original)
            return;
        QList<RefundEntry> entries;
        for (const Ref<SaleItem>& item : original->items()) {
            const double left = Rounding::toThousandths(item->quantity() - item->returnedQuantity());
            if (left <= 0 || m_random.bounded(2) == 0)
                continue;
            const double quantity = item->product()->sellingUnit() == SellingUnit::each
                                        ? 1 + m_random.bounded(int(left))
                                        : Rounding::toThousandths(left * (1 + m_random.bounded(4)) / 4);
            entries.append({item, quantity});
        }
        if (entries.isEmpty())
            return;
        const bool onAccount = original->customer() && original->customer()->allowCredit() && m_random.bounded(2);
        const PaymentMethodType method = onAccount ? PaymentMethodType::onAccount : PaymentMethodType::cash;
        const QString reason = QStringLiteral("Faulty item");
        const Ref<Sale> refund =
            m_sales.writeRefund(original, entries, reason, m_cashier, m_shift, method, *m_settings);
        // The log row is a save of its own, after the refund's, as at the counter.
        audit(AuditAction::refund, std::abs(refund->total()),
              QStringLiteral("%1 (refund of %2)").arg(refund->invoiceNumber(), original->invoiceNumber()), reason,
              QStringLiteral("%1 line(s), %2").arg(entries.size()).arg(PaymentMethodTypes::label(method)));
    }

    void voidOne()
    {
        const Ref<Sale> sale = randomSale(QStringLiteral("statusRaw = 'completed' AND tillShift = ?"),
                                          {m_shift->idText()});
        if (!sale)
            return;
        const QString reason = QStringLiteral("Rung up twice");
        m_sales.voidSale(sale, reason, m_cashier, nullptr, true, m_shift);
        audit(AuditAction::voidSale, Rounding::toCents(sale->total()), sale->invoiceNumber(), reason, {});
    }

    void audit(AuditAction action, double amount, const QString& reference, const QString& reason,
               const QString& details)
    {
        performUnitOfWork(m_context, [&] {
            m_environment.approvalService().record(action, m_cashier.get(), {}, amount, reference, reason, details);
        });
    }

    // The note tells how many lines the hold has, so that the test can tell a half-written one.
    void hold()
    {
        const Cart cart = randomCart(m_random, m_products, m_customers, *m_settings);
        m_sales.hold(cart, m_cashier, QStringLiteral("%1 lines").arg(cart.lines().size()));
    }

    void recallOrCancel()
    {
        const QList<Ref<HeldSale>> active = m_holds.activeHeldSales();
        if (active.isEmpty())
            return;
        const Ref<HeldSale>& held = active[m_random.bounded(active.size())];
        if (m_random.bounded(2)) {
            const std::optional<Cart> cart = m_holds.recall(held);
            if (!cart)
                throw std::runtime_error(m_holds.errorMessage().value_or(QString()).toStdString());
            ringUp(*cart);
        } else if (!m_holds.cancel(held)) {
            throw std::runtime_error(m_holds.errorMessage().value_or(QString()).toStdString());
        }
    }

    ModelContext& m_context;
    AppEnvironment& m_environment;
    SalesService& m_sales;
    const Ref<AppSettings> m_settings;
    const Ref<User> m_cashier;
    const Ref<TillShift> m_shift;
    const QList<Ref<Product>> m_products;
    const QList<Ref<Customer>> m_customers;
    HeldSalesModel m_holds;
    QRandomGenerator m_random;
    SessionStore m_session;
    POSViewModel m_pos{m_environment, m_session};
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s STORE SEED\n", argv[0]);
        return 64;
    }
    try {
        ModelContainer container(QString::fromLocal8Bit(argv[1]), POSSchema::description());
        ModelContext& context = container.mainContext();
        AppEnvironment environment(context);
        Counter counter(context, environment, quint32(QByteArray(argv[2]).toUInt()));
        // The parent's clock for the kill starts here, not while a slow build is still starting up.
        std::puts("ready");
        std::fflush(stdout);
        for (;;)
            counter.next();
    } catch (const std::exception& error) {
        // Any failure is a finding: the test reads this and the exit code.
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
