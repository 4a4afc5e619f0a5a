#pragma once

#include <QString>
#include <QUuid>

// One line of a list of records drawn alike on every screen: the name, "Inactive" beside it when
// so, and a line of detail under it, in finished text.
struct RecordListRow {
    QUuid id;
    QString name; // as stored: with the id, the key of the next page
    QString detail;
    bool isInactive = false;
};
