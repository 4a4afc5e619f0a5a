#include "ui/navigation/appsection.h"

#include "records/appsettings.h"
#include "support/printers.h"

#include <gtest/gtest.h>

namespace {
QStringList titles(const QList<AppSection>& sections)
{
    QStringList result;
    for (AppSection section : sections)
        result.append(AppSections::title(section));
    return result;
}
} // namespace

TEST(AppSections, WhoSeesWhat)
{
    AppSettings bookOn;
    AppSettings bookOff;
    bookOff.setAppointmentsEnabled(false);
    const QStringList cashier{"POS Workspace", "Appointments", "Customers",
                              "Sales History", "Refunds",      "Till & Shifts"};

    EXPECT_EQ(titles(AppSections::available("cashier", &bookOn)), cashier);
    EXPECT_EQ(AppSections::available("cashier", &bookOff).size(), 5);
    EXPECT_EQ(AppSections::available("cashier", nullptr).size(), 5) << "no settings, no book";
    EXPECT_EQ(titles(AppSections::available("manager", &bookOn)), cashier) << "unknown role as cashier";
    EXPECT_EQ(titles(AppSections::available("Admin", &bookOn)), cashier) << "raw texts are exact";

    const QList<AppSection> admin = AppSections::available("admin", &bookOn);
    EXPECT_EQ(admin.size(), 15);
    EXPECT_EQ(titles({admin.first(), admin.last()}), (QStringList{"Dashboard", "Settings"}));
}

TEST(AppSections, AllowedSelection)
{
    using S = AppSection;
    const QList<S> withPos{S::pos, S::customers};
    const QList<S> withoutPos{S::customers, S::till};
    const struct {
        const char* fault;
        std::optional<S> wanted;
        bool isAdmin;
        QList<S> offered;
        std::optional<S> expected;
    } cases[] = {
        {"cashier kept on an admin-only section", S::reports, false, withPos, S::pos},
        {"no workspace to fall back on", S::reports, false, withoutPos, S::customers},
        {"nothing offered at all", S::settings, false, {}, std::nullopt},
        {"a section that isn't offered", S::refunds, true, withPos, S::pos},
        {"a cashier's own section refused", S::customers, false, withPos, S::customers},
        {"an admin refused an admin section", S::settings, true, {S::settings}, S::settings},
    };
    for (const auto& c : cases)
        EXPECT_EQ(AppSections::allowedSelection(c.wanted, c.isAdmin, c.offered), c.expected) << c.fault;
}
