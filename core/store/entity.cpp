#include "store/entity.h"

#include <cstring>

QString FieldDescription::sqlType() const
{
    switch (type) {
    case FieldType::Number:
    case FieldType::OptNumber:
    case FieldType::Date:
    case FieldType::OptDate:
        return QStringLiteral("REAL");
    case FieldType::Integer:
    case FieldType::OptInteger:
    case FieldType::Flag:
        return QStringLiteral("INTEGER");
    case FieldType::OptBytes:
        return QStringLiteral("BLOB");
    default:
        return QStringLiteral("TEXT");
    }
}

int Entity::fieldIndex(const char* fieldName) const
{
    for (size_t i = 0; i < fields.size(); ++i) {
        if (std::strcmp(fields[i].name, fieldName) == 0)
            return int(i);
    }
    return -1;
}

QString Entity::joinTable(int manyToManyField) const
{
    return name + QLatin1Char('_') + QLatin1String(fields[size_t(manyToManyField)].name);
}

void Entity::finish()
{
    columnFields.clear();
    QStringList columns;
    for (size_t i = 0; i < fields.size(); ++i) {
        if (!fields[i].hasColumn())
            continue;
        columnFields.push_back(int(i));
        columns << QLatin1Char('"') + QLatin1String(fields[i].name) + QLatin1Char('"');
    }
    selectList = columns.join(QStringLiteral(", "));
}
