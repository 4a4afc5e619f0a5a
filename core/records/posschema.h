#pragma once

#include "store/modelcontainer.h"

// The layout of a store file: the record types in their fixed order, and the indexes that
// the screens and reports filter on.
class POSSchema {
public:
    static const std::vector<const Entity*>& all();
    static SchemaDescription description();
    static QString versionText() { return QStringLiteral("1.0.0"); }
};
