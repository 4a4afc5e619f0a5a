#pragma once

#include <QString>

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

// A screen with one form, on the record chosen in its list or on a new one. Whichever way the
// person leaves unsaved edits, "Save changes to …?" is asked first.
class FormScreen : public EditingScreen {
public:
    void askToLeave(std::function<void()> proceed) final;

protected:
    // What the question calls the record on the form; asked only while there are unsaved edits.
    virtual QString editedName() const = 0;
    // The form's Save: false, with the reason on the form, when it didn't go through.
    virtual bool saveEdits() = 0;
    // Don't Save.
    virtual void discardEdits() = 0;

    // Another row chosen in the list: `open` runs once the edits are saved or dropped, and until
    // the question is answered the list points back at the record being edited (`showEdited`).
    void openAfterAsking(const std::function<void()>& showEdited, std::function<void()> open);
};
