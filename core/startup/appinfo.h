#pragma once

#include <QString>

class AppInfo {
public:
    static QString version() { return QStringLiteral("2.4.0"); }

    // Dotted versions compared piece by piece as numbers, so "2.10.0" is newer than "2.4.0"; a piece
    // that is not a number counts as 0, and so does a missing one ("2.4" equals "2.4.0").
    static bool isVersion(const QString& a, const QString& newerThan);
};
