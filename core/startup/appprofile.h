#pragma once

#include <QSettings>
#include <QString>

// Where the program keeps what belongs to the user rather than to one store.
class AppProfile {
public:
    // The per-user preference store, opened on first use and shared from then on.
    static QSettings& defaults();
    // GenericDataLocation/Tallyrun, created on each call; a folder that can't be made is the
    // caller's to discover, so the path is given anyway.
    static QString supportDirectory();
    static QString organizationName() { return QStringLiteral("Tallyrun"); }
    static QString applicationName() { return QStringLiteral("Tallyrun"); }
};
