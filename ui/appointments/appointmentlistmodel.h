#pragma once

#include "staff/appointmentsviewmodel.h"
#include "ui/controls/keypagedmodel.h"

#include <QAbstractListModel>

using AppointmentPages = KeyPagedModel<QAbstractListModel, AppointmentRow>;

// The day's bookings for the list, in the roles of AppointmentRowDelegate, a page at a time.
class AppointmentListModel : public AppointmentPages {
    Q_OBJECT

public:
    explicit AppointmentListModel(AppointmentsViewModel& book, QObject* parent = nullptr);

    // The row of the booking, loading pages until it is found; -1 when the list doesn't hold it.
    int rowOf(const Ref<Appointment>& appointment);
    Ref<Appointment> appointment(int row) const { return rows().value(row).appointment; }

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

protected:
    QList<AppointmentRow> readPage(const AppointmentRow* after, int limit) override;

private:
    AppointmentsViewModel& m_book;
};
