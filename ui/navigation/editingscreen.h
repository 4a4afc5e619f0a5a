#pragma once

#include <functional>

class QWidget;

// A screen that may hold edits not yet saved. Whatever would take the person away from it (another
// row, another section, Sign Out, Switch Store, closing the window) asks it first.
class EditingScreen {
public:
    // Something that asks before the person is taken away, then runs `proceed`.
    using LeaveCheck = std::function<void(std::function<void()> proceed)>;

    virtual ~EditingScreen() = default;

    virtual bool hasUnsavedEdits() const = 0;
    // Runs `proceed` once the edits are saved or dropped, at once when there are none. Cancel, or
    // a save that fails, keeps the person where they are and never runs it.
    virtual void askToLeave(std::function<void()> proceed) = 0;

    // What `screen` says, when it is one; screens that edit nothing may always be left.
    static bool hasUnsavedEdits(QWidget* screen);
    static void askToLeave(QWidget* screen, std::function<void()> proceed);
};
