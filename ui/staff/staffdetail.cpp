#include "ui/staff/staffdetail.h"

#include "ui/controls/asktodelete.h"
#include "ui/controls/cards.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/formfooter.h"
#include "ui/controls/lazyrefresh.h"
#include "ui/controls/readingorder.h"
#include "ui/controls/savekey.h"
#include "ui/controls/tables.h"
#include "ui/style/theme.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
// A month of bookings scrolls inside its table, so the page stays short.
constexpr int visibleRows = 8;
} // namespace

StaffDetail::StaffDetail(StaffService& staff, ModelContext& context, SessionStore& session,
                         const Ref<StaffMember>& member, QWidget* parent)
    : QWidget(parent)
    , m_model(staff, context, session, member)
{
    using Model = StaffDetailModel;
    m_title = Theme::label(QString(), Theme::Text::title, this);
    m_title->setTextFormat(Qt::PlainText);
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_footer = new FormFooter(Model::deleteTitle(), this);
    m_delete = m_footer->deleteButton();
    m_save = m_footer->saveButton();
    m_error = m_footer->errorLabel();
    m_commissionError = new ErrorLabel(this);
    m_readProblem = new ErrorLabel(this);


    QScrollArea* scroll =
        makeSectionScroll({detailsSection(), thisMonthSection(), upcomingSection()}, 20, this, 760);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addWidget(m_title);
    layout->addWidget(scroll, 1);
    layout->addWidget(m_footer);

    connect(m_save, &QPushButton::clicked, this, [this] {
        if (m_model.save())
            refresh();
    });
    connect(m_delete, &QPushButton::clicked, this, &StaffDetail::confirmDelete);
    connect(&m_model, &Model::errorMessageChanged, this,
            [this] { m_error->setMessage(m_model.errorMessage()); });
    // Changes while the screen is hidden wait until it is shown again.
    auto* lazyRefresh = new LazyRefresh(this, [this] { refresh(); });
    connect(&m_model, &Model::detailChanged, lazyRefresh, &LazyRefresh::request);
    refresh();
}

Section* StaffDetail::detailsSection()
{
    using Model = StaffDetailModel;
    auto* section = new Section(Model::detailsSection());
    QGridLayout* grid = makeFieldGrid();
    const QStringList titles{Model::nameTitle(), Model::phoneTitle()};
    for (int index = 0; index < titles.size(); ++index) {
        auto* edit = new QLineEdit(section);
        addLabelledCell(grid, 0, index, titles[index], edit);
        m_fields.append(edit);
    }
    field(Field::phone)->setInputMethodHints(Qt::ImhDialableCharactersOnly);

    auto* commission = new QLineEdit(section);
    commission->setAlignment(Qt::AlignRight);
    commission->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    commission->setFixedWidth(90);
    m_fields.append(commission);
    auto* rate = new QHBoxLayout;
    rate->setSpacing(8);
    rate->addWidget(commission);
    rate->addWidget(Theme::label(Model::commissionNote(), Theme::Text::note, section), 1);
    auto* rateCell = new QVBoxLayout;
    rateCell->setSpacing(4);
    auto* rateCaption = new QLabel(Model::commissionTitle(), section);
    rateCaption->setBuddy(commission);
    commission->setAccessibleName(Model::commissionTitle());
    rateCell->addWidget(rateCaption);
    rateCell->addLayout(rate);
    m_commissionError->setParent(section);
    rateCell->addWidget(m_commissionError);
    grid->addLayout(rateCell, 1, 0, 1, 2);

    m_active = new QCheckBox(Model::activeTitle(), section);
    grid->addWidget(m_active, 2, 0);

    m_notes = new QPlainTextEdit(section);
    m_notes->setTabChangesFocus(true);
    m_notes->setFixedHeight(72);
    auto* notesCell = new QVBoxLayout;
    addLabelledField(notesCell, Model::notesTitle(), m_notes);
    grid->addLayout(notesCell, 3, 0, 1, 2);
    section->content()->addLayout(grid);

    for (QLineEdit* edit : m_fields)
        // Return saves, as "Save" would.
        connect(edit, &QLineEdit::returnPressed, m_save, &QPushButton::click);
    bindText(field(Field::name), m_model, &Model::name, &Model::setName, &Model::fieldsChanged);
    bindText(field(Field::phone), m_model, &Model::phone, &Model::setPhone, &Model::fieldsChanged);
    bindText(commission, m_model, &Model::commissionText, &Model::setCommissionText, &Model::fieldsChanged);
    connect(&m_model, &Model::fieldsChanged, m_commissionError,
            [this] { m_commissionError->setMessage(m_model.commissionProblem()); });
    m_active->setChecked(m_model.isActive());
    connect(m_active, &QCheckBox::toggled, &m_model, &Model::setActive);
    m_notes->setPlainText(m_model.notes());
    connect(m_notes, &QPlainTextEdit::textChanged, &m_model,
            [this] { m_model.setNotes(m_notes->toPlainText()); });
    connect(&m_model, &Model::fieldsChanged, this, [this] {
        m_active->setChecked(m_model.isActive());
        if (m_notes->toPlainText() != m_model.notes())
            m_notes->setPlainText(m_model.notes());
    });
    return section;
}

