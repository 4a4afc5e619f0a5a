#include "ui/appointments/appointmenteditor.h"

#include "staff/appointmenttexts.h"
#include "ui/controls/asktodelete.h"
#include "ui/controls/cards.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/readingorder.h"
#include "ui/controls/savekey.h"
#include "ui/style/theme.h"

#include <QComboBox>
#include <QCompleter>
#include <QDateTimeEdit>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

// Minutes in steps of five, shown as "45 min" or "1 hr 30 min".
class LengthBox : public QSpinBox {
public:
    explicit LengthBox(QWidget* parent)
        : QSpinBox(parent)
    {
        setRange(int(StaffService::shortestBookingMinutes), int(StaffService::longestBookingMinutes));
        setSingleStep(5);
        // The arrow keys and the wheel step it; the buttons beside it are large enough to hit.
        setButtonSymbols(QAbstractSpinBox::NoButtons);
    }

protected:
    QString textFromValue(int value) const override { return AppointmentTexts::length(value); }

    int valueFromText(const QString& text) const override { return minutesIn(text).value_or(value()); }

    QValidator::State validate(QString& text, int&) const override
    {
        return minutesIn(text) ? QValidator::Acceptable : QValidator::Intermediate;
    }

private:
    // "1 hr 30 min", "2 hr", "45 min", or a bare number of minutes.
    static std::optional<int> minutesIn(const QString& text)
    {
        static const QRegularExpression pattern(
            QStringLiteral("^\\s*(?:(\\d+)\\s*hr)?\\s*(?:(\\d+)\\s*(?:min)?)?\\s*$"));
        const QRegularExpressionMatch match = pattern.match(text);
        if (!match.hasMatch() || (match.captured(1).isEmpty() && match.captured(2).isEmpty()))
            return std::nullopt;
        return match.captured(1).toInt() * 60 + match.captured(2).toInt();
    }
};

// The id a picker's entry stands for; absent for "Anyone" and the walk-in.
std::optional<QUuid> chosenID(const QComboBox* picker)
{
    const QVariant data = picker->currentData();
    return data.isValid() ? std::optional(data.toUuid()) : std::nullopt;
}

void showChosen(QComboBox* picker, const std::optional<QUuid>& id)
{
    const QSignalBlocker blocker(picker);
    picker->setCurrentIndex(id ? picker->findData(*id) : picker->findData(QVariant()));
}

} // namespace

AppointmentEditor::AppointmentEditor(StaffService& staff, ModelContext& context,
                                     const Ref<Appointment>& appointment, const QDate& defaultDay,
                                     QWidget* parent)
    : QWidget(parent)
    , m_model(staff, context, appointment, defaultDay)
{
    using Model = AppointmentEditorModel;
    m_title = Theme::label(QString(), Theme::Text::title, this);
    m_title->setTextFormat(Qt::PlainText);
    m_subtitle = Theme::label(QString(), Theme::Text::subtitle, this);
    m_subtitle->setWordWrap(false);
    m_error = new ErrorLabel(this);

    QScrollArea* scroll =
        makeSectionScroll({whenSection(), whatWhoSection(), customerSection()}, 14, this, 720);

    auto* heading = new QHBoxLayout;
    heading->setSpacing(12);
    heading->addWidget(m_title);
    heading->addWidget(m_subtitle, 1, Qt::AlignBottom);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addLayout(heading);
    layout->addWidget(m_error);
    layout->addWidget(scroll, 1);
    layout->addWidget(buttonRow());

    fillPickers();
    showFields();
    connect(&m_model, &Model::errorMessageChanged, this,
            [this] { m_error->setMessage(m_model.errorMessage()); });
    connect(&m_model, &Model::fieldsChanged, this, &AppointmentEditor::showClash);
    connect(&m_model, &Model::appointmentsChanged, this, [this] {
        // Paid at the till, say, while shown here. One that is gone is closed by the list.
        const Ref<Appointment> shown = m_model.appointment();
        if (!shown || shown->isDeleted())
            return;
        if (!m_model.hasUnsavedEdits())
            m_model.discardEdits();
        showFields();
    });
    m_error->setMessage(m_model.errorMessage());
}

