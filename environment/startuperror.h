#pragma once

#include <QString>

#include <stdexcept>

// Start-up can't go on; the description is the whole message for the person at the counter.
class StartupError : public std::runtime_error {
public:
    explicit StartupError(const QString& description)
        : std::runtime_error(description.toStdString())
        , m_description(description)
    {
    }

    QString description() const { return m_description; }

private:
    QString m_description;
};
