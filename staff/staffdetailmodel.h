#pragma once

#include "records/appointment.h"
#include "records/staffmember.h"
#include "staff/staffservice.h"
#include "startup/sessionstore.h"
#include "viewmodel/viewmodel.h"

#include <QString>

#include <optional>

// One booking under "Upcoming Appointments", in finished text.
struct UpcomingAppointmentRow {
    QString day;
    QString time;
    QString service;
    QString customer;
};

// The detail of one member, or of a new one not yet in the store: the edits kept here until "Save"
// writes them in one unit of work, this month's commission, the bookings ahead, and deleting.
// Failures of a save or delete go to errorMessage; a read that fails leaves the figures empty and
// says why in readProblem.
class StaffDetailModel : public ViewModel {
    Q_OBJECT

public:
    static QString detailsSection() { return QStringLiteral("Details"); }
    static QString nameTitle() { return QStringLiteral("Name"); }
    static QString phoneTitle() { return QStringLiteral("Phone"); }
    static QString activeTitle() { return QStringLiteral("Active"); }
    static QString notesTitle() { return QStringLiteral("Notes"); }
    static QString commissionTitle() { return QStringLiteral("Commission"); }
    static QString commissionNote() { return QStringLiteral("% of their services, before tax"); }
    static QString commissionProblemText() { return QStringLiteral("Enter a percentage such as 10."); }
    static QString nameRequiredMessage() { return QStringLiteral("Enter the staff member's name."); }
    static QString thisMonthSection() { return QStringLiteral("This Month"); }
    static QString servicesTitle() { return QStringLiteral("Services"); }
    static QString revenueTitle() { return QStringLiteral("Revenue (ex tax)"); }
    static QString thisMonthNote()
    {
        return QStringLiteral("A service's own commission rate (in Products) takes priority over this one. "
                              "Reports → Staff Commission covers any dates.");
    }
    static QString upcomingSection() { return QStringLiteral("Upcoming Appointments"); }
    static QString noUpcomingMessage() { return QStringLiteral("Nothing booked."); }
    static QString deleteTitle() { return QStringLiteral("Delete Staff Member"); }
    static QString deleteQuestion(const QString& name) { return QStringLiteral("Delete %1?").arg(name); }
    static QString deleteMessage()
    {
        return QStringLiteral(
            "Past sales and appointments keep their name, and commission already earned "
            "stays in the reports. To stop someone being chosen but keep them on file, turn "
            "off Active instead.");
    }

    StaffDetailModel(StaffService& staff, ModelContext& context, SessionStore& session,
                     Ref<StaffMember> member, QObject* parent = nullptr);

    // The store's record, or the new one Save will put there.
    Ref<StaffMember> member() const { return m_member; }
    bool isNew() const { return m_member->context() == nullptr; }
    QString name() const { return m_name; }
    void setName(const QString& text) { assign(m_name, text); }
    QString phone() const { return m_phone; }
    void setPhone(const QString& text) { assign(m_phone, text); }
    bool isActive() const { return m_isActive; }
    void setActive(bool active) { assign(m_isActive, active); }
    QString notes() const { return m_notes; }
    void setNotes(const QString& text) { assign(m_notes, text); }
    // A percentage: "12.5" is a rate of 0.125. Below 0 counts as 0 and above 100 as 100; text that
    // isn't a number is refused, never taken as 0.
    QString commissionText() const { return m_commissionText; }
    void setCommissionText(const QString& text) { assign(m_commissionText, text); }
    std::optional<QString> commissionProblem() const;
    static std::optional<double> rateFromText(const QString& text);
    static QString textFromRate(double rate);

    // Whether the fields differ from the saved member. A new one nobody typed into has nothing to lose.
    bool hasUnsavedEdits() const;
    // Writes the edits in one unit of work, inserting a new member. False, with the edits kept and
    // nothing written, when the commission can't be read, the name is empty or the store refused.
    bool save();
    // The fields as the member holds them, dropping what was typed.
    void discardEdits();
    // A new member is only dropped.
    bool deleteMember();

    // Reads the month so far and the bookings ahead afresh.
    void refresh();
    QString servicesText() const;
    QString revenueText() const;
    QString commissionEarnedText() const;
    const QList<UpcomingAppointmentRow>& upcoming() const { return m_upcoming; }
    std::optional<QString> readProblem() const { return m_readProblem; }

Q_SIGNALS:
    // A save or rollback touched what this detail shows.
    void detailChanged();

private:
    std::optional<double> commissionRate() const { return rateFromText(m_commissionText); }
    void readFields();
    QString money(double amount) const;

    StaffService& m_staff;
    ModelContext& m_context;
    SessionStore& m_session;
    Ref<StaffMember> m_member;
    QString m_name;
    QString m_phone;
    bool m_isActive = true;
    QString m_notes;
    QString m_commissionText;
    CommissionRow m_thisMonth;
    QList<UpcomingAppointmentRow> m_upcoming;
    std::optional<QString> m_readProblem;
};
