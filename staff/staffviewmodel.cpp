#include "staff/staffviewmodel.h"

#include "money/currency.h"

StaffViewModel::StaffViewModel(ModelContext& context, QObject* parent)
    : ViewModel(parent)
    , m_context(context)
{
    context.onChange(this, {&StaffMember::schema()}, [this] { Q_EMIT staffChanged(); });
}

void StaffViewModel::setSearchText(const QString& text)
{
    if (replace(m_searchText, text))
        Q_EMIT searchTextChanged();
}

QList<Ref<StaffMember>> StaffViewModel::filteredStaff(const QList<Ref<StaffMember>>& members) const
{
    const QString needle = m_searchText.trimmed();
    if (needle.isEmpty())
        return members;
    QList<Ref<StaffMember>> result;
    for (const Ref<StaffMember>& member : members) {
        if (member->name().contains(needle, Qt::CaseInsensitive) ||
            member->phone().contains(needle, Qt::CaseInsensitive))
            result.append(member);
    }
    return result;
}

QList<StaffRow> StaffViewModel::page(const StaffRow* after, int limit)
{
    return reading(QList<StaffRow>(), [&] {
        Condition where;
        if (const QString needle = m_searchText.trimmed().toLower(); !needle.isEmpty())
            where = Condition(QStringLiteral("(instr(lower_unicode(\"name\"), ?) > 0 OR "
                                             "instr(lower_unicode(\"phone\"), ?) > 0)"),
                              {needle, needle});
        if (after)
            where = where && Condition(QStringLiteral("(\"name\", \"id\") > (?, ?)"),
                                       {after->name, Record::uuidText(after->id)});
        QVariantList bindings = where.bindings();
        bindings.append(limit);
        return m_context.rows<StaffRow>(
            QStringLiteral(
                "SELECT \"id\", \"name\", \"commissionRate\", \"isActive\" FROM \"StaffMember\" ") +
                (where.isEmpty() ? QString() : QStringLiteral("WHERE ") + where.sql()) +
                QStringLiteral(" ORDER BY \"name\", \"id\" LIMIT ?"),
            bindings, [](const SqliteStatement& r) {
                return StaffRow{QUuid(r.text(0)), r.text(1),
                                Currency::percentText(r.real(2)) + QStringLiteral(" commission"),
                                r.integer(3) == 0};
            });
    });
}

Ref<StaffMember> StaffViewModel::member(const QUuid& id)
{
    return reading(Ref<StaffMember>(), [&] { return m_context.find<StaffMember>(id); });
}

Ref<StaffMember> StaffViewModel::addStaffMember()
{
    auto member = std::make_shared<StaffMember>();
    member->setName(newMemberTitle());
    return member;
}
