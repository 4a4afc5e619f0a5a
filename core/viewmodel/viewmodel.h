#pragma once

#include "store/storeerror.h"

#include <QObject>
#include <QString>

#include <optional>

// What every screen's model shares: one message for the screen to show when something failed,
// cleared by the next success.
class ViewModel : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    std::optional<QString> errorMessage() const { return m_errorMessage; }

Q_SIGNALS:
    void errorMessageChanged();

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

    // For what a person asked for: a refusal (an exception of type Refusal) or a store failure
    // goes to errorMessage and gives false; success clears the message.
    template <class Refusal, class Action> bool acting(Action action)
    {
        try {
            action();
        } catch (const Refusal& refusal) {
            setErrorMessage(refusal.description());
            return false;
        } catch (const StoreError& error) {
            setErrorMessage(error.description());
            return false;
        }
        setErrorMessage(std::nullopt);
        return true;
    }

    // Stores value in field; true when that changed it, for the caller to signal.
    template <class T> static bool replace(T& field, const T& value)
    {
        if (field == value)
            return false;
        field = value;
        return true;
    }

private:
    std::optional<QString> m_errorMessage;
};
