#include "ui/appointments/appointmentsview.h"

#include "environment/appenvironment.h"
#include "ui/appointments/appointmenteditor.h"
#include "ui/appointments/appointmentlistmodel.h"
#include "ui/appointments/appointmentrowdelegate.h"
#include "ui/controls/asktosavechanges.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/lazyrefresh.h"
#include "ui/controls/listdetail.h"
#include "ui/style/theme.h"

#include <QComboBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

AppointmentsView::AppointmentsView(AppEnvironment& environment, RingUp ringUp, QWidget* parent)
    : QWidget(parent)
    , m_staff(environment.staffService())
    , m_context(environment.modelContext())
    , m_ringUp(std::move(ringUp))
    , m_model(m_staff, m_context)
    , m_rows(new AppointmentListModel(m_model, this))
{
    using Model = AppointmentsViewModel;
    m_new = new QPushButton(Model::newAppointmentTitle(), this);
    Theme::markPrimary(m_new);
    auto* header = new QHBoxLayout;
    header->addWidget(Theme::label(QStringLiteral("Appointments"), Theme::Text::title, this));
    header->addStretch();
    header->addWidget(m_new);
    auto* error = new ErrorLabel(this);

    m_listCard =
        new RecordListCard(QStringLiteral("Appointments"), Model::emptyTitle(), Model::emptyMessage(), this);
    m_listCard->setFixedWidth(360);
    m_listCard->setModel(m_rows);
    list()->setItemDelegate(new AppointmentRowDelegate(list()));
    // A row is as tall as what it has to say.
    list()->setUniformItemSizes(false);
    m_detailPages = new DetailPages(Model::noSelectionTitle(), Model::noSelectionMessage(), this);
    auto* body = new QHBoxLayout;
    body->setSpacing(24);
    body->addWidget(m_listCard);
    body->addWidget(m_detailPages, 1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 24, 20);
    layout->setSpacing(14);
    layout->addLayout(header);
    layout->addLayout(dayBar());
    layout->addWidget(error);
    layout->addLayout(body, 1);

    auto* lazyRefresh = new LazyRefresh(this, [this] {
        refreshStaffFilter();
        refreshList();
    });
    connect(m_new, &QPushButton::clicked, this,
            [this] { askToLeave([this] { showEditor(nullptr, true); }); });
    connect(&m_model, &Model::errorMessageChanged, error,
            [this, error] { error->setMessage(m_model.errorMessage()); });
    connect(&m_model, &Model::dayChanged, this, [this] {
        const QSignalBlocker blocker(m_dayPicker);
        m_dayPicker->setDate(m_model.day());
        showEditor(nullptr);
        refreshList(true);
    });
    connect(&m_model, &Model::staffFilterChanged, this, [this] { refreshList(true); });
    connect(&m_model, &Model::appointmentsChanged, this, [this, lazyRefresh] {
        // Not while the list is in the middle of changing its current row: it is rebuilt after.
        if (m_listCard->isChoosing())
            QTimer::singleShot(0, lazyRefresh, &LazyRefresh::request);
        else
            lazyRefresh->request();
    });
    connect(m_listCard, &RecordListCard::rowChosen, this, [this](int row) {
        const Ref<Appointment> chosen = m_rows->appointment(row);
        const Ref<Appointment> shown = m_editor ? m_editor->model().appointment() : nullptr;
        if (chosen == shown)
            return;
        // The list keeps pointing at the booking being edited until the question is answered.
        showChosenRow();
        askToLeave([this, chosen] { showEditor(chosen); });
    });
    refreshStaffFilter();
    refreshList();
}

QLayout* AppointmentsView::dayBar()
{
    using Model = AppointmentsViewModel;
    m_previous = new QPushButton(QStringLiteral("‹"), this);
    m_today = new QPushButton(Model::todayTitle(), this);
    m_next = new QPushButton(QStringLiteral("›"), this);
    for (const auto& [button, title] :
         {std::pair{m_previous, Model::previousDayTitle()}, std::pair{m_next, Model::nextDayTitle()}}) {
        button->setToolTip(title);
        button->setAccessibleName(title);
        button->setFixedWidth(40);
    }
    m_dayPicker = new QDateEdit(m_model.day(), this);
    m_dayPicker->setCalendarPopup(true);
    m_dayPicker->setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    m_dayPicker->setDisplayFormat(QStringLiteral("dddd, MMMM d, yyyy"));
    // Wide enough for the longest day's name, with the padding and the calendar's button.
    m_dayPicker->setMinimumWidth(
        m_dayPicker->fontMetrics().horizontalAdvance(QStringLiteral("Wednesday, September 30, 2026")) + 60);
    m_staffFilter = new QComboBox(this);
    m_staffFilter->setMinimumWidth(200);
    m_staffFilter->setAccessibleName(Model::staffFilterTitle());
    auto* filterCaption = new QLabel(Model::staffFilterTitle(), this);
    filterCaption->setBuddy(m_staffFilter);

    auto* bar = new QHBoxLayout;
    bar->setSpacing(8);
    bar->addWidget(m_previous);
    bar->addWidget(m_today);
    bar->addWidget(m_next);
    bar->addSpacing(8);
    bar->addWidget(m_dayPicker);
    bar->addStretch();
    bar->addWidget(filterCaption);
    bar->addWidget(m_staffFilter);

    connect(m_previous, &QPushButton::clicked, this,
            [this] { changeView([this] { m_model.showPreviousDay(); }); });
    connect(m_next, &QPushButton::clicked, this, [this] { changeView([this] { m_model.showNextDay(); }); });
    connect(m_today, &QPushButton::clicked, this, [this] { changeView([this] { m_model.showToday(); }); });
    connect(m_dayPicker, &QDateEdit::dateChanged, this,
            [this](const QDate& day) { changeView([this, day] { m_model.setDay(day); }); });
    connect(m_staffFilter, &QComboBox::currentIndexChanged, this, [this] {
        const QVariant data = m_staffFilter->currentData();
        const std::optional<QUuid> staffID = data.isValid() ? std::optional(data.toUuid()) : std::nullopt;
        changeView([this, staffID] { m_model.setStaffFilter(staffID); });
    });
    return bar;
}

