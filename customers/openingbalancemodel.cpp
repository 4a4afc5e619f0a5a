#include "customers/openingbalancemodel.h"

#include "clock/clock.h"
#include "money/currency.h"
#include "money/numberentry.h"

namespace {
// Nothing typed is no amount, which the service refuses in its own words.
NumberEntry entered(const QString& text)
{
    return text.trimmed().isEmpty() ? NumberEntry{0.0, {}} : NumberEntry::money(text);
}
} // namespace

OpeningBalanceModel::OpeningBalanceModel(AccountsService& accounts, SessionStore& session, Ref<Customer> customer,
                                         std::function<void()> onDone, QObject* parent)
    : CustomerEntryModel(session, std::move(customer), std::move(onDone), parent)
    , m_accounts(accounts)
    , m_owedSince(latestDay())
{
}

QDate OpeningBalanceModel::latestDay()
{
    return Clock::now().toLocalTime().date();
}

QString OpeningBalanceModel::explanation() const
{
    return QStringLiteral("What %1 already owed before their account was kept in Brindle, from your credit "
                          "book. It is added to what they owe and ages from the day it dates from. It isn't a "
                          "sale: no till, takings or report counts it. A customer has one opening balance.")
        .arg(m_customer->name());
}

std::optional<QString> OpeningBalanceModel::amountProblem() const
{
    const NumberEntry entry = entered(m_amountText);
    return entry.isValid() ? std::nullopt : std::optional(entry.problem);
}

double OpeningBalanceModel::amount() const
{
    return entered(m_amountText).value.value_or(0);
}

QString OpeningBalanceModel::summary() const
{
    const Ref<AppSettings> settings = m_session.settings();
    return QStringLiteral("%1 owed by %2 since %3.")
        .arg(Currency::format(amount(), settings ? settings->currencySymbol() : Currency::fixedSign),
             m_customer->name(), m_owedSince.toString(QStringLiteral("MMM d, yyyy")));
}

QString OpeningBalanceModel::details() const
{
    QString text = QStringLiteral("%1 owed since %2")
                       .arg(Currency::format(amount(), Currency::fixedSign),
                            m_owedSince.toString(QStringLiteral("yyyy-MM-dd")));
    if (!m_note.trimmed().isEmpty())
        text += QStringLiteral("; ") + m_note.trimmed();
    return text;
}

bool OpeningBalanceModel::check()
{
    if (amountProblem())
        return false;
    return writing([this] { m_accounts.checkOpeningBalance(m_customer, amount(), m_owedSince); });
}

bool OpeningBalanceModel::save(const std::function<void()>& alongside)
{
    if (amountProblem())
        return false;
    return saveThenDone(
        [&] {
            m_accounts.recordOpeningBalance(m_customer, amount(), m_owedSince, m_note, m_session.currentUser());
        },
        alongside);
}
