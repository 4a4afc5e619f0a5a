#pragma once

#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

class Record;

enum class FieldType {
    Id,                // upper-case UUID text, the primary key
    Text,              // QString, never absent
    Number,            // double
    Integer,           // qint64
    Flag,              // bool, stored 0/1
    Date,              // seconds since the Unix epoch, stored REAL
    OptText,           // QString or absent
    OptNumber,         // double or absent
    OptInteger,        // qint64 or absent
    OptDate,           // seconds or absent
    OptUuid,           // upper-case UUID text or absent; a plain value, not a relationship
    OptBytes,          // QByteArray or absent
    ToOne,             // the related record's id, or absent
    ToMany,            // inverse of a ToOne field of the target; no column
    ManyToMany,        // ordered ids, kept in a join table
    ManyToManyInverse, // inverse of a ManyToMany field of the target; no column
};

// What happens to the records on the other side when a record is deleted.
enum class DeleteRule { Nullify, Cascade };

struct Entity;
using EntityRef = const Entity& (*)();

struct FieldDescription {
    const char* name;
    FieldType type;
    QVariant defaultValue;         // for value fields; Date fields without one start at "now"
    EntityRef target = nullptr;    // related entity for relationships
    const char* inverse = nullptr; // the target's field on the other side of a ToMany / ManyToManyInverse
    DeleteRule rule = DeleteRule::Nullify;

    bool hasColumn() const
    {
        return type != FieldType::ToMany && type != FieldType::ManyToMany &&
               type != FieldType::ManyToManyInverse;
    }
    QString sqlType() const;
};

struct Entity {
    QString name;
    std::vector<FieldDescription> fields; // index 0 is always id
    std::function<std::shared_ptr<Record>()> makeForLoading;

    std::vector<int> columnFields; // indexes of the fields that are columns, in order
    QString selectList;            // quoted column names joined by ", "

    int fieldIndex(const char* fieldName) const; // -1 when there is none
    QString joinTable(int manyToManyField) const;
    void finish(); // fills the derived members once the fields are known
};
