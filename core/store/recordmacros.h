#pragma once

// Declares a record type from one list of its fields, so that the field order, the columns, the
// defaults and the accessors can never drift apart. A list entry is
//   X(C, Kind, name, setter, extra...)
// with C the class (passed through), Kind one of the FieldType names, and extra the default for
// value fields, or the related type (and, for inverses, the inverse field and delete rule).

#include "store/query.h"
#include "store/record.h"

#define TALLY_ENUM(C, kind, name, ...) name##Field,
#define TALLY_COLUMN(C, kind, name, ...) static constexpr Column name{#name};

#define TALLY_DECLARE(C, kind, name, setter, ...) TALLY_DECLARE_##kind(name, setter, __VA_ARGS__)
#define TALLY_DECLARE_Text(name, setter, ...)                                                                \
    QString name() const                                                                                     \
    {                                                                                                        \
        return textValue(name##Field);                                                                       \
    }                                                                                                        \
    void setter(const QString& value)                                                                        \
    {                                                                                                        \
        setText(name##Field, value);                                                                         \
    }
#define TALLY_DECLARE_Number(name, setter, ...)                                                              \
    double name() const                                                                                      \
    {                                                                                                        \
        return numberValue(name##Field);                                                                     \
    }                                                                                                        \
    void setter(double value)                                                                                \
    {                                                                                                        \
        setNumber(name##Field, value);                                                                       \
    }
#define TALLY_DECLARE_Integer(name, setter, ...)                                                             \
    qint64 name() const                                                                                      \
    {                                                                                                        \
        return integerValue(name##Field);                                                                    \
    }                                                                                                        \
    void setter(qint64 value)                                                                                \
    {                                                                                                        \
        setInteger(name##Field, value);                                                                      \
    }
#define TALLY_DECLARE_Flag(name, setter, ...)                                                                \
    bool name() const                                                                                        \
    {                                                                                                        \
        return flagValue(name##Field);                                                                       \
    }                                                                                                        \
    void setter(bool value)                                                                                  \
    {                                                                                                        \
        setFlag(name##Field, value);                                                                         \
    }
#define TALLY_DECLARE_Date(name, setter, ...)                                                                \
    QDateTime name() const                                                                                   \
    {                                                                                                        \
        return dateValue(name##Field);                                                                       \
    }                                                                                                        \
    void setter(const QDateTime& value)                                                                      \
    {                                                                                                        \
        setDate(name##Field, value);                                                                         \
    }
#define TALLY_DECLARE_OptText(name, setter, ...)                                                             \
    std::optional<QString> name() const                                                                      \
    {                                                                                                        \
        return optTextValue(name##Field);                                                                    \
    }                                                                                                        \
    void setter(const std::optional<QString>& value)                                                         \
    {                                                                                                        \
        setOptText(name##Field, value);                                                                      \
    }
#define TALLY_DECLARE_OptNumber(name, setter, ...)                                                           \
    std::optional<double> name() const                                                                       \
    {                                                                                                        \
        return optNumberValue(name##Field);                                                                  \
    }                                                                                                        \
    void setter(std::optional<double> value)                                                                 \
    {                                                                                                        \
        setOptNumber(name##Field, value);                                                                    \
    }
#define TALLY_DECLARE_OptInteger(name, setter, ...)                                                          \
    std::optional<qint64> name() const                                                                       \
    {                                                                                                        \
        return optIntegerValue(name##Field);                                                                 \
    }                                                                                                        \
    void setter(std::optional<qint64> value)                                                                 \
    {                                                                                                        \
        setOptInteger(name##Field, value);                                                                   \
    }
#define TALLY_DECLARE_OptDate(name, setter, ...)                                                             \
    std::optional<QDateTime> name() const                                                                    \
    {                                                                                                        \
        return optDateValue(name##Field);                                                                    \
    }                                                                                                        \
    void setter(const std::optional<QDateTime>& value)                                                       \
    {                                                                                                        \
        setOptDate(name##Field, value);                                                                      \
    }
#define TALLY_DECLARE_OptUuid(name, setter, ...)                                                             \
    std::optional<QUuid> name() const                                                                        \
    {                                                                                                        \
        return optUuidValue(name##Field);                                                                    \
    }                                                                                                        \
    void setter(const std::optional<QUuid>& value)                                                           \
    {                                                                                                        \
        setOptUuid(name##Field, value);                                                                      \
    }
#define TALLY_DECLARE_OptBytes(name, setter, ...)                                                            \
    std::optional<QByteArray> name() const                                                                   \
    {                                                                                                        \
        return optBytesValue(name##Field);                                                                   \
    }                                                                                                        \
    void setter(const std::optional<QByteArray>& value)                                                      \
    {                                                                                                        \
        setOptBytes(name##Field, value);                                                                     \
    }
#define TALLY_DECLARE_ToOne(name, setter, Target)                                                            \
    Ref<Target> name() const;                                                                                \
    void setter(const Ref<Target>& value);
#define TALLY_DECLARE_ToMany(name, setter, Target, ...) QList<Ref<Target>> name() const;
#define TALLY_DECLARE_ManyToMany(name, setter, Target)                                                       \
    QList<Ref<Target>> name() const;                                                                         \
    void setter(const QList<Ref<Target>>& value);
#define TALLY_DECLARE_ManyToManyInverse(name, setter, Target, ...) QList<Ref<Target>> name() const;

// In the class body, first thing.
#define TALLY_RECORD(Class, FIELDS)                                                                          \
public:                                                                                                      \
    enum FieldIndex { idField, FIELDS(TALLY_ENUM, Class) fieldCount };                                       \
    static_assert(fieldCount <= FieldMask::capacity, "more fields than a FieldMask holds");                  \
    struct Col {                                                                                             \
        static constexpr Column id{"id"};                                                                    \
        FIELDS(TALLY_COLUMN, Class)                                                                          \
    };                                                                                                       \
    Class();                                                                                                 \
    explicit Class(Record::LoadingTag tag);                                                                  \
    static const Entity& schema();                                                                           \
    const Entity& entity() const override                                                                    \
    {                                                                                                        \
        return schema();                                                                                     \
    }                                                                                                        \
    FIELDS(TALLY_DECLARE, Class)

#define TALLY_DESCRIBE(C, kind, name, setter, ...) TALLY_DESCRIBE_##kind(name, __VA_ARGS__),
#define TALLY_DESCRIBE_Text(name, value)                                                                     \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::Text, QString::fromUtf8(value)                                                     \
    }
#define TALLY_DESCRIBE_Number(name, value)                                                                   \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::Number, double(value)                                                              \
    }
#define TALLY_DESCRIBE_Integer(name, value)                                                                  \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::Integer, qint64(value)                                                             \
    }
#define TALLY_DESCRIBE_Flag(name, value)                                                                     \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::Flag, bool(value)                                                                  \
    }
#define TALLY_DESCRIBE_Date(name, ...)                                                                       \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::Date, QVariant()                                                                   \
    }
#define TALLY_DESCRIBE_OptText(name, ...)                                                                    \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::OptText, QVariant()                                                                \
    }
#define TALLY_DESCRIBE_OptNumber(name, ...)                                                                  \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::OptNumber, QVariant()                                                              \
    }
#define TALLY_DESCRIBE_OptInteger(name, ...)                                                                 \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::OptInteger, QVariant()                                                             \
    }
#define TALLY_DESCRIBE_OptDate(name, ...)                                                                    \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::OptDate, QVariant()                                                                \
    }
#define TALLY_DESCRIBE_OptUuid(name, ...)                                                                    \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::OptUuid, QVariant()                                                                \
    }
#define TALLY_DESCRIBE_OptBytes(name, ...)                                                                   \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::OptBytes, QVariant()                                                               \
    }
#define TALLY_DESCRIBE_ToOne(name, Target)                                                                   \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::ToOne, QVariant(), &Target::schema                                                 \
    }
#define TALLY_DESCRIBE_ToMany(name, Target, inverse, rule)                                                   \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::ToMany, QVariant(), &Target::schema, #inverse, DeleteRule::rule                    \
    }
#define TALLY_DESCRIBE_ManyToMany(name, Target)                                                              \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::ManyToMany, QVariant(), &Target::schema                                            \
    }
#define TALLY_DESCRIBE_ManyToManyInverse(name, Target, inverse)                                              \
    FieldDescription                                                                                         \
    {                                                                                                        \
#name, FieldType::ManyToManyInverse, QVariant(), &Target::schema, #inverse                           \
    }

#define TALLY_DEFINE(C, kind, name, setter, ...) TALLY_DEFINE_##kind(C, name, setter, __VA_ARGS__)
#define TALLY_DEFINE_Text(...)
#define TALLY_DEFINE_Number(...)
#define TALLY_DEFINE_Integer(...)
#define TALLY_DEFINE_Flag(...)
#define TALLY_DEFINE_Date(...)
#define TALLY_DEFINE_OptText(...)
#define TALLY_DEFINE_OptNumber(...)
#define TALLY_DEFINE_OptInteger(...)
#define TALLY_DEFINE_OptDate(...)
#define TALLY_DEFINE_OptUuid(...)
#define TALLY_DEFINE_OptBytes(...)
#define TALLY_DEFINE_ToOne(C, name, setter, Target)                                                          \
    Ref<Target> C::name() const                                                                              \
    {                                                                                                        \
        return cast<Target>(toOneValue(name##Field));                                                        \
    }                                                                                                        \
    void C::setter(const Ref<Target>& value)                                                                 \
    {                                                                                                        \
        setToOne(name##Field, value);                                                                        \
    }
#define TALLY_DEFINE_ToMany(C, name, setter, Target, ...)                                                    \
    QList<Ref<Target>> C::name() const                                                                       \
    {                                                                                                        \
        return castAll<Target>(toManyValue(name##Field));                                                    \
    }
#define TALLY_DEFINE_ManyToMany(C, name, setter, Target)                                                     \
    QList<Ref<Target>> C::name() const                                                                       \
    {                                                                                                        \
        return castAll<Target>(manyToManyValue(name##Field));                                                \
    }                                                                                                        \
    void C::setter(const QList<Ref<Target>>& value)                                                          \
    {                                                                                                        \
        setManyToMany(name##Field, upcastAll(value));                                                        \
    }
#define TALLY_DEFINE_ManyToManyInverse(C, name, setter, Target, ...)                                         \
    QList<Ref<Target>> C::name() const                                                                       \
    {                                                                                                        \
        return castAll<Target>(toManyValue(name##Field));                                                    \
    }

// In the record's .cpp, where every related type is complete.
#define TALLY_RECORD_IMPL(Class, FIELDS)                                                                     \
    const Entity& Class::schema()                                                                            \
    {                                                                                                        \
        static const Entity entity = [] {                                                                    \
            Entity e;                                                                                        \
            e.name = QStringLiteral(#Class);                                                                 \
            e.fields = {FieldDescription{"id", FieldType::Id, QVariant()}, FIELDS(TALLY_DESCRIBE, Class)};   \
            e.makeForLoading = [] { return std::make_shared<Class>(Record::loading); };                      \
            e.finish();                                                                                      \
            return e;                                                                                        \
        }();                                                                                                 \
        return entity;                                                                                       \
    }                                                                                                        \
    Class::Class()                                                                                           \
        : Record(schema())                                                                                   \
    {                                                                                                        \
    }                                                                                                        \
    Class::Class(Record::LoadingTag tag)                                                                     \
        : Record(schema(), tag)                                                                              \
    {                                                                                                        \
    }                                                                                                        \
    FIELDS(TALLY_DEFINE, Class)
