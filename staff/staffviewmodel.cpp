#include "staff/staffviewmodel.h"

#include "money/currency.h"

StaffViewModel::StaffViewModel(StaffService& staff, ModelContext& context, QObject* parent)
    : ViewModel(parent)
    , m_staff(staff)
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

QList<StaffRow> StaffViewModel::rows()
{
    return reading(QList<StaffRow>(), [this] {
        QList<StaffRow> result;
        for (const Ref<StaffMember>& member : filteredStaff(m_staff.allStaff()))
            result.append({member, member->name(), !member->isActive(),
                           Currency::percentText(member->commissionRate()) + QStringLiteral(" commission")});
        return result;
    });
}

Ref<StaffMember> StaffViewModel::addStaffMember()
{
    auto member = std::make_shared<StaffMember>();
    member->setName(newMemberTitle());
    return member;
}
