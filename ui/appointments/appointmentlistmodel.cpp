#include "ui/appointments/appointmentlistmodel.h"

#include "ui/appointments/appointmentrowdelegate.h"

AppointmentListModel::AppointmentListModel(AppointmentsViewModel& book, QObject* parent)
    : AppointmentPages(AppointmentsViewModel::pageSize, parent)
    , m_book(book)
{
}

QList<AppointmentRow> AppointmentListModel::readPage(const AppointmentRow* after, int limit)
{
    return m_book.page(after, limit);
}

int AppointmentListModel::rowOf(const Ref<Appointment>& appointment)
{
    if (!appointment)
        return -1;
    return load([&](const AppointmentRow& row) { return row.appointment == appointment; });
}

QVariant AppointmentListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const AppointmentRow& row = rows()[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return row.timeRange;
    case AppointmentRowDelegate::serviceRole:
        return row.service;
    case AppointmentRowDelegate::customerRole:
        return row.customer;
    case AppointmentRowDelegate::statusRole:
        return row.status;
    case AppointmentRowDelegate::clashRole:
        return row.clash.value_or(QString());
    default:
        return {};
    }
}
