#include "ui/controls/wheelguard.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>

namespace {
bool takesWheelOnlyWhenFocused(QObject* object)
{
    return qobject_cast<QComboBox*>(object) || qobject_cast<QAbstractSpinBox*>(object);
}
} // namespace

bool WheelGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (!takesWheelOnlyWhenFocused(watched))
        return false;
    auto* widget = static_cast<QWidget*>(watched);
    if (event->type() == QEvent::Polish) {
        // Their default lets the wheel hand them focus, and then the value changes after all.
        widget->setFocusPolicy(Qt::StrongFocus);
    } else if (event->type() == QEvent::Wheel && !widget->hasFocus()) {
        // Handled here but not accepted: the application passes it on to the parents.
        event->ignore();
        return true;
    }
    return false;
}
