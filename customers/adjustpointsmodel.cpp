#include "customers/adjustpointsmodel.h"

#include "store/unitofwork.h"

AdjustPointsModel::AdjustPointsModel(LoyaltyService& loyalty, SessionStore& session, Ref<Customer> customer,
                                     std::function<void()> onDone, QObject* parent)
    : ViewModel(parent)
    , m_loyalty(loyalty)
    , m_session(session)
    , m_customer(std::move(customer))
    , m_onDone(std::move(onDone))
{
    Q_ASSERT(m_customer);
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
    ModelContext* context = m_customer->context();
    Q_ASSERT(context);
    const bool saved = writing([&] {
        performUnitOfWork(*context, [&] {
            m_loyalty.adjust(m_customer, points(), m_reason, m_session.currentUser());
            if (alongside)
                alongside();
        });
    });
    if (!saved)
        return false;
    if (m_onDone)
        m_onDone();
    return true;
}
