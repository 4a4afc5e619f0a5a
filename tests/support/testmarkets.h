#pragma once

#include "startup/marketregistry.h"

#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

// A store list of the test's own: preferences in a temporary ini file and the markets folder
// beside it, never the user's.
struct TestMarkets {
    TestMarkets() { registry.setMarketsDirectoryOverride(folder.filePath(QStringLiteral("Markets"))); }

    // Every name in the markets folder, hidden support folders included.
    QStringList filesInMarkets() const
    {
        return QDir(registry.marketsDirectory())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

    QTemporaryDir folder;
    QSettings settings{folder.filePath(QStringLiteral("preferences.ini")), QSettings::IniFormat};
    MarketRegistry registry{settings};
};
