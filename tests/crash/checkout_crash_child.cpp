// Rings up random sales on the store named on the command line until it is killed. The crash test
// kills it at random moments and checks that every sale is in the store whole or not at all.

#include "environment/appenvironment.h"
#include "money/rounding.h"
#include "records/posschema.h"
#include "records/records.h"
#include "selling/salesservice.h"
#include "store/modelcontainer.h"

#include <QRandomGenerator>

#include <cmath>
#include <cstdio>
#include <exception>

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
        const Ref<AppSettings> settings = context.fetchFirst<AppSettings>();
        const Ref<User> cashier = context.fetchFirst<User>();
        const Ref<TillShift> shift = environment.tillService().currentOpenShift();
        const QList<Ref<Product>> products = context.fetch<Product>();
        const QList<Ref<Customer>> customers = context.fetch<Customer>();
        QRandomGenerator random(quint32(QByteArray(argv[2]).toUInt()));
        // The parent's clock for the kill starts here, not while a slow build is still starting up.
        std::puts("ready");
        std::fflush(stdout);
        for (;;) {
            const Cart cart = randomCart(random, products, customers, *settings);
            const double total = cart.calculation(settings->taxInclusivePricing()).total;
            environment.salesService().checkout(cart, randomPayments(random, cart, total), cashier, shift,
                                                *settings);
        }
    } catch (const std::exception& error) {
        // Any failure is a finding: the test reads this and the exit code.
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
