#include "access/approvalsettingsmodel.h"

#include "access/approvalservice.h"
#include "money/numberentry.h"
#include "records/user.h"

namespace {

using Setter = void (AppSettings::*)(bool);

// In the order of the switches.
constexpr std::array<Setter, ApprovalSettingsModel::switches.size()> setters{
    &AppSettings::setApproveDiscounts, &AppSettings::setApprovePriceChanges, &AppSettings::setApproveRefunds,
    &AppSettings::setApproveVoids,     &AppSettings::setApproveRedeemPoints, &AppSettings::setApproveNoSale};

Setter setterOf(AuditAction action)
{
    for (size_t index = 0; index < setters.size(); ++index) {
        if (ApprovalSettingsModel::switches[index].action == action)
            return setters[index];
    }
    Q_UNREACHABLE();
}

} // namespace

ApprovalSettingsModel::ApprovalSettingsModel(ModelContext& context, Ref<AppSettings> settings,
                                             ApprovalService& approvals, QObject* parent)
    : ViewModel(parent)
    , m_context(context)
    , m_settings(std::move(settings))
    , m_approvals(approvals)
    , m_limitText(savedLimitText())
{
    Q_ASSERT(m_settings);
    // A PIN set in User Accounts below takes the warning away at once.
    m_context.onChange(this, {&User::schema(), &AppSettings::schema()}, [this] { Q_EMIT changed(); });
}

template <class Change> void ApprovalSettingsModel::change(Change apply)
{
    saveOrUndo(m_context, [&] { apply(*m_settings); });
    Q_EMIT changed();
}

bool ApprovalSettingsModel::isOn(AuditAction action) const
{
    return AuditActions::isSwitchedOn(action, m_settings.get());
}

void ApprovalSettingsModel::setOn(AuditAction action, bool on)
{
    if (isOn(action) != on)
        change([&](AppSettings& settings) { (settings.*setterOf(action))(on); });
}

QString ApprovalSettingsModel::amountUnit() const
{
    return m_settings->currencySymbol() + QStringLiteral(" per sale");
}

QString ApprovalSettingsModel::savedLimitText() const
{
    const double limit = m_settings->discountLimit();
    QString text = QString::number(limit, 'f', NumberEntry::centPlaces);
    // A percent reads as "10" and "12.5", an amount keeps its cents.
    if (m_settings->discountLimitIsPercent() && text.contains(QLatin1Char('.'))) {
        while (text.endsWith(QLatin1Char('0')))
            text.chop(1);
        if (text.endsWith(QLatin1Char('.')))
            text.chop(1);
    }
    return text;
}

std::optional<double> ApprovalSettingsModel::typedLimit(QString* problem) const
{
    if (!m_settings->discountLimitIsPercent()) {
        const NumberEntry entry = NumberEntry::money(m_limitText);
        if (problem)
            *problem = entry.problem;
        return entry.value;
    }
    QString typed = m_limitText.trimmed();
    if (typed.endsWith(QLatin1Char('%')))
        typed.chop(1);
    // Read as an amount but for its currency sign, which no percentage carries.
    const bool withSign = !typed.isEmpty() && !typed.front().isDigit() && typed.front() != QLatin1Char('.') &&
                         typed.front() != QLatin1Char('-');
    const NumberEntry entry = withSign ? NumberEntry{std::nullopt, {}} : NumberEntry::money(typed);
    if (problem)
        *problem = entry.isValid() ? QString() : percentProblem();
    return entry.value;
}

std::optional<QString> ApprovalSettingsModel::discountLimitProblem() const
{
    QString problem;
    if (typedLimit(&problem))
        return std::nullopt;
    return problem;
}

void ApprovalSettingsModel::setDiscountLimitIsPercent(bool percent)
{
    if (m_settings->discountLimitIsPercent() == percent)
        return;
    // What was typed and saved shows as the saved limit reads in the new unit; what didn't read
    // in the old unit may in the new one ("₵5" typed against a percentage).
    const bool saved = !discountLimitProblem();
    change([&](AppSettings& settings) { settings.setDiscountLimitIsPercent(percent); });
    if (saved) {
        m_limitText = savedLimitText();
        Q_EMIT changed();
    } else {
        setDiscountLimitText(m_limitText);
    }
}

void ApprovalSettingsModel::setDiscountLimitText(const QString& text)
{
    m_limitText = text;
    const std::optional<double> limit = typedLimit();
    if (limit && *limit != m_settings->discountLimit())
        change([&](AppSettings& settings) { settings.setDiscountLimit(*limit); });
    else
        Q_EMIT changed();
}

bool ApprovalSettingsModel::nobodyCanApprove()
{
    try {
        return m_approvals.adminsWithPin().isEmpty();
    } catch (const Refusal&) {
        // A store that can't be read says so where a change is refused; a warning guessed from
        // nothing would only mislead.
        return false;
    }
}
