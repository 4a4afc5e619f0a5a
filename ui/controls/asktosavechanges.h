#pragma once

#include <QString>

#include <functional>

class QWidget;

// "Save changes to {name}?" with Save, Don't Save and Cancel, before unsaved edits are left.
// `save` tells whether the save went through: only then, or after Don't Save has run `discard`,
// does `proceed` run. Cancel, or a failed save (whose message the form shows), stays.
void askToSaveChanges(QWidget* parent, const QString& name, std::function<bool()> save,
                      std::function<void()> discard, std::function<void()> proceed);

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
