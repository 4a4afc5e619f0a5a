#include "ui/settings/approvalsettingssection.h"

#include "access/approvalservice.h"
#include "access/approvalsettingsmodel.h"
#include "access/userbuilder.h"
#include "records/records.h"
#include "support/teststore.h"
#include "ui/controls/errorlabel.h"

#include <QCheckBox>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace {

struct ApprovalSettingsSectionTest : ::testing::Test {
    TestStore store;
    ModelContext& context = store.context();
    Ref<AppSettings> settings = store.saved(std::make_shared<AppSettings>());
    Ref<User> boss =
        addUser(context, {.username = QStringLiteral("boss"), .role = UserRole::admin, .name = "Boss"});
    ApprovalService approvals{context};
    ApprovalSettingsModel model{context, settings, approvals};
    ApprovalSettingsSection section{model};

    ApprovalSettingsSectionTest() { section.show(); }

    QCheckBox* box(const QString& title) const
    {
        for (QCheckBox* found : section.findChildren<QCheckBox*>()) {
            if (found->text() == title)
                return found;
        }
        ADD_FAILURE() << "no switch " << title.toStdString();
        return nullptr;
    }
    void typeLimit(const QString& text)
    {
        QLineEdit* field = section.discountLimitField();
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    }
};

TEST_F(ApprovalSettingsSectionTest, EachSwitchSavesItsOwnSetting)
{
    using Getter = bool (AppSettings::*)() const;
    const std::pair<const char*, Getter> rows[] = {
        {"Discounts Over the Limit", &AppSettings::approveDiscounts},
        {"Price Changes at the Till", &AppSettings::approvePriceChanges},
        {"Refunds", &AppSettings::approveRefunds},
        {"Voids", &AppSettings::approveVoids},
        {"Redeeming Loyalty Points", &AppSettings::approveRedeemPoints},
        {"No Sale (Open Drawer)", &AppSettings::approveNoSale},
    };
    for (const auto& [title, getter] : rows) {
        SCOPED_TRACE(title);
        QCheckBox* toggle = box(QString::fromUtf8(title));
        ASSERT_TRUE(toggle);
        const bool before = (*settings.*getter)();
        EXPECT_EQ(toggle->isChecked(), before);
        toggle->click();
        EXPECT_EQ((*settings.*getter)(), !before);
        EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("AppSettings")), 1);
    }
}

TEST_F(ApprovalSettingsSectionTest, TheLimitTakesAnAmountAsWrittenAndRefusesWhatIsNone)
{
    auto* unit = section.findChild<QComboBox*>();
    ASSERT_TRUE(unit);
    unit->setCurrentIndex(1);
    Q_EMIT unit->activated(1);
    EXPECT_FALSE(settings->discountLimitIsPercent());

    typeLimit(QStringLiteral("1,250.00"));
    EXPECT_EQ(settings->discountLimit(), 1250);
    EXPECT_FALSE(section.discountLimitError()->isVisible());

    typeLimit(QStringLiteral("ten"));
    EXPECT_EQ(settings->discountLimit(), 1250);
    EXPECT_TRUE(section.discountLimitError()->isVisible());
    EXPECT_EQ(section.discountLimitField()->text(), QStringLiteral("ten"));
    EXPECT_FALSE(context.hasChanges());

    // Back to a percent, the saved amount reads without its cents.
    Q_EMIT unit->activated(0);
    typeLimit(QStringLiteral("12.5"));
    EXPECT_EQ(settings->discountLimit(), 12.5);
    EXPECT_EQ(settings->discountLimitText(), QStringLiteral("12.5% of the sale"));
}

TEST_F(ApprovalSettingsSectionTest, TheLimitsErrorSpeaksInItsUnitAndTheFormBelowKeepsItsPlace)
{
    auto* unit = section.findChild<QComboBox*>();
    ASSERT_TRUE(unit);
    QPushButton* open = nullptr;
    for (QPushButton* button : section.findChildren<QPushButton*>()) {
        if (button->text() == ApprovalSettingsModel::openAuditLogTitle())
            open = button;
    }
    ASSERT_TRUE(open);
    const auto openTop = [&] {
        QApplication::processEvents();
        return open->mapTo(&section, QPoint()).y();
    };
    const int top = openTop();

    const struct {
        int unit;
        const char* typed;
        const char* error; // empty when it reads
        double saved;
    } cases[] = {
        {0, "ten", "Enter a percentage such as 12.5.", 10}, // the limit a store starts with
        {0, "12.5%", "", 12.5},
        {0, "GHS 5", "Enter a percentage such as 12.5.", 12.5},
        // The switch to an amount reads the "GHS 5" left standing.
        {1, "ten", "Enter an amount such as 1,250.00.", 5},
        {1, "GHS 1,250.00", "", 1250},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        Q_EMIT unit->activated(c.unit);
        typeLimit(QString::fromUtf8(c.typed));
        EXPECT_EQ(section.discountLimitError()->isVisible(), *c.error != 0);
        EXPECT_EQ(section.discountLimitError()->text(), QString::fromUtf8(c.error));
        EXPECT_EQ(settings->discountLimit(), c.saved);
        EXPECT_EQ(openTop(), top);
    }
}

TEST_F(ApprovalSettingsSectionTest, TheWarningStaysUntilAnActiveAdminHasAPin)
{
    EXPECT_TRUE(section.noAdminPinWarning()->isVisible());
    EXPECT_EQ(section.noAdminPinWarning()->text(),
              QStringLiteral("No admin has a PIN yet, so nobody can approve. Set one below in User Accounts with "
                             "Set PIN…."));
    boss->setPin(QStringLiteral("2468"));
    context.save();
    EXPECT_FALSE(section.noAdminPinWarning()->isVisible());
    boss->setIsActive(false);
    context.save();
    EXPECT_TRUE(section.noAdminPinWarning()->isVisible());
}

} // namespace
