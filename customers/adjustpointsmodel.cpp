#include "customers/adjustpointsmodel.h"

#include "customers/loyaltyerror.h"
#include "store/storeerror.h"

AdjustPointsModel::AdjustPointsModel(LoyaltyService& loyalty, SessionStore& session, Ref<Customer> customer,
                                     std::function<void()> onDone, QObject* parent)
    : QObject(parent)
    , m_loyalty(loyalty)
    , m_session(session)
    , m_customer(std::move(customer))
    , m_onDone(std::move(onDone))
{
    Q_ASSERT(m_customer);
}

void AdjustPointsModel::setDirection(Direction direction)
{
    if (direction == m_direction)
        return;
    m_direction = direction;
    Q_EMIT fieldsChanged();
}

void AdjustPointsModel::setPointsText(const QString& text)
{
    if (text == m_pointsText)
        return;
    m_pointsText = text;
    Q_EMIT fieldsChanged();
}

void AdjustPointsModel::setReason(const QString& text)
{
    if (text == m_reason)
        return;
    m_reason = text;
    Q_EMIT fieldsChanged();
}

void AdjustPointsModel::setErrorMessage(const std::optional<QString>& message)
{
    if (message == m_errorMessage)
        return;
    m_errorMessage = message;
    Q_EMIT errorMessageChanged();
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

bool AdjustPointsModel::save()
{
    try {
        m_loyalty.adjust(m_customer, points(), m_reason, m_session.currentUser());
    } catch (const LoyaltyError& error) {
        setErrorMessage(error.description());
        return false;
    } catch (const StoreError& error) {
        setErrorMessage(error.description());
        return false;
    }
    setErrorMessage(std::nullopt);
    if (m_onDone)
        m_onDone();
    return true;
}
