#include "money/taxbreakdown.h"
#include "money/taxcomponent.h"

#include <gtest/gtest.h>

#include <string>

static std::string labelsAndAmounts(const std::vector<TaxAmount>& amounts)
{
    QString text;
    for (const TaxAmount& entry : amounts)
        text += entry.label + u'=' + QString::number(entry.amount) + u';';
    return text.toStdString();
}

TEST(TaxComponent, EncodingIsPinnedAndRoundTripsEveryDouble)
{
    const std::vector<TaxComponent> standard{
        {"NHIL (2.5%)", 0.025}, {"GETFund Levy (2.5%)", 0.025}, {"VAT (15%)", 0.15}};
    EXPECT_EQ(TaxComponent::encode(standard).toStdString(),
              "NHIL (2.5%)|0.025\nGETFund Levy (2.5%)|0.025\nVAT (15%)|0.15");
    EXPECT_EQ(TaxComponent::encode({}), QString());

    // Compound shares are products of rates and need all 17 digits to come back unchanged.
    const std::vector<TaxComponent> awkward{{"A", 0.1 + 0.2}, {"B", 1.1 * 0.05}, {"C", 1e-5}, {"D", 1}};
    EXPECT_EQ(TaxComponent::encode(awkward).toStdString(),
              "A|0.30000000000000004\nB|0.05500000000000001\nC|1e-05\nD|1");
    const std::vector<TaxComponent> decoded = TaxComponent::decode(TaxComponent::encode(awkward));
    ASSERT_EQ(decoded.size(), awkward.size());
    for (size_t i = 0; i < awkward.size(); ++i) {
        EXPECT_EQ(decoded[i].label, awkward[i].label);
        EXPECT_EQ(decoded[i].share, awkward[i].share);
    }
}

TEST(TaxComponent, DecodeSkipsUnreadableLinesAndKeepsOrder)
{
    const QString text =
        "\nVAT (15%)|0.15\nno bar\na|b|0.1\nNHIL|abc\nLevy|\nGETFund|nan\n\n|0.025\nNHIL (2.5%)|0.025\n";
    const std::vector<TaxComponent> decoded = TaxComponent::decode(text);
    ASSERT_EQ(decoded.size(), 3u);
    EXPECT_EQ(decoded[0].label, "VAT (15%)");
    EXPECT_EQ(decoded[0].share, 0.15);
    EXPECT_EQ(decoded[1].label, ""); // an empty label still has two pieces
    EXPECT_EQ(decoded[2].label, "NHIL (2.5%)");
    EXPECT_TRUE(TaxComponent::decode("").empty());
}

TEST(TaxBreakdown, ForLineSplitsByShareAndCombineAddsUpExactlyToTheTotal)
{
    const std::vector<TaxComponent> standard{{"NHIL", 0.025}, {"GETFund", 0.025}, {"VAT", 0.15}};
    EXPECT_EQ(labelsAndAmounts(TaxBreakdown::forLine(standard, 2, 60, 20, 0.2, false)),
              "NHIL=2.5;GETFund=2.5;VAT=15;");
    EXPECT_EQ(labelsAndAmounts(TaxBreakdown::forLine(standard, 2, 60, 0, 0.2, true)),
              "NHIL=2.5;GETFund=2.5;VAT=15;");
    // Lines sold before components were kept show their whole rate as one tax.
    EXPECT_EQ(labelsAndAmounts(TaxBreakdown::forLine({}, 1, 100, 0, 0.15, false)), "Tax (15%)=15;");
    EXPECT_TRUE(TaxBreakdown::forLine({}, 1, 100, 0, 0, false).empty());
    EXPECT_TRUE(TaxBreakdown::forLine({{"Zero", 0}}, 1, 100, 0, 0.15, false).empty());

    // clang-format off
    const struct {
        const char* name;
        std::vector<std::vector<TaxAmount>> items;
        double total;
        const char* expected;
    } cases[] = {
        {"tie goes to the first label", {{{"VAT", 1.005}, {"NHIL", 1.005}}}, 2.01, "VAT=1.01;NHIL=1;"},
        {"refund gives negatives", {{{"VAT", 1.005}, {"NHIL", 1.005}}}, -2.01, "VAT=-1.01;NHIL=-1;"},
        {"largest remainder first", {{{"A", 0.333}, {"B", 0.336}, {"C", 0.331}}}, 1, "A=0.33;B=0.34;C=0.33;"},
        {"summed by label, first seen first", {{{"VAT", 1}, {"NHIL", 0.5}}, {{"NHIL", 0.25}, {"VAT", 2}}}, 3.75,
         "VAT=3;NHIL=0.75;"},
        {"leftover cents go round again", {{{"A", 0.1}, {"B", 0.1}}}, 0.45, "A=0.23;B=0.22;"},
        // 0.29 is 28.999999999999996 cents in binary and must still count 29 whole ones.
        {"a smaller total takes nothing away", {{{"A", 0.29}, {"B", 1}}}, 1.2, "A=0.29;B=1;"},
        {"no taxes", {{}, {}}, 5, ""},
    };
    // clang-format on
    for (const auto& c : cases)
        EXPECT_EQ(labelsAndAmounts(TaxBreakdown::combine(c.items, c.total)), c.expected) << c.name;
}