QWidget* AppointmentEditor::whenSection()
{
    using Model = AppointmentEditorModel;
    auto* section = new Section(Model::whenSection());
    QGridLayout* grid = makeFieldGrid();
    section->content()->addLayout(grid);
    m_start = new QDateTimeEdit(section);
    m_start->setCalendarPopup(true);
    m_start->setDisplayFormat(QStringLiteral("ddd, MMM d, yyyy  h:mm AP"));
    m_start->setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    // A digit too many typed into the year can't make a booking for the year 567.
    m_start->setMinimumDate(QDate(2000, 1, 1));
    m_length = new LengthBox(section);
    auto* shorter = new QPushButton(QStringLiteral("−"), section);
    auto* longer = new QPushButton(QStringLiteral("+"), section);
    auto* length = new QWidget(section);
    auto* lengthRow = new QHBoxLayout(length);
    lengthRow->setContentsMargins(0, 0, 0, 0);
    lengthRow->setSpacing(6);
    lengthRow->addWidget(m_length, 1);
    for (QPushButton* step : {shorter, longer}) {
        step->setFixedWidth(40);
        step->setAutoRepeat(true);
        lengthRow->addWidget(step);
        m_editable << step;
    }
    shorter->setAccessibleName(QStringLiteral("Shorter"));
    longer->setAccessibleName(QStringLiteral("Longer"));
    connect(shorter, &QPushButton::clicked, m_length, &QSpinBox::stepDown);
    connect(longer, &QPushButton::clicked, m_length, &QSpinBox::stepUp);
    addLabelledCell(grid, 0, 0, Model::dateTimeTitle(), m_start);
    addLabelledCell(grid, 0, 1, Model::lengthTitle(), length);
    // The label and screen readers name the box, not the row around it.
    m_length->setAccessibleName(Model::lengthTitle());
    m_editable << m_start << m_length;
    connect(m_start, &QDateTimeEdit::dateTimeChanged, &m_model, &Model::setStart);
    connect(m_length, &QSpinBox::valueChanged, &m_model,
            [this](int minutes) { m_model.setDurationMinutes(minutes); });
    return section;
}

QWidget* AppointmentEditor::whatWhoSection()
{
    using Model = AppointmentEditorModel;
    auto* section = new Section(Model::whatWhoSection());
    QGridLayout* grid = makeFieldGrid();
    section->content()->addLayout(grid);
    m_service = new QComboBox(section);
    m_service->setPlaceholderText(QStringLiteral("Choose a service"));
    m_staff = new QComboBox(section);
    addLabelledCell(grid, 0, 0, Model::serviceTitle(), m_service);
    addLabelledCell(grid, 0, 1, Model::staffTitle(), m_staff);
    m_clash = Theme::label(QString(), Theme::Text::note, section);
    Theme::setKind(m_clash, "warning");
    m_clash->setTextFormat(Qt::PlainText);
    section->content()->addWidget(m_clash);
    m_editable << m_service << m_staff;
    connect(m_service, &QComboBox::currentIndexChanged, &m_model,
            [this] { m_model.setServiceID(chosenID(m_service)); });
    connect(m_staff, &QComboBox::currentIndexChanged, &m_model,
            [this] { m_model.setStaffID(chosenID(m_staff)); });
    return section;
}

QWidget* AppointmentEditor::customerSection()
{
    using Model = AppointmentEditorModel;
    auto* section = new Section(Model::customerSection());
    m_customer = new QComboBox(section);
    m_customer->setAccessibleName(Model::customerSection());
    // Thousands of customers: typing a few letters finds one.
    m_customer->setEditable(true);
    m_customer->setInsertPolicy(QComboBox::NoInsert);
    m_customer->completer()->setFilterMode(Qt::MatchContains);
    m_customer->completer()->setCompletionMode(QCompleter::PopupCompletion);
    section->content()->addWidget(m_customer);

    m_walkIn = new QWidget(section);
    QGridLayout* grid = makeFieldGrid();
    m_walkIn->setLayout(grid);
    m_walkInName = new QLineEdit(m_walkIn);
    m_walkInPhone = new QLineEdit(m_walkIn);
    m_walkInPhone->setInputMethodHints(Qt::ImhDialableCharactersOnly);
    addLabelledCell(grid, 0, 0, Model::walkInNameTitle(), m_walkInName);
    addLabelledCell(grid, 0, 1, Model::walkInPhoneTitle(), m_walkInPhone);
    section->content()->addWidget(m_walkIn);

    m_notes = new QPlainTextEdit(section);
    m_notes->setTabChangesFocus(true);
    m_notes->setFixedHeight(72);
    addLabelledField(section->content(), Model::notesTitle(), m_notes);
    m_editable << m_customer << m_walkInName << m_walkInPhone << m_notes;

    connect(m_customer, &QComboBox::currentIndexChanged, &m_model, [this] {
        m_model.setCustomerID(chosenID(m_customer));
        m_walkIn->setVisible(!m_model.customerID());
    });
    bindText(m_walkInName, m_model, &Model::walkInName, &Model::setWalkInName, &Model::fieldsChanged);
    bindText(m_walkInPhone, m_model, &Model::walkInPhone, &Model::setWalkInPhone, &Model::fieldsChanged);
    connect(m_notes, &QPlainTextEdit::textChanged, &m_model,
            [this] { m_model.setNotes(m_notes->toPlainText()); });
    return section;
}

