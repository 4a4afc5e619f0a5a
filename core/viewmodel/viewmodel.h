#pragma once

#include "store/modelcontext.h"
#include "store/storeerror.h"

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
        } catch (const StoreError& error) {
            setErrorMessage(error.description());
            return fallback;
        }
    }

    // What a store write said when it failed; nothing when it went through.
    template <class Write> static std::optional<QString> storeFailure(Write write)
    {
        // A `return` inside the write would end only the write, not the caller.
        static_assert(std::is_void_v<std::invoke_result_t<Write>>, "a write returns nothing");
        try {
            write();
            return std::nullopt;
        } catch (const StoreError& error) {
            return error.description();
        }
    }

    // For a change only the store can refuse: a failure goes to errorMessage and gives false;
    // success clears the message.
    template <class Write> bool writing(Write write)
    {
        const std::optional<QString> failure = storeFailure(write);
        setErrorMessage(failure);
        return !failure;
    }

    // Makes the change and saves; a failure goes to errorMessage and puts every unsaved change
    // back, so that a retry can't write anything twice.
    template <class Change> bool saveOrUndo(ModelContext& context, Change change)
    {
        const std::optional<QString> failure = storeFailure([&] {
            change();
            context.save();
        });
        if (failure)
            context.rollback();
        setErrorMessage(failure);
        return !failure;
    }
    bool saveOrUndo(ModelContext& context)
    {
        return saveOrUndo(context, [] {});
    }

    // For what a person asked for: a refusal (an exception of type Refusal) is reported as a
    // store failure is.
    template <class Refusal, class Action> bool acting(Action action)
    {
        try {
            return writing(action);
        } catch (const Refusal& refusal) {
            setErrorMessage(refusal.description());
            return false;
        }
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
