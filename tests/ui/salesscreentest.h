#pragma once

#include "ui/controls/screentest.h"

#include "support/salesscene.h"

// A screen of the sales that follow a sale: a clock that moves a second at every look, so that no
// two sales share an instant, an admin whose PIN approves, and soap on the shelf.
class SalesScreenTest : public ScreenTest {
protected:
    QDateTime now{QDate(2026, 3, 9), QTime(10, 0)};
    Clock::Override clock{[this] { return now = now.addSecs(1); }};
    SalesScene scene{store.context()};
    Ref<User> admin = addUser(store.context(), {.username = QStringLiteral("akosua"),
                                                .pin = QStringLiteral("4321"),
                                                .role = UserRole::admin,
                                                .name = QStringLiteral("Akosua")});
    Ref<Product> soap = scene.product({.name = "Soap", .price = 10, .stock = 50});
};
