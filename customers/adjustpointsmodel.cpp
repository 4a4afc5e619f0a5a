#include "customers/adjustpointsmodel.h"

AdjustPointsModel::AdjustPointsModel(LoyaltyService& loyalty, SessionStore& session, Ref<Customer> customer,
                                     std::function<void()> onDone, QObject* parent)
    : CustomerEntryModel(session, std::move(customer), std::move(onDone), parent)
    , m_loyalty(loyalty)
{
}

QString AdjustPointsModel::balanceLine() const
{
    return QStringLiteral("%1 has %2 points.")
        .arg(m_customer->name(), QString::number(m_customer->loyaltyPoints()));
}

qint64 AdjustPointsModel::enteredPoints() const
{
    bool ok = false;
    const qint64 value = m_pointsText.trimmed().toLongLong(&ok);
    return ok ? value : 0;
}

qint64 AdjustPointsModel::points() const
{
    return m_direction == Direction::add ? enteredPoints() : -enteredPoints();
}

std::optional<QString> AdjustPointsModel::newBalanceText() const
{
    if (enteredPoints() <= 0)
        return std::nullopt;
    return QStringLiteral("New balance: %1 points").arg(m_customer->loyaltyPoints() + points());
}

bool AdjustPointsModel::check()
{
    return writing([this] { LoyaltyService::checkAdjustment(*m_customer, points(), m_reason); });
}

bool AdjustPointsModel::save(const std::function<void()>& alongside)
{
    return saveThenDone([&] { m_loyalty.adjust(m_customer, points(), m_reason, m_session.currentUser()); },
                        alongside);
}
