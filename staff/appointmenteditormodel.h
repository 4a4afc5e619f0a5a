#pragma once

#include "records/appointment.h"
#include "staff/staffservice.h"
#include "viewmodel/viewmodel.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QUuid>

#include <optional>

// A customer as the editor's picker offers it.
struct CustomerChoice {
    QUuid id;
    QString name;
};

// One booking being made or changed. What is typed stays here until "Book Appointment" or "Save"
// writes it in one unit of work; the status buttons and "Delete" write at once. Failures go to
// errorMessage and the editor keeps its state.
class AppointmentEditorModel : public ViewModel {
    Q_OBJECT

public:
    static constexpr qint64 defaultDurationMinutes = 30;

    static QString newTitle() { return QStringLiteral("New Appointment"); }
    static QString whenSection() { return QStringLiteral("When"); }
    static QString dateTimeTitle() { return QStringLiteral("Date and Time"); }
    static QString lengthTitle() { return QStringLiteral("Length"); }
    static QString whatWhoSection() { return QStringLiteral("What and Who"); }
    static QString serviceTitle() { return QStringLiteral("Service"); }
    static QString staffTitle() { return QStringLiteral("Staff"); }
    static QString anyoneTitle() { return QStringLiteral("Anyone"); }
    static QString customerSection() { return QStringLiteral("Customer"); }
    static QString walkInTitle() { return QStringLiteral("Walk-in / not in Customers"); }
    static QString walkInNameTitle() { return QStringLiteral("Name"); }
    static QString walkInPhoneTitle() { return QStringLiteral("Phone"); }
    static QString notesTitle() { return QStringLiteral("Notes"); }
    static QString bookTitle() { return QStringLiteral("Book Appointment"); }
    static QString saveTitle() { return QStringLiteral("Save"); }
    static QString noShowTitle() { return QStringLiteral("No-Show"); }
    static QString cancelTitle() { return QStringLiteral("Cancel Appointment"); }
    static QString bookAgainTitle() { return QStringLiteral("Book Again"); }
    static QString deleteTitle() { return QStringLiteral("Delete"); }
    static QString deleteQuestion() { return QStringLiteral("Delete this appointment?"); }
    static QString deleteMessage()
    {
        return QStringLiteral(
            "It's removed from the book. To keep a record, use Cancel Appointment instead.");
    }

    // `appointment` is null for a new booking, which starts at 09:00 of `defaultDay`.
    AppointmentEditorModel(StaffService& staff, ModelContext& context, Ref<Appointment> appointment,
                           const QDate& defaultDay, QObject* parent = nullptr);

    // The booking in the store; null until a new one is booked.
    Ref<Appointment> appointment() const { return m_appointment; }
    bool isNew() const { return !m_appointment; }
    // Only a booking that counts as booked can be edited; a new one does.
    bool isBooked() const { return isNew() || m_appointment->isBooked(); }
    QString title() const;
    // The status, and the receipt that paid for it; empty for a new booking.
    QString subtitle() const;

    QDateTime start() const { return m_fields.start; }
    void setStart(const QDateTime& start) { assign(m_fields.start, start); }
    qint64 durationMinutes() const { return m_fields.duration; }
    void setDurationMinutes(qint64 minutes) { assign(m_fields.duration, minutes); }
    // Absent: a walk-in, whose name and phone are typed.
    std::optional<QUuid> customerID() const { return m_fields.customerID; }
    void setCustomerID(const std::optional<QUuid>& id) { assign(m_fields.customerID, id); }
    QString walkInName() const { return m_fields.walkInName; }
    void setWalkInName(const QString& text) { assign(m_fields.walkInName, text); }
    QString walkInPhone() const { return m_fields.walkInPhone; }
    void setWalkInPhone(const QString& text) { assign(m_fields.walkInPhone, text); }
    std::optional<QUuid> serviceID() const { return m_fields.serviceID; }
    void setServiceID(const std::optional<QUuid>& id) { assign(m_fields.serviceID, id); }
    // Absent: anyone.
    std::optional<QUuid> staffID() const { return m_fields.staffID; }
    void setStaffID(const std::optional<QUuid>& id) { assign(m_fields.staffID, id); }
    QString notes() const { return m_fields.notes; }
    void setNotes(const QString& text) { assign(m_fields.notes, text); }

    // What the pickers offer: the active services, the active members (and the booking's own, should
    // they have left), the customers by name.
    QList<Ref<Product>> services();
    QList<Ref<StaffMember>> staffChoices();
    QList<CustomerChoice> customers();

    // The first booking of the chosen member that the chosen time overlaps, as a warning.
    std::optional<QString> clashWarning();
    // Whether anything differs from the booking as loaded; a booking that can't be edited has none.
    bool hasUnsavedEdits() const;
    // The fields as the booking holds them, dropping what was typed.
    void discardEdits();

    // Checks and saves through the staff book; false with errorMessage, the edits kept.
    bool save();
    bool markNoShow() { return changeStatus(AppointmentStatus::noShow); }
    bool cancelAppointment() { return changeStatus(AppointmentStatus::cancelled); }
    bool bookAgain() { return changeStatus(AppointmentStatus::booked); }
    bool deleteAppointment();

Q_SIGNALS:
    // A save or rollback touched the book: this booking may have changed under the editor.
    void appointmentsChanged();

private:
    struct Fields {
        QDateTime start;
        qint64 duration = defaultDurationMinutes;
        std::optional<QUuid> customerID;
        QString walkInName;
        QString walkInPhone;
        std::optional<QUuid> serviceID;
        std::optional<QUuid> staffID;
        QString notes;

        friend bool operator==(const Fields&, const Fields&) = default;
    };

    void load();
    // What was typed and not saved goes: a booking that isn't booked can't be edited.
    bool changeStatus(AppointmentStatus status);
    const QList<Ref<Appointment>>& appointmentsAround(const QDate& day);

    StaffService& m_staff;
    ModelContext& m_context;
    Ref<Appointment> m_appointment;
    QDate m_defaultDay;
    Fields m_fields;
    Fields m_loaded;
    QDate m_aroundDay;
    QList<Ref<Appointment>> m_around;
};
