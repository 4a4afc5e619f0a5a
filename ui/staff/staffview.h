#pragma once

#include "staff/staffviewmodel.h"
#include "ui/navigation/editingscreen.h"

#include <QWidget>

class AppEnvironment;
class DetailPages;
class QLineEdit;
class QListView;
class QPushButton;
class RecordListCard;
class RecordRowModel;
class SessionStore;
class StaffDetail;

// The "Staff" section: the searchable list of the people who do services, "New Staff Member", and
// the chosen member's detail beside the list. Leaving unsaved edits (another member, a new one,
// another screen) asks first.
class StaffView : public QWidget, public FormScreen {
    Q_OBJECT

public:
    StaffView(AppEnvironment& environment, SessionStore& session, QWidget* parent = nullptr);

    StaffViewModel& model() { return m_model; }
    QPushButton* newMemberButton() const { return m_new; }
    QListView* list() const;
    // The chosen member's detail; null while none is chosen.
    StaffDetail* detail() const { return m_detail; }
    // The members loaded into the list, by name.
    QStringList listedNames() const;

    bool hasUnsavedEdits() const override;

private:
    QString editedName() const override;
    bool saveEdits() override;
    void discardEdits() override;

    // Read again as far as was loaded; from the top after the search changed.
    void refreshList(bool fromTop = false);
    // The row of the member on the detail marked as chosen, loading pages down to it.
    void showChosenRow();
    void showDetail(const Ref<StaffMember>& member);
    void addMember();

    StaffService& m_staff;
    ModelContext& m_context;
    SessionStore& m_session;
    StaffViewModel m_model;
    RecordRowModel* m_rows;

    QLineEdit* m_search;
    QPushButton* m_new;
    RecordListCard* m_listCard;
    DetailPages* m_detailPages;
    StaffDetail* m_detail = nullptr;
};
