#include "store/record.h"

#include "clock/clock.h"
#include "store/modelcontext.h"

#include <cmath>

Record::Record(const Entity& entity)
    : m_values(entity.fields.size())
{
    const double now = Clock::nowSeconds();
    for (size_t i = 0; i < entity.fields.size(); ++i) {
        const FieldDescription& field = entity.fields[i];
        if (field.type == FieldType::Id)
            m_values[i] = uuidText(QUuid::createUuid());
        else if (field.type == FieldType::Date && !field.defaultValue.isValid())
            m_values[i] = now;
        else
            m_values[i] = field.defaultValue;
    }
}

Record::Record(const Entity& entity, LoadingTag)
    : m_values(entity.fields.size())
{
}

Record::~Record() = default;

QUuid Record::id() const
{
    return QUuid::fromString(idText());
}

QString Record::uuidText(const QUuid& uuid)
{
    return uuid.toString(QUuid::WithoutBraces).toUpper();
}

QDateTime Record::dateFromSeconds(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(std::llround(seconds * 1000.0));
}

double Record::secondsFromDate(const QDateTime& date)
{
    return double(date.toMSecsSinceEpoch()) / 1000.0;
}

namespace {
// Keeps each field in one QVariant type, so that comparing old and new values is exact.
QVariant normalized(FieldType type, const QVariant& value)
{
    const bool absent = !value.isValid() || value.isNull();
    switch (type) {
    case FieldType::Text:
        return value.toString();
    case FieldType::Number:
    case FieldType::Date:
        return value.toDouble();
    case FieldType::Integer:
        return value.toLongLong();
    case FieldType::Flag:
        return value.toBool();
    case FieldType::OptText:
    case FieldType::OptUuid:
    case FieldType::ToOne:
        return absent ? QVariant() : QVariant(value.toString());
    case FieldType::OptNumber:
    case FieldType::OptDate:
        return absent ? QVariant() : QVariant(value.toDouble());
    case FieldType::OptInteger:
        return absent ? QVariant() : QVariant(value.toLongLong());
    case FieldType::OptBytes:
        return absent ? QVariant() : QVariant(value.toByteArray());
    default:
        return value;
    }
}
} // namespace

void Record::setRawValue(int field, const QVariant& value)
{
    const FieldDescription& description = entity().fields[size_t(field)];
    Q_ASSERT(description.type != FieldType::Id && description.type != FieldType::ToMany &&
             description.type != FieldType::ManyToManyInverse);
    const QVariant stored = normalized(description.type, value);
    QVariant& current = m_values[size_t(field)];
    if (current == stored && current.isNull() == stored.isNull())
        return;
    if (m_context && m_state == State::Persistent)
        m_context->noteChanged(*this);
    current = stored;
    if (m_context && m_inDatabase && m_state != State::Deleted) {
        m_unflushedFields.set(field);
        m_context->queueFlush(*this);
    }
}

std::optional<QString> Record::optTextValue(int field) const
{
    const QVariant& v = m_values[size_t(field)];
    return v.isNull() ? std::nullopt : std::optional<QString>(v.toString());
}

std::optional<double> Record::optNumberValue(int field) const
{
    const QVariant& v = m_values[size_t(field)];
    return v.isNull() ? std::nullopt : std::optional<double>(v.toDouble());
}

std::optional<qint64> Record::optIntegerValue(int field) const
{
    const QVariant& v = m_values[size_t(field)];
    return v.isNull() ? std::nullopt : std::optional<qint64>(v.toLongLong());
}

std::optional<QDateTime> Record::optDateValue(int field) const
{
    const QVariant& v = m_values[size_t(field)];
    return v.isNull() ? std::nullopt : std::optional<QDateTime>(dateFromSeconds(v.toDouble()));
}

std::optional<QUuid> Record::optUuidValue(int field) const
{
    const QVariant& v = m_values[size_t(field)];
    return v.isNull() ? std::nullopt : std::optional<QUuid>(QUuid::fromString(v.toString()));
}

std::optional<QByteArray> Record::optBytesValue(int field) const
{
    const QVariant& v = m_values[size_t(field)];
    return v.isNull() ? std::nullopt : std::optional<QByteArray>(v.toByteArray());
}

void Record::setOptText(int field, const std::optional<QString>& value)
{
    setRawValue(field, value ? QVariant(*value) : QVariant());
}

void Record::setOptNumber(int field, std::optional<double> value)
{
    setRawValue(field, value ? QVariant(*value) : QVariant());
}

void Record::setOptInteger(int field, std::optional<qint64> value)
{
    setRawValue(field, value ? QVariant(*value) : QVariant());
}

