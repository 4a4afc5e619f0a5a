#include "access/attemptthrottle.h"

#include "clock/clock.h"

#include <algorithm>

namespace {

constexpr qint64 firstWaitSeconds = 30;
constexpr qint64 longestWaitSeconds = 5 * 60;

QString waitText(qint64 seconds)
{
    if (seconds < 60)
        return seconds == 1 ? QStringLiteral("1 second") : QStringLiteral("%1 seconds").arg(seconds);
    const qint64 minutes = (seconds + 59) / 60;
    return minutes == 1 ? QStringLiteral("1 minute") : QStringLiteral("%1 minutes").arg(minutes);
}

} // namespace

void AttemptThrottle::checkAllowed() const
{
    if (!m_blockedUntil.isValid())
        return;
    const qint64 left = Clock::now().secsTo(m_blockedUntil);
    if (left > 0)
        throw Refusal(QStringLiteral("Too many wrong tries. Wait %1 before trying again.").arg(waitText(left)));
}

void AttemptThrottle::recordFailure()
{
    ++m_wrongInARow;
    if (m_wrongInARow < freeTries)
        return;
    const int doublings = std::min(m_wrongInARow - freeTries, 10);
    const qint64 wait = std::min(firstWaitSeconds << doublings, longestWaitSeconds);
    m_blockedUntil = Clock::now().addSecs(wait);
}

void AttemptThrottle::recordSuccess()
{
    m_wrongInARow = 0;
    m_blockedUntil = QDateTime();
}
