#include "startup/appprofile.h"

#include <QDir>
#include <QStandardPaths>

QSettings& AppProfile::defaults()
{
    // Named explicitly so the file never lands under "Unknown Organization".
    static QSettings settings(organizationName(), applicationName());
    return settings;
}

QString AppProfile::supportDirectory()
{
    const QString path =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Tallyrun");
    QDir().mkpath(path);
    return path;
}
