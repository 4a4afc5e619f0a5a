#include "ui/controls/lazyrefresh.h"

#include <QEvent>
#include <QWidget>

LazyRefresh::LazyRefresh(QWidget* screen, std::function<void()> refresh)
    : QObject(screen)
    , m_screen(screen)
    , m_refresh(std::move(refresh))
{
    screen->installEventFilter(this);
}

void LazyRefresh::request()
{
    if (m_screen->isVisible()) {
        m_isStale = false;
        m_refresh();
    } else {
        m_isStale = true;
    }
}

bool LazyRefresh::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_screen && event->type() == QEvent::Show && m_isStale) {
        m_isStale = false;
        m_refresh();
    }
    return false;
}
