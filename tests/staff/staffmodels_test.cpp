#include "staffscene.h"

#include "staff/appointmentsviewmodel.h"
#include "staff/staffdetailmodel.h"
#include "staff/staffviewmodel.h"
#include "startup/sessionstore.h"

namespace {

struct StaffModelsTest : StaffScene {
    SessionStore session;

    std::unique_ptr<StaffDetailModel> detailOf(const Ref<StaffMember>& member)
    {
        return std::make_unique<StaffDetailModel>(staff, context, session, member);
    }
};

} // namespace

TEST_F(StaffModelsTest, CommissionIsTypedAsAPercentageAndKeptWithinZeroToAHundred)
{
    const struct {
        const char* typed;
        std::optional<double> rate;
    } cases[] = {{"12.5", 0.125}, {" 7,5 % ", 0.075}, {"-5", 0},          {"250", 1},
                 {"99.5", 0.995}, {"", std::nullopt},  {"ten", std::nullopt}, {"1e2", std::nullopt}};
    for (const auto& c : cases)
        EXPECT_EQ(StaffDetailModel::rateFromText(QString::fromUtf8(c.typed)), c.rate)
            << '"' << c.typed << '"';
    EXPECT_EQ(StaffDetailModel::textFromRate(0.125), "12.5");
}

TEST_F(StaffModelsTest, ANewMemberIsSavedOnceWithItsRateAndTextThatIsntANumberIsRefused)
{
    auto detail = detailOf(StaffViewModel::addStaffMember());
    EXPECT_FALSE(detail->hasUnsavedEdits()) << "nobody typed yet";
    detail->setName(QStringLiteral("  Efua Owusu "));
    detail->setCommissionText(QStringLiteral("ten"));
    EXPECT_EQ(detail->commissionProblem(), "Enter a percentage such as 10.");
    EXPECT_FALSE(detail->save());
    EXPECT_EQ(context.count<StaffMember>(), 0);

    detail->setCommissionText(QStringLiteral("12.5"));
    ASSERT_TRUE(detail->save());
    EXPECT_EQ(detail->member()->createdAt(), now);
    EXPECT_EQ(detail->name(), "Efua Owusu") << "the field shows what was saved";
    ASSERT_TRUE(detail->save());
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("StaffMember")), 1);

    detail->setName(QStringLiteral(" "));
    EXPECT_FALSE(detail->save());
    EXPECT_EQ(detail->errorMessage(), "Enter the staff member's name.");
    EXPECT_EQ(detail->member()->name(), "Efua Owusu");
}
