#pragma once

#include "refusal/refusal.h"
#include "store/modelcontext.h"
#include "store/storeerror.h"
#include "store/unitofwork.h"

#include <QObject>
#include <QString>

#include <optional>
#include <type_traits>

// What every screen's model shares: one message for the screen to show when something failed,
// cleared by the next success.
class ViewModel : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    std::optional<QString> errorMessage() const { return m_errorMessage; }

Q_SIGNALS:
    void errorMessageChanged();
    // One of the fields a person edits took a new value.
    void fieldsChanged();

protected:
    void setErrorMessage(const std::optional<QString>& message);

    // For reads a screen can't do without: a store that can't be read gives the fallback, with
    // the reason in errorMessage, instead of taking the screen down.
    template <class Result, class Read> Result reading(Result fallback, Read read)
    {
        try {
            Result result = read();
            setErrorMessage(std::nullopt);
            return result;
        } catch (const Refusal& refusal) {
            setErrorMessage(refusal.description());
            return fallback;
        }
    }

    // Why the action was refused, in the words shown to the person; nothing when it went through.
    template <class Action> static std::optional<QString> storeFailure(Action action)
    {
        // A `return` inside the action would end only the action, not the caller.
        static_assert(std::is_void_v<std::invoke_result_t<Action>>, "an action returns nothing");
        try {
            action();
            return std::nullopt;
        } catch (const Refusal& refusal) {
            return refusal.description();
        }
    }

    // For what a person asked for: a refusal goes to errorMessage and gives false; success clears
    // the message. The action's writes are its own units of work.
    template <class Action> bool writing(Action action)
    {
        const std::optional<QString> failure = storeFailure(action);
        setErrorMessage(failure);
        return !failure;
    }

    // Makes the change as one unit of work: saved whole, or on any failure undone whole, so that
    // a retry can't write anything twice; a refusal goes to errorMessage.
    template <class Change> bool saveOrUndo(ModelContext& context, Change change)
    {
        return writing([&] { performUnitOfWork(context, change); });
    }
    // Stores value in field; true when that changed it, for the caller to signal.
    template <class T> static bool replace(T& field, const T& value)
    {
        if (field == value)
            return false;
        field = value;
        return true;
    }

    template <class T> void assign(T& field, const T& value)
    {
        if (replace(field, value))
            Q_EMIT fieldsChanged();
    }

private:
    std::optional<QString> m_errorMessage;
};