QListView* AppointmentsView::list() const
{
    return m_listCard->list();
}

void AppointmentsView::changeView(std::function<void()> change)
{
    if (!hasUnsavedEdits()) {
        change();
        return;
    }
    // The controls go back to what is shown until the question is answered.
    {
        const QSignalBlocker dayBlocker(m_dayPicker);
        const QSignalBlocker filterBlocker(m_staffFilter);
        m_dayPicker->setDate(m_model.day());
        const std::optional<QUuid> filter = m_model.staffFilter();
        m_staffFilter->setCurrentIndex(filter ? m_staffFilter->findData(*filter) : 0);
    }
    askToLeave([change = std::move(change)] { change(); });
}

void AppointmentsView::refreshStaffFilter()
{
    const QList<Ref<StaffMember>> members = m_model.staffChoices();
    const QSignalBlocker blocker(m_staffFilter);
    m_staffFilter->clear();
    m_staffFilter->addItem(AppointmentsViewModel::allStaffTitle());
    for (const Ref<StaffMember>& member : members)
        m_staffFilter->addItem(member->name(), member->id());
    const std::optional<QUuid> filter = m_model.staffFilter();
    const int index = filter ? m_staffFilter->findData(*filter) : 0;
    m_staffFilter->setCurrentIndex(std::max(index, 0));
    // The member filtered on is gone: everyone's bookings again.
    if (index < 0)
        m_model.setStaffFilter(std::nullopt);
}

void AppointmentsView::refreshList(bool fromTop)
{
    if (fromTop)
        m_rows->restart();
    else
        m_rows->reload();
    // A booking deleted elsewhere takes its editor with it.
    const Ref<Appointment> shown = m_editor ? m_editor->model().appointment() : nullptr;
    if (shown && shown->isDeleted())
        showEditor(nullptr);
    else
        showChosenRow();
}

void AppointmentsView::showChosenRow()
{
    // A booking of another day, or another member, has no row to look for.
    const Ref<Appointment> shown = m_editor ? m_editor->model().appointment() : nullptr;
    const bool listed = shown && shown->context() && shown->start().date() == m_model.day() &&
                        (!m_model.staffFilter() || shown->staffID() == m_model.staffFilter());
    m_listCard->showChosenRow(listed ? m_rows->rowOf(shown) : -1);
}

void AppointmentsView::showEditor(const Ref<Appointment>& appointment, bool isNew)
{
    if (m_editor) {
        m_detailPages->removeWidget(m_editor);
        m_editor->deleteLater();
        m_editor = nullptr;
    }
    if (!appointment && !isNew) {
        showChosenRow();
        m_detailPages->showDetail(nullptr);
        return;
    }
    m_editor = new AppointmentEditor(m_staff, m_context, appointment, m_model.day(), this);
    showChosenRow();
    connect(m_editor, &AppointmentEditor::deleted, this, [this] { showEditor(nullptr); });
    if (m_ringUp) {
        m_editor->offerRingUp();
        connect(m_editor, &AppointmentEditor::ringUpRequested, this,
                [this](const Ref<Appointment>& booked) { m_ringUp(*booked); });
    }
    connect(m_editor, &AppointmentEditor::saved, this, [this](const Ref<Appointment>& saved) {
        // Booked for another day: that day is shown, with the booking chosen in it.
        if (saved->start().date() != m_model.day()) {
            m_model.setDay(saved->start().date());
            showEditor(saved);
        }
        showChosenRow();
    });
    m_detailPages->showDetail(m_editor);
}

bool AppointmentsView::hasUnsavedEdits() const
{
    return m_editor && m_editor->model().hasUnsavedEdits();
}

QString AppointmentsView::editedName() const
{
    const AppointmentEditorModel& editor = m_editor->model();
    return editor.isNew() ? AppointmentEditorModel::newTitle() : editor.title();
}

bool AppointmentsView::saveEdits()
{
    return m_editor && m_editor->model().save();
}

void AppointmentsView::discardEdits()
{
    // A new booking is dropped; a saved one goes back to what was saved.
    showEditor(m_editor->model().isNew() ? nullptr : m_editor->model().appointment());
}

QStringList AppointmentsView::listedTimes() const
{
    QStringList times;
    for (const AppointmentRow& row : m_rows->rows())
        times << row.timeRange;
    return times;
}
