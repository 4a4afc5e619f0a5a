#include "clock/clock.h"

namespace {
std::function<QDateTime()>& source()
{
    static std::function<QDateTime()> current;
    return current;
}
} // namespace

QDateTime Clock::now()
{
    const auto& current = source();
    return current ? current() : QDateTime::currentDateTime();
}

double Clock::nowSeconds()
{
    return double(now().toMSecsSinceEpoch()) / 1000.0;
}

Clock::Override::Override(std::function<QDateTime()> replacement)
    : m_previous(source())
{
    source() = std::move(replacement);
}

Clock::Override::Override(const QDateTime& fixed)
    : Override([fixed] { return fixed; })
{
}

Clock::Override::~Override()
{
    source() = m_previous;
}

void Clock::readLocalZoneOnce()
{
    // An empty TZ means UTC to the C library, so only an unset one is replaced.
    if (!qEnvironmentVariableIsSet("TZ"))
        qputenv("TZ", ":/etc/localtime");
}
