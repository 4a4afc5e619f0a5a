#include "ui/pos/heldsalesview.h"

#include "ui/controls/screentest.h"

#include "support/salesscene.h"

#include <QPushButton>

TEST(HeldSalesViewTest, RecallGoesToTheWorkspaceAndCancelKeepsTheRowAsCancelled)
{
    TestStore store;
    AppEnvironment environment(store.context());
    SessionStore session;
    session.setSettings(environment.loadOrCreateSettings());
    SalesScene scene(store.context());
    QList<Ref<HeldSale>> recalled;
    HeldSalesView view(store.context(), session, [&](const Ref<HeldSale>& held) { recalled.append(held); });
    EXPECT_TRUE(view.isShowingNoHolds());

    Cart cart;
    cart.addOrIncrement(scene.product({}), 2);
    const Ref<HeldSale> first = environment.salesService().hold(cart, nullptr, QStringLiteral("back at 3"));
    const Ref<HeldSale> second = environment.salesService().hold(cart, nullptr, QString());
    ASSERT_EQ(view.recallButtons().size(), 2) << "the list follows the holds";
    EXPECT_TRUE(visibleTexts(&view).contains("back at 3"));

    view.cancelButtons()[0]->click();
    EXPECT_EQ(first->statusRaw(), "cancelled");
    EXPECT_EQ(store.context().count<HeldSale>(), 2) << "cancelled, not deleted";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(view.recallButtons().size(), 1);

    view.recallButtons()[0]->click();
    EXPECT_EQ(recalled, QList<Ref<HeldSale>>{second});
    EXPECT_EQ(second->statusRaw(), "active") << "what a recall writes is the workspace's to do";
}
