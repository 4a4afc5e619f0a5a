#pragma once

#include <QPointer>
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

// For a list beside one record's detail: straight on when the detail has no unsaved edits, else
// asks first. Don't Save puts the fields back, or, for a record not yet saved, `drop`s the detail.
template <class Detail>
void askToLeaveDetail(QWidget* screen, Detail* detail, const QString& untitled, std::function<void()> drop,
                      std::function<void()> proceed)
{
    if (!detail || !detail->model().hasUnsavedEdits()) {
        proceed();
        return;
    }
    const QPointer<Detail> asked(detail);
    askToSaveChanges(
        screen, nameOrTitle(detail->model().name(), untitled),
        [asked] { return asked && asked->model().save(); },
        [asked, drop = std::move(drop)] {
            if (asked->model().isNew())
                drop();
            else
                asked->model().discardEdits();
        },
        std::move(proceed));
}

struct SaveChangesTexts {
    static QString question(const QString& name) { return QStringLiteral("Save changes to %1?").arg(name); }
    static QString note() { return QStringLiteral("Your changes will be lost if you don't save them."); }
    static QString save() { return QStringLiteral("Save"); }
    static QString discard() { return QStringLiteral("Don't Save"); }
    static QString cancel() { return QStringLiteral("Cancel"); }
};
