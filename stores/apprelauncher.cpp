#include "stores/apprelauncher.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QProcess>

SystemAppRelauncher::SystemAppRelauncher(std::function<void()> beforeStart)
    : m_beforeStart(std::move(beforeStart))
{
}

void SystemAppRelauncher::relaunch()
{
    if (m_beforeStart)
        m_beforeStart();
    // A copy that fails to start is not reported: the user starts the program again by hand, and
    // it opens the store that was chosen.
    QProcess::startDetached(QCoreApplication::applicationFilePath(), {});
    // Queued, so the menu or dialog that asked finishes its own handling first, and so that a call
    // made before the event loop runs isn't lost.
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
}
