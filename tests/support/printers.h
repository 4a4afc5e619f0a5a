#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

#include <ostream>

// So that failed expectations show Qt values as text.
inline void PrintTo(const QString& value, std::ostream* out)
{
    *out << '"' << value.toStdString() << '"';
}
inline void PrintTo(const QDateTime& value, std::ostream* out)
{
    *out << value.toString(Qt::ISODateWithMs).toStdString();
}
inline void PrintTo(const QUuid& value, std::ostream* out)
{
    *out << value.toString().toStdString();
}
