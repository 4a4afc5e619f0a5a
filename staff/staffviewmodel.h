#pragma once

#include "records/staffmember.h"
#include "staff/staffservice.h"
#include "viewmodel/recordlistrow.h"
#include "viewmodel/viewmodel.h"

#include <QString>

// One line of the staff list; the detail is the rate: "10% commission".
using StaffRow = RecordListRow;

// The Staff screen's list: the search, the rows and "New Staff Member". A store that can't be
// read gives an empty list and says so in errorMessage.
class StaffViewModel : public ViewModel {
    Q_OBJECT

public:
    static QString searchPrompt() { return QStringLiteral("Search staff"); }
    static QString newMemberTitle() { return QStringLiteral("New Staff Member"); }
    static QString emptyTitle() { return QStringLiteral("No staff members"); }
    static QString emptyMessage()
    {
        return QStringLiteral("Add the people who do your services. The till then asks who did each service, "
                              "and the Staff Commission report works out what they've earned.");
    }
    static QString noSelectionTitle() { return QStringLiteral("Select a staff member"); }
    static QString noSelectionMessage()
    {
        return QStringLiteral("Choose someone from the list, or add a new staff member.");
    }

    explicit StaffViewModel(ModelContext& context, QObject* parent = nullptr);

    QString searchText() const { return m_searchText; }
    void setSearchText(const QString& text);

    // Those whose name or phone holds the search, whatever the case; order kept.
    QList<Ref<StaffMember>> filteredStaff(const QList<Ref<StaffMember>>& members) const;
    static constexpr int pageSize = 100;
    // The list by name, a page at a time: the `limit` members after `after`, the last row shown,
    // or from the first without it; fewer than `limit` means the end. The search runs in SQL, to
    // the rule of filteredStaff.
    QList<StaffRow> page(const StaffRow* after = nullptr, int limit = pageSize);
    // The store's member of a row; null, with errorMessage, when it can't be read.
    Ref<StaffMember> member(const QUuid& id);
    // "New Staff Member", at no commission and active: it reaches the store when the detail saves it.
    static Ref<StaffMember> addStaffMember();

Q_SIGNALS:
    void searchTextChanged();
    // A save or rollback touched the staff: the rows are out of date.
    void staffChanged();

private:
    ModelContext& m_context;
    QString m_searchText;
};
