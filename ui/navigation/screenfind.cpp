#include "ui/navigation/screenfind.h"

#include "ui/navigation/posactionbus.h"

#include <QEvent>
#include <QLineEdit>

void ScreenFind::offer(POSActionBus& bus, QWidget* screen, QLineEdit* field)
{
    new ScreenFind(bus, screen, field);
}

ScreenFind::ScreenFind(POSActionBus& bus, QWidget* screen, QLineEdit* field)
    : QObject(screen)
    , m_bus(&bus)
    , m_field(field)
{
    screen->installEventFilter(this);
}

ScreenFind::~ScreenFind()
{
    withdraw();
}

bool ScreenFind::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show) {
        m_offered = true;
        m_bus->setFindOnScreen([this] {
            m_field->setFocus(Qt::ShortcutFocusReason);
            m_field->selectAll();
        });
    } else if (event->type() == QEvent::Hide) {
        withdraw();
    }
    return QObject::eventFilter(watched, event);
}

void ScreenFind::withdraw()
{
    // Hidden before it was ever shown: nothing to take back.
    if (!m_offered || !m_bus)
        return;
    m_offered = false;
    m_bus->setFindOnScreen({});
}
