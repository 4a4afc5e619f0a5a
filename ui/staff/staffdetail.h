#pragma once

#include "staff/staffdetailmodel.h"

#include <QWidget>

class ErrorLabel;
class FormFooter;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTableWidget;
class Section;

// One member beside the Staff list: the edits kept until "Save", this month's commission and the
// bookings ahead. Made anew for each member chosen; "Save" stays in view above the sections.
class StaffDetail : public QWidget {
    Q_OBJECT

public:
    enum class Field { name, phone, commission };

    StaffDetail(StaffService& staff, ModelContext& context, SessionStore& session,
                const Ref<StaffMember>& member, QWidget* parent = nullptr);

    StaffDetailModel& model() { return m_model; }
    Ref<StaffMember> member() const { return m_model.member(); }
    QLineEdit* field(Field which) const;
    QCheckBox* activeSwitch() const { return m_active; }
    QPushButton* saveButton() const { return m_save; }
    QPushButton* deleteButton() const { return m_delete; }
    // Why the commission as typed can't be saved; hidden while it can.
    ErrorLabel* commissionErrorLabel() const { return m_commissionError; }
    QLabel* commissionLabel() const { return m_commission; }

    // Puts the caret in the name with it selected, for a member just added.
    void focusName();

Q_SIGNALS:
    // The member is gone; the detail is of no more use.
    void memberDeleted();

protected:
    // Tab follows the form as it reads.
    bool focusNextPrevChild(bool next) override;

private:
    Section* detailsSection();
    Section* thisMonthSection();
    Section* upcomingSection();
    void refresh();
    void confirmDelete();

    StaffDetailModel m_model;
    QLabel* m_title;
    ErrorLabel* m_error;
    FormFooter* m_footer;
    QPushButton* m_save;
    QPushButton* m_delete;
    QList<QLineEdit*> m_fields; // in Field order
    ErrorLabel* m_commissionError;
    QCheckBox* m_active;
    QPlainTextEdit* m_notes;
    QLabel* m_services;
    QLabel* m_revenue;
    QLabel* m_commission;
    ErrorLabel* m_readProblem;
    QTableWidget* m_upcoming;
    QLabel* m_noUpcoming;
};