QWidget* AppointmentEditor::buttonRow()
{
    using Model = AppointmentEditorModel;
    auto* row = new QWidget(this);
    auto* buttons = new QHBoxLayout(row);
    buttons->setContentsMargins(0, 8, 12, 0);
    buttons->setSpacing(10);
    m_delete = new QPushButton(Model::deleteTitle(), row);
    m_noShow = new QPushButton(Model::noShowTitle(), row);
    m_cancel = new QPushButton(Model::cancelTitle(), row);
    m_bookAgain = new QPushButton(Model::bookAgainTitle(), row);
    m_book = new QPushButton(row);
    m_ringUp = new QPushButton(QStringLiteral("Ring Up"), row);
    m_ringUp->setToolTip(QStringLiteral("Put this service in the POS cart with its staff member and customer"));
    Theme::markPrimary(m_book);
    SaveKey::attach(m_book);
    buttons->addWidget(m_delete);
    buttons->addStretch();
    for (QPushButton* button : {m_noShow, m_cancel, m_bookAgain, m_ringUp, m_book})
        buttons->addWidget(button);
    connect(m_ringUp, &QPushButton::clicked, this, [this] { Q_EMIT ringUpRequested(m_model.appointment()); });

    connect(m_book, &QPushButton::clicked, this, [this] {
        if (!m_model.save())
            return;
        showFields();
        Q_EMIT saved(m_model.appointment());
    });
    const auto statusButton = [this](QPushButton* button, bool (AppointmentEditorModel::*change)()) {
        connect(button, &QPushButton::clicked, this, [this, change] {
            if ((m_model.*change)())
                showFields();
        });
    };
    statusButton(m_noShow, &Model::markNoShow);
    statusButton(m_cancel, &Model::cancelAppointment);
    statusButton(m_bookAgain, &Model::bookAgain);
    connect(m_delete, &QPushButton::clicked, this, &AppointmentEditor::confirmDelete);
    return row;
}

void AppointmentEditor::fillPickers()
{
    // Filling moves a picker's choice; only showFields() says what is chosen.
    const QSignalBlocker serviceBlocker(m_service);
    const QSignalBlocker staffBlocker(m_staff);
    const QSignalBlocker customerBlocker(m_customer);
    for (const Ref<Product>& service : m_model.services())
        m_service->addItem(service->name(), service->id());
    m_staff->addItem(AppointmentEditorModel::anyoneTitle());
    for (const Ref<StaffMember>& member : m_model.staffChoices())
        m_staff->addItem(member->name(), member->id());
    m_customer->addItem(AppointmentEditorModel::walkInTitle());
    for (const CustomerChoice& customer : m_model.customers())
        m_customer->addItem(customer.name, customer.id);
}

void AppointmentEditor::showFields()
{
    {
        const QSignalBlocker startBlocker(m_start);
        const QSignalBlocker lengthBlocker(m_length);
        const QSignalBlocker notesBlocker(m_notes);
        m_start->setDateTime(m_model.start());
        m_length->setValue(int(m_model.durationMinutes()));
        if (m_notes->toPlainText() != m_model.notes())
            m_notes->setPlainText(m_model.notes());
    }
    showChosen(m_service, m_model.serviceID());
    showChosen(m_staff, m_model.staffID());
    showChosen(m_customer, m_model.customerID());
    m_walkInName->setText(m_model.walkInName());
    m_walkInPhone->setText(m_model.walkInPhone());
    m_walkIn->setVisible(!m_model.customerID());
    showStatus();
    showClash();
}

void AppointmentEditor::showStatus()
{
    m_title->setText(m_model.title());
    m_subtitle->setText(m_model.subtitle());
    m_subtitle->setVisible(!m_model.isNew());
    const bool isNew = m_model.isNew();
    const bool booked = m_model.isBooked();
    for (QWidget* field : m_editable)
        field->setEnabled(booked);
    m_book->setText(isNew ? AppointmentEditorModel::bookTitle() : AppointmentEditorModel::saveTitle());
    m_book->setVisible(booked);
    m_noShow->setVisible(!isNew && booked);
    m_ringUp->setVisible(m_offersRingUp && !isNew && booked);
    m_cancel->setVisible(!isNew && booked);
    const AppointmentStatus status = isNew ? AppointmentStatus::booked : m_model.appointment()->status();
    m_bookAgain->setVisible(status == AppointmentStatus::cancelled || status == AppointmentStatus::noShow);
    m_delete->setVisible(!isNew);
}

void AppointmentEditor::offerRingUp()
{
    m_offersRingUp = true;
    showStatus();
}

void AppointmentEditor::showClash()
{
    const std::optional<QString> warning = m_model.clashWarning();
    m_clash->setText(warning.value_or(QString()));
    m_clash->setVisible(warning.has_value());
}

void AppointmentEditor::confirmDelete()
{
    askToDelete(this, AppointmentEditorModel::deleteQuestion(), AppointmentEditorModel::deleteMessage(),
                [this] {
                    if (m_model.deleteAppointment())
                        Q_EMIT deleted();
                });
}

bool AppointmentEditor::focusNextPrevChild(bool next)
{
    return ReadingOrder::focusNext(this, next) || QWidget::focusNextPrevChild(next);
}
