#pragma once

#include <QString>

#include <stdexcept>

// Why something a person asked for was not done, in the words shown to them. Every subsystem's
// error derives from this, so that a screen catches one type and shows description().
class Refusal : public std::runtime_error {
public:
    explicit Refusal(const QString& description)
        : std::runtime_error(description.toStdString())
        , m_description(description)
    {
    }

    QString description() const { return m_description; }

private:
    QString m_description;
};