Section* StaffDetail::thisMonthSection()
{
    using Model = StaffDetailModel;
    auto* section = new Section(Model::thisMonthSection());
    QVBoxLayout* card = section->content();
    auto* figures = new QHBoxLayout;
    figures->setSpacing(40);
    m_services = addFigure(figures, Model::servicesTitle(), section);
    m_revenue = addFigure(figures, Model::revenueTitle(), section);
    m_commission = addFigure(figures, Model::commissionTitle(), section);
    figures->addStretch();
    card->addLayout(figures);
    m_readProblem->setParent(section);
    card->addWidget(m_readProblem);
    card->addWidget(Theme::label(Model::thisMonthNote(), Theme::Text::note, section));
    return section;
}

Section* StaffDetail::upcomingSection()
{
    using Model = StaffDetailModel;
    auto* section = new Section(Model::upcomingSection());
    const QStringList headers{QStringLiteral("Date"), QStringLiteral("Time"), QStringLiteral("Service"),
                              QStringLiteral("Customer")};
    m_upcoming = makeHistoryTable(static_cast<int>(headers.size()), Model::upcomingSection(), section);
    m_upcoming->setHorizontalHeaderLabels(headers);
    m_upcoming->horizontalHeader()->setSectionResizeMode(2, QHeaderView::Stretch);
    m_noUpcoming = Theme::label(Model::noUpcomingMessage(), Theme::Text::note, section);
    section->content()->addWidget(m_upcoming);
    section->content()->addWidget(m_noUpcoming);
    return section;
}

QLineEdit* StaffDetail::field(Field which) const
{
    return m_fields.at(static_cast<int>(which));
}

void StaffDetail::focusName()
{
    focusToReplace(field(Field::name));
}

void StaffDetail::refresh()
{
    // The saved name, not the one being typed.
    m_title->setText(member()->name());
    // A member not yet in the store has nothing to delete, earn or be booked for.
    m_footer->showNewRecord(m_model.isNew());
    m_model.refresh();
    m_services->setText(m_model.servicesText());
    m_revenue->setText(m_model.revenueText());
    m_commission->setText(m_model.commissionEarnedText());
    m_readProblem->setMessage(m_model.readProblem());

    const QList<UpcomingAppointmentRow>& rows = m_model.upcoming();
    m_upcoming->setRowCount(static_cast<int>(rows.size()));
    for (int row = 0; row < rows.size(); ++row) {
        const UpcomingAppointmentRow& booking = rows[row];
        setRowCells(m_upcoming, row, {booking.day, booking.time, booking.service, booking.customer},
                    m_upcoming->columnCount());
    }
    showRows(m_upcoming, visibleRows, m_noUpcoming);
}

void StaffDetail::confirmDelete()
{
    askToDelete(this, StaffDetailModel::deleteQuestion(member()->name()), StaffDetailModel::deleteMessage(),
                [this] {
                    if (m_model.deleteMember())
                        Q_EMIT memberDeleted();
                });
}

bool StaffDetail::focusNextPrevChild(bool next)
{
    return ReadingOrder::focusNext(this, next) || QWidget::focusNextPrevChild(next);
}
