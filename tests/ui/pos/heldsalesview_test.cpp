#include "ui/pos/heldsalesview.h"

#include "environment/appenvironment.h"
#include "startup/sessionstore.h"
#include "ui/controls/screentest.h"

#include "support/salesscene.h"
#include "support/teststore.h"

#include <QPushButton>

#include <gtest/gtest.h>

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
    EXPECT_TRUE(visibleTexts(&view).contains("No held sales"));

    Cart cart;
    cart.addOrIncrement(scene.product({.name = "Soap", .price = 10}), 2);
    const Ref<HeldSale> first = environment.salesService().hold(cart, nullptr, QStringLiteral("back at 3"));
    const Ref<HeldSale> second = environment.salesService().hold(cart, nullptr, QString());
    EXPECT_FALSE(view.isShowingNoHolds()) << "the list follows the holds";
    ASSERT_EQ(view.recallButtons().size(), 2);
    const QStringList texts = visibleTexts(&view);
    for (const char* text : {"Hold #1", "Hold #2", "back at 3", "₵20.00"})
        EXPECT_TRUE(texts.contains(QString::fromUtf8(text))) << text;

    view.cancelButtons()[0]->click();
    EXPECT_EQ(first->statusRaw(), "cancelled");
    EXPECT_EQ(store.context().count<HeldSale>(), 2) << "cancelled, not deleted";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(view.recallButtons().size(), 1);

    view.recallButtons()[0]->click();
    EXPECT_EQ(recalled, QList<Ref<HeldSale>>{second});
    EXPECT_EQ(second->statusRaw(), "active") << "what a recall writes is the workspace's to do";
}
