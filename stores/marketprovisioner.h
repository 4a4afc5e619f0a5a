#pragma once

#include <QString>

// Makes the database of a new store: its settings, named after the store, and its first admin.
class MarketProvisioner {
public:
    // Throws MarketProvisioningError before touching the disk when a name or the username is
    // blank or the password is short, and StoreError when the file can't be made or saved. The
    // file is closed again on return: the running program keeps its own store.
    static void provision(const QString& storePath, const QString& marketName, const QString& adminName,
                          const QString& adminUsername, const QString& adminPassword);
};
