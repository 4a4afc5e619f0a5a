#pragma once

#include <QList>
#include <QWidget>

// Tab moves through a form as it reads: line by line from the top, left to right along a line,
// whatever order its widgets were made in and whichever sections are on show at the moment.
// A form calls focusNext from its focusNextPrevChild; past its last stop, Tab leaves the form.
namespace ReadingOrder {
// The form's visible, enabled widgets that Tab stops at, in reading order. A widget inside another
// stop (a spin box's edit) is that stop's.
QList<QWidget*> stops(QWidget* form);
// Moves the focus to the next (or previous) stop, or out of the form past either end. False when
// the focus isn't on one of the form's stops, for Qt's own order to apply.
bool focusNext(QWidget* form, bool next);
} // namespace ReadingOrder

// A plain container of fields whose Tab follows the reading order.
class ReadingOrderForm : public QWidget {
public:
    using QWidget::QWidget;

protected:
    bool focusNextPrevChild(bool next) override;
};
