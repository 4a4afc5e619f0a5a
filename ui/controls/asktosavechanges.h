#pragma once

#include <QString>

#include <functional>

class QWidget;

// A form's side of the question before its edits are left.
struct UnsavedEdits {
    bool any = false;
    // What the question calls the record; asked for only when there is something to lose.
    std::function<QString()> name;
    // The form's Save: whether it went through (when not, the form shows why).
    std::function<bool()> save;
    std::function<void()> discard;
};

// "Save changes to {name}?" with Save, Don't Save and Cancel, before unsaved edits are left.
// `proceed` runs once they are saved, or dropped by Don't Save, and at once when there are none.
// Cancel, or a failed save, stays.
void askToSaveChanges(QWidget* parent, UnsavedEdits edits, std::function<void()> proceed);

// The name to ask about: a record whose name was wiped is called by its kind ("New Supplier").
inline QString nameOrTitle(const QString& name, const QString& untitled)
{
    const QString trimmed = name.trimmed();
    return trimmed.isEmpty() ? untitled : trimmed;
}

struct SaveChangesTexts {
    static QString question(const QString& name) { return QStringLiteral("Save changes to %1?").arg(name); }
    static QString note() { return QStringLiteral("Your changes will be lost if you don't save them."); }
    static QString save() { return QStringLiteral("Save"); }
    static QString discard() { return QStringLiteral("Don't Save"); }
    static QString cancel() { return QStringLiteral("Cancel"); }
};
