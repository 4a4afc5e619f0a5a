#pragma once

#include <QString>

#include <stdexcept>

// A failure of the store file or of a statement on it. The text names what went wrong in words
// a person can act on, followed by SQLite's own message.
class StoreError : public std::runtime_error {
public:
    explicit StoreError(const QString& description)
        : std::runtime_error(description.toStdString())
        , m_description(description)
    {
    }

    QString description() const { return m_description; }

private:
    QString m_description;
};
