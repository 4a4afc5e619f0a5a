#include "records/appsettings.h"

#include "money/currency.h"
#include "money/quantity.h"
#include "records/records.h"

TALLY_RECORD_IMPL(AppSettings, TALLY_APP_SETTINGS_FIELDS)

double AppSettings::loyaltyValuePerPoint() const
{
    if (loyaltyRedeemPoints() < 1)
        return 0;
    return std::max(loyaltyRedeemValue(), 0.0) / double(loyaltyRedeemPoints());
}

QString AppSettings::discountLimitText() const
{
    if (discountLimitIsPercent())
        return Quantity::format(discountLimit()) + QStringLiteral("% of the sale");
    return Currency::format(discountLimit(), currencySymbol());
}
