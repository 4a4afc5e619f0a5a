#include "ui/controls/readingorder.h"

#include <QApplication>
#include <QScrollArea>
#include <QWidget>

#include <algorithm>

namespace {
bool takesTab(const QWidget* widget)
{
    return (widget->focusPolicy() & Qt::TabFocus) && widget->isVisible() && widget->isEnabled();
}

// Within another stop (a spin box's edit), or within a scroll area, whose fields are its block's.
bool insideAnotherStop(const QWidget* widget, const QWidget* form)
{
    for (const QWidget* up = widget->parentWidget(); up && up != form; up = up->parentWidget()) {
        if ((up->focusPolicy() & Qt::TabFocus) || qobject_cast<const QScrollArea*>(up))
            return true;
    }
    return false;
}

// Leaves the form for the next widget outside it that takes Tab, in Qt's focus chain.
bool leave(QWidget* form, QWidget* from, bool next)
{
    for (QWidget* w = next ? from->nextInFocusChain() : from->previousInFocusChain(); w != from;
         w = next ? w->nextInFocusChain() : w->previousInFocusChain()) {
        if (w != form && !form->isAncestorOf(w) && takesTab(w) && !w->focusProxy()) {
            w->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    return false;
}
} // namespace

QList<QWidget*> ReadingOrder::stops(QWidget* form)
{
    struct Stop {
        QWidget* widget;
        QRect box; // in the form's coordinates
    };
    // Fields inside a scroll area read as one block where the area stands, however far they are
    // scrolled: their own positions would interleave them with what lies below the area.
    QList<Stop> found;
    for (QWidget* widget : form->findChildren<QWidget*>()) {
        auto* scroll = qobject_cast<QScrollArea*>(widget);
        const bool isStop = scroll ? scroll->widget() != nullptr && scroll->isVisible()
                                   : takesTab(widget) && !widget->isWindow();
        if (isStop && !insideAnotherStop(widget, form))
            found.append({widget, QRect(widget->mapTo(form, QPoint(0, 0)), widget->size())});
    }
    std::sort(found.begin(), found.end(),
              [](const Stop& a, const Stop& b) { return a.box.center().y() < b.box.center().y(); });
    // A widget whose middle lies within the line's first widget's height is on that line: a "New…"
    // button beside a taller combo box reads after it.
    QList<QWidget*> ordered;
    for (qsizetype start = 0; start < found.size();) {
        qsizetype end = start + 1;
        while (end < found.size() && found[end].box.center().y() <= found[start].box.bottom())
            ++end;
        std::sort(found.begin() + start, found.begin() + end,
                  [](const Stop& a, const Stop& b) { return a.box.left() < b.box.left(); });
        for (qsizetype i = start; i < end; ++i) {
            if (auto* scroll = qobject_cast<QScrollArea*>(found[i].widget))
                ordered.append(stops(scroll->widget()));
            else
                ordered.append(found[i].widget);
        }
        start = end;
    }
    return ordered;
}

bool ReadingOrder::focusNext(QWidget* form, bool next)
{
    QWidget* current = QApplication::focusWidget();
    if (!current)
        return false;
    const QList<QWidget*> order = stops(form);
    const auto at = std::find_if(order.begin(), order.end(),
                                 [current](QWidget* stop) { return stop == current || stop->isAncestorOf(current); });
    if (at == order.end())
        return false;
    const qsizetype index = (at - order.begin()) + (next ? 1 : -1);
    if (index < 0 || index >= order.size())
        return leave(form, next ? order.last() : order.first(), next);
    QWidget* target = order[index];
    target->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    // Qt scrolls to the field only when the scroll area itself moved the focus.
    for (QWidget* up = target->parentWidget(); up; up = up->parentWidget()) {
        if (auto* scroll = qobject_cast<QScrollArea*>(up))
            scroll->ensureWidgetVisible(target);
    }
    return true;
}

bool ReadingOrderForm::focusNextPrevChild(bool next)
{
    return ReadingOrder::focusNext(this, next) || QWidget::focusNextPrevChild(next);
}
