#include "till/tillservice.h"

#include "support/teststore.h"

#include <gtest/gtest.h>

namespace {
QUuid addShift(ModelContext& context, const char* status)
{
    auto shift = std::make_shared<TillShift>();
    shift->setStatusRaw(status);
    context.insert(shift);
    return shift->id();
}
} // namespace

TEST(TillService, ShiftLeftOpenIsFoundOnTheNextLaunch)
{
    TestStore store;
    EXPECT_EQ(TillService(store.context()).currentOpenShift(), nullptr);
    addShift(store.context(), "closed");
    addShift(store.context(), "Open"); // raw texts are exact
    store.context().save();
    EXPECT_EQ(TillService(store.context()).currentOpenShift(), nullptr);

    const QUuid open = addShift(store.context(), "open");
    store.context().save();
    store.reopen();
    const Ref<TillShift> found = TillService(store.context()).currentOpenShift();
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->id(), open);
}