void Record::setOptDate(int field, const std::optional<QDateTime>& value)
{
    setRawValue(field, value ? QVariant(secondsFromDate(*value)) : QVariant());
}

void Record::setOptUuid(int field, const std::optional<QUuid>& value)
{
    setRawValue(field, value ? QVariant(uuidText(*value)) : QVariant());
}

void Record::setOptBytes(int field, const std::optional<QByteArray>& value)
{
    setRawValue(field, value ? QVariant(*value) : QVariant());
}

void Record::rememberTarget(const RecordRef& target)
{
    for (const RecordRef& pending : m_pendingTargets) {
        if (pending == target)
            return;
    }
    m_pendingTargets.push_back(target);
}

RecordRef Record::toOneValue(int field) const
{
    const QVariant& id = m_values[size_t(field)];
    if (id.isNull())
        return nullptr;
    const QString idText = id.toString();
    if (m_context)
        return m_context->find(entity().fields[size_t(field)].target(), idText);
    for (const RecordRef& pending : m_pendingTargets) {
        if (pending->idText() == idText)
            return pending;
    }
    return m_lookup ? m_lookup->find(entity().fields[size_t(field)].target(), idText) : nullptr;
}

void Record::setToOne(int field, const RecordRef& target)
{
    if (target) {
        Q_ASSERT(&target->entity() == &entity().fields[size_t(field)].target());
        if (!m_context)
            rememberTarget(target);
        else if (!target->m_context)
            m_context->insert(target);
    }
    setRawValue(field, target ? QVariant(target->idText()) : QVariant());
}

QList<RecordRef> Record::toManyValue(int field) const
{
    if (!m_context || m_state == State::Deleted)
        return {};
    const FieldDescription& description = entity().fields[size_t(field)];
    const Entity& target = description.target();
    FetchDescriptor request;
    if (description.type == FieldType::ToMany) {
        request.filter = Column{description.inverse} == idText();
    } else {
        const int inverse = target.fieldIndex(description.inverse);
        request.filter = Condition(QStringLiteral("\"id\" IN (SELECT \"%1\" FROM \"%2\" WHERE \"%3\" = ?)")
                                       .arg(target.name, target.joinTable(inverse), entity().name),
                                   {idText()});
    }
    return m_context->fetch(target, request);
}

void Record::loadManyToMany(int field) const
{
    QVariant& value = m_values[size_t(field)];
    if (value.isValid())
        return;
    value = (m_context && m_inDatabase) ? m_context->loadJoinIds(*this, field) : QStringList();
}

QList<RecordRef> Record::manyToManyValue(int field) const
{
    loadManyToMany(field);
    QList<RecordRef> result;
    const Entity& target = entity().fields[size_t(field)].target();
    for (const QString& id : m_values[size_t(field)].toStringList()) {
        RecordRef found;
        if (m_context) {
            found = m_context->find(target, id);
        } else {
            for (const RecordRef& pending : m_pendingTargets) {
                if (pending->idText() == id)
                    found = pending;
            }
            if (!found && m_lookup)
                found = m_lookup->find(target, id);
        }
        if (found)
            result.append(found);
    }
    return result;
}

void Record::setManyToMany(int field, const QList<RecordRef>& targets)
{
    QStringList ids;
    for (const RecordRef& target : targets) {
        if (!m_context)
            rememberTarget(target);
        else if (!target->m_context)
            m_context->insert(target);
        ids.append(target->idText());
    }
    loadManyToMany(field);
    setRawValue(field, ids);
}

bool Record::isCopiedField(int field) const
{
    const FieldType type = entity().fields[size_t(field)].type;
    return type != FieldType::Id && type != FieldType::ToMany && type != FieldType::ManyToManyInverse;
}

RecordRef Record::makeDraft() const
{
    RecordRef copy = entity().makeForLoading();
    for (size_t i = 0; i < m_values.size(); ++i) {
        if (entity().fields[i].type == FieldType::ManyToMany)
            loadManyToMany(int(i));
    }
    copy->m_values = m_values;
    copy->m_lookup = relationSource();
    copy->m_pendingTargets = m_pendingTargets;
    return copy;
}

bool Record::hasSameValuesAs(const Record& other) const
{
    Q_ASSERT(&other.entity() == &entity());
    for (size_t i = 0; i < m_values.size(); ++i) {
        if (!isCopiedField(int(i)))
            continue;
        if (entity().fields[i].type == FieldType::ManyToMany) {
            loadManyToMany(int(i));
            other.loadManyToMany(int(i));
        }
        const QVariant& mine = m_values[i];
        const QVariant& theirs = other.m_values[i];
        if (mine != theirs || mine.isNull() != theirs.isNull())
            return false;
    }
    return true;
}
