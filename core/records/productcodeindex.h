#pragma once

#include <QStringList>

class SqliteConnection;

// A SKU (in any case) or a barcode names one product: a scan or a search must never have to choose.
// Empty codes are many products' and don't count.
class ProductCodeIndex {
public:
    // Each code that several products hold, as "Barcode 600123: Jasmine Rice, Basmati Rice".
    static QStringList duplicates(SqliteConnection& connection);
    // Adds the unique indexes once no code is shared; until then nothing is changed and the shared
    // codes come back, for the owner to put right in Products.
    static QStringList ensure(SqliteConnection& connection);
};
